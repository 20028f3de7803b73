#include "platform/WindowModule.h"

#include <QLibrary>
#include <filesystem>

#ifdef _WIN32
#include <windows.h>
#endif

namespace vantorin {

namespace {

using WindowEntry = int (*)(int, char**);

// Found without an application object, which main() has not made yet.
std::filesystem::path ExecutableFolder() {
#ifdef _WIN32
    wchar_t buffer[MAX_PATH];
    const DWORD n = GetModuleFileNameW(nullptr, buffer, MAX_PATH);
    return std::filesystem::path(std::wstring(buffer, n)).parent_path();
#else
    std::error_code ec;
    return std::filesystem::read_symlink("/proc/self/exe", ec).parent_path();
#endif
}

}  // namespace

int RunWindowModule(int argc, char** argv, std::string& error) {
    const std::filesystem::path folder = ExecutableFolder();
    for (const std::filesystem::path& candidate :
         {folder / "vantorin-window", folder / ".." / "libexec" / "vantorin" / "vantorin-window"}) {
        QLibrary module(QString::fromStdString(candidate.string()));
        if (!module.load()) {
            error = module.errorString().toStdString();
            continue;
        }
        auto entry = reinterpret_cast<WindowEntry>(module.resolve("vantorin_run_window"));
        if (!entry) {
            error = module.errorString().toStdString();
            continue;
        }
        return entry(argc, argv);
    }
    return -1;
}

}  // namespace vantorin
