#include "platform/ProgramFolder.h"

#include <QCoreApplication>
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

bool CanMakeFileIn(const QString& folder) {
    QTemporaryFile probe(folder + "/.vantorin-probe-XXXXXX");
    return probe.open();
}

}  // namespace

std::string ChooseProgramFolder(const std::string& executableFolder, bool executableFolderWritable,
                                FolderConvention convention, const EnvironmentLookup& environment) {
    const std::string beside = Backslashed(executableFolder);
    if (executableFolderWritable) return beside;
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
        executableFolder.toLatin1().toStdString(), CanMakeFileIn(executableFolder), convention,
        [](const std::string& name) {
            const char* value = std::getenv(name.c_str());
            return std::string(value ? value : "");
        });
    std::error_code ignored;  // a folder that cannot be made fails later, like any write
    std::filesystem::create_directories(FileSystem::ToNative(chosen), ignored);
    return chosen;
}

}  // namespace vantorin
