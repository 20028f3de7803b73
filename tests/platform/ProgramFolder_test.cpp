#include "platform/ProgramFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <tuple>

namespace vantorin {
namespace {

TEST(ProgramFolderTest, WritableExecutableFolderElseTheUsersDataFolder) {
    using Env = std::map<std::string, std::string>;
    const Env dataHome = {{"HOME", "/home/ann"}, {"XDG_DATA_HOME", "/data/ann/"}};
    const Env homeOnly = {{"HOME", "/home/ann/"}, {"XDG_DATA_HOME", ""}};
    const Env relativeDataHome = {{"HOME", "/home/ann"}, {"XDG_DATA_HOME", "data"}};
    const Env rootHome = {{"HOME", "/"}};
    const Env none = {};
    const Env appData = {{"APPDATA", "C:\\Users\\Ann\\AppData\\Roaming\\"}, {"HOME", "/x"}};
    const auto xdg = FolderConvention::Xdg, windows = FolderConvention::Windows;
    // executable folder, writable, convention, environment, program folder
    const std::tuple<const char*, bool, FolderConvention, const Env&, const char*> cases[] = {
        {"/src/build/app", true, xdg, dataHome, "\\src\\build\\app"},
        {"/usr/bin", false, xdg, dataHome, "\\data\\ann\\Vantorin"},
        {"/usr/bin", false, xdg, homeOnly, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", false, xdg, relativeDataHome, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", false, xdg, rootHome, "\\.local\\share\\Vantorin"},
        {"/usr/bin", false, xdg, none, "\\usr\\bin"},
        {"D:/Tools/Vantorin", true, windows, appData, "D:\\Tools\\Vantorin"},
        {"C:/Program Files/Vantorin", false, windows, appData,
         "C:\\Users\\Ann\\AppData\\Roaming\\Vantorin"},
        {"C:/Program Files/Vantorin", false, windows, dataHome, "C:\\Program Files\\Vantorin"},
    };
    for (const auto& [folder, writable, convention, env, expected] : cases) {
        const Env& e = env;
        const auto lookup = [&e](const std::string& name) {
            return e.contains(name) ? e.at(name) : "";
        };
        EXPECT_EQ(ChooseProgramFolder(folder, writable, convention, lookup), expected)
            << folder << " writable " << writable;
    }
}

}  // namespace
}  // namespace vantorin
