#include "platform/ProgramFolder.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTemporaryFile>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "platform/FileSystem.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

std::string Backslashed(const std::string& native) {
    return Replace(native, "/", "\\");
}

std::string WithoutTrailingSeparators(std::string folder) {
    while (!folder.empty() && (folder.back() == '\\' || folder.back() == '/')) folder.pop_back();
    return folder;
}

// The XDG rule ignores a relative path: it would depend on the working folder.
bool IsAbsolute(const std::string& path) {
    return !path.empty() && path[0] == '/';
}

std::string UserDataBase(FolderConvention convention, const EnvironmentLookup& environment) {
    if (convention == FolderConvention::Windows) return environment("APPDATA");
    const std::string dataHome = environment("XDG_DATA_HOME");
    if (IsAbsolute(dataHome)) return dataHome;
    const std::string home = environment("HOME");
    if (!IsAbsolute(home)) return "";
    return WithoutTrailingSeparators(home) + "/.local/share";
}

#ifdef _WIN32
constexpr const char* kInstalledModule = "/libexec/vantorin/vantorin-window.dll";
#else
constexpr const char* kInstalledModule = "/libexec/vantorin/vantorin-window.so";
#endif

// The window module where an installation puts it: <prefix>/libexec/vantorin
// for the executable in <prefix>/bin.
bool Installed(const std::string& executableFolder, const PathQuery& isFile) {
    return isFile(executableFolder.substr(0, executableFolder.rfind('/')) + kInstalledModule);
}

QString FromNative(const std::string& path) {
    return QString::fromLatin1(path.data(), static_cast<qsizetype>(path.size()));
}

bool CanMakeFileIn(const std::string& folder) {
    QTemporaryFile probe(FromNative(folder) + "/.vantorin-probe-XXXXXX");
    return probe.open();
}

}  // namespace

std::string ChooseProgramFolder(const std::string& executableFolder, const PathQuery& isFile,
                                const PathQuery& canMakeFileIn, FolderConvention convention,
                                const EnvironmentLookup& environment) {
    const std::string beside = Backslashed(executableFolder);
    if (!Installed(executableFolder, isFile) && canMakeFileIn(executableFolder)) return beside;
    const std::string base = UserDataBase(convention, environment);
    if (base.empty()) return beside;
    return Backslashed(WithoutTrailingSeparators(base)) + "\\Vantorin";
}

std::string FindProgramFolder() {
    const QString executableFolder = QCoreApplication::applicationDirPath();
#ifdef _WIN32
    const FolderConvention convention = FolderConvention::Windows;
#else
    const FolderConvention convention = FolderConvention::Xdg;
#endif
    const std::string chosen = ChooseProgramFolder(
        executableFolder.toLatin1().toStdString(),
        [](const std::string& path) { return QFileInfo(FromNative(path)).isFile(); }, CanMakeFileIn,
        convention,
        [](const std::string& name) {
            const char* value = std::getenv(name.c_str());
            return std::string(value ? value : "");
        });
    std::error_code ignored;  // a folder that cannot be made fails later, like any write
    std::filesystem::create_directories(FileSystem::ToNative(chosen), ignored);
    return chosen;
}

}  // namespace vantorin
