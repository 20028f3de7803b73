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
    // Executable folder, writable, environment, program folder (the Unix convention).
    const std::tuple<const char*, bool, const Env&, const char*> cases[] = {
        {"/src/build/app", true, dataHome, "\\src\\build\\app"},
        {"/usr/bin", false, dataHome, "\\data\\ann\\Vantorin"},
        {"/usr/bin", false, homeOnly, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", false, relativeDataHome, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", false, rootHome, "\\.local\\share\\Vantorin"},
        {"/usr/bin", false, none, "\\usr\\bin"},
    };
    for (const auto& [folder, writable, env, expected] : cases) {
        const Env& e = env;
        const auto lookup = [&e](const std::string& name) {
            return e.contains(name) ? e.at(name) : "";
        };
        EXPECT_EQ(ChooseProgramFolder(folder, writable, FolderConvention::Xdg, lookup), expected)
            << folder << " writable " << writable;
    }
}

}  // namespace
}  // namespace vantorin
