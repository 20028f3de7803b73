#include "platform/ProgramFolder.h"

#include <gtest/gtest.h>

#include <map>

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
    const auto xdg = FolderConvention::Xdg;
    const auto windows = FolderConvention::Windows;
    struct Case {
        const char* executableFolder;
        bool writable;
        FolderConvention convention;
        const Env& env;
        std::string expected;
    } cases[] = {
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
    for (const Case& c : cases) {
        const auto lookup = [&](const std::string& name) {
            const auto found = c.env.find(name);
            return found == c.env.end() ? std::string() : found->second;
        };
        EXPECT_EQ(ChooseProgramFolder(c.executableFolder, c.writable, c.convention, lookup),
                  c.expected)
            << c.executableFolder << " writable " << c.writable;
    }
}

}  // namespace
}  // namespace vantorin
