#include "platform/ProgramFolder.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

namespace vantorin {
namespace {

TEST(ProgramFolderTest, BesideAPortableExecutableElseTheUsersDataFolder) {
    using Env = std::map<std::string, std::string>;
    using Files = std::set<std::string>;
    const Env dataHome = {{"HOME", "/home/ann"}, {"XDG_DATA_HOME", "/data/ann/"}};
    const Env homeOnly = {{"HOME", "/home/ann/"}, {"XDG_DATA_HOME", ""}};
    const Env relativeDataHome = {{"HOME", "/home/ann"}, {"XDG_DATA_HOME", "data"}};
    const Env rootHome = {{"HOME", "/"}};
    const Env none = {};
    const Files build = {"/src/build/app/vantorin-window.so"};
    const Files usr = {"/usr/libexec/vantorin/vantorin-window.so"};
    const Files opt = {"/opt/v/libexec/vantorin/vantorin-window.so"};
    const Files elsewhere = {"/usr/lib/vantorin/vantorin-window.so", "/usr/vantorin-window.so",
                             "/usr/bin/libexec/vantorin/vantorin-window.so"};
    // Executable folder, files there, writable, environment, program folder
    // (the Unix convention). Root can write to an installed folder.
    const std::tuple<const char*, const Files&, bool, const Env&, const char*> cases[] = {
        {"/src/build/app", build, true, dataHome, "\\src\\build\\app"},
        {"/usr/bin", usr, true, dataHome, "\\data\\ann\\Vantorin"},
        {"/opt/v/bin", opt, true, homeOnly, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", usr, false, relativeDataHome, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", usr, true, rootHome, "\\.local\\share\\Vantorin"},
        {"/usr/bin", elsewhere, true, dataHome, "\\usr\\bin"},
        {"/media/stick", build, false, dataHome, "\\data\\ann\\Vantorin"},
        {"/usr/bin", usr, true, none, "\\usr\\bin"},
    };
    for (const auto& [folder, files, writable, env, expected] : cases) {
        const Env& e = env;
        const Files& f = files;
        const auto lookup = [&e](const std::string& name) {
            return e.contains(name) ? e.at(name) : "";
        };
        const auto isFile = [&f](const std::string& path) { return f.contains(path); };
        const auto canWrite = [w = writable](const std::string&) { return w; };
        EXPECT_EQ(ChooseProgramFolder(folder, isFile, canWrite, FolderConvention::Xdg, lookup),
                  expected)
            << folder << " writable " << writable;
    }
}

}  // namespace
}  // namespace vantorin
