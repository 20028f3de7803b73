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
    const Files build = {"/src/build/app/vantorin-window.so"};
    const Files usr = {"/usr/libexec/vantorin/vantorin-window.so"};
    const Files opt = {"/opt/v/libexec/vantorin/vantorin-window.so"};
    const Files elsewhere = {"/usr/lib/vantorin/vantorin-window.so", "/usr/vantorin-window.so",
                             "/usr/bin/libexec/vantorin/vantorin-window.so"};
    // Executable folder, files there, writable, environment, program folder
    // (the Unix convention). Root can write to an installed folder.
    const std::tuple<const char*, const Files&, bool, Env, const char*> cases[] = {
        {"/src/build/app", build, true, dataHome, "\\src\\build\\app"},
        {"/opt/v/bin", opt, true, homeOnly, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", usr, false, relativeDataHome, "\\home\\ann\\.local\\share\\Vantorin"},
        {"/usr/bin", usr, true, {{"HOME", "/"}}, "\\.local\\share\\Vantorin"},  // root
        {"/usr/bin", elsewhere, true, dataHome, "\\usr\\bin"},
        {"/media/stick", build, false, dataHome, "\\data\\ann\\Vantorin"},
        {"/usr/bin", usr, true, {}, "\\usr\\bin"},  // no environment
    };
    for (const auto& [folder, files, writable, env, expected] : cases)
        EXPECT_EQ(
            ChooseProgramFolder(
                folder, [&](const std::string& path) { return files.contains(path); },
                [&](const std::string&) { return writable; }, FolderConvention::Xdg,
                [&](const std::string& name) { return env.contains(name) ? env.at(name) : ""; }),
            expected)
            << folder << " writable " << writable;
}

}  // namespace
}  // namespace vantorin
