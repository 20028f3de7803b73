#include "setup/FolderRules.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using testing::NativeExists;
using testing::SetupWorld;

TEST(FolderRules, NormalisesTheTypedFolder) {
    struct Case {
        const char* typed;
        const char* folder;
    };
    const Case cases[] = {
        {"D:/sites/abc", "D:\\sites\\abc\\"},
        {"a&b?c", "a_b_c\\"},
        {"x**y", "xy\\"},
        {"", "\\"},
        {"   ", "   \\"},
        {"C:\\Websites\\", "C:\\Websites\\"},
        {"C:\\\\", "C:\\\\"},  // the chooser's root keeps its double backslash
        {"a{b}|c<d>e!", "abc_d_e_\\"},
        {"a????????b", "a_b\\"},
        {"a?????????b", "a__b\\"},  // three "__" passes leave nine down to two
        {"D:/x/", "D:\\x\\"},
    };
    for (const auto& c : cases) EXPECT_EQ(NormaliseFolderText(c.typed), c.folder) << c.typed;
}

TEST(FolderRules, ProbeProvesAFolderWritableAndLeavesNothing) {
    SetupWorld w;
    std::filesystem::create_directories(w.dir.NativePath("site"));
    w.vars.TargetFolder = w.dir.Backslashed() + "site\\";
    std::string path = w.dir.Backslashed() + "site";  // no final backslash yet
    EXPECT_TRUE(TestFolderWritable(path, w.fs));
    EXPECT_EQ(path, w.vars.TargetFolder);
    EXPECT_FALSE(NativeExists(w.dir.NativePath("site/test23893.txt")));
}

TEST(FolderRules, ProbeFailsWhereNoFileCanBeMade) {
    // Tests run as root, which writes into read-only folders, so the folder
    // that cannot be written is one below a plain file.
    SetupWorld w;
    testing::WriteNativeFile(w.dir.NativePath("plain.txt"), "x");
    w.vars.TargetFolder = w.dir.Backslashed() + "plain.txt\\sub\\";
    std::string path = w.vars.TargetFolder;
    EXPECT_FALSE(TestFolderWritable(path, w.fs));
    // A folder outside the target folder is refused by the guard, too.
    std::filesystem::create_directories(w.dir.NativePath("other"));
    std::string other = w.dir.Backslashed() + "other\\";
    EXPECT_FALSE(TestFolderWritable(other, w.fs));
    EXPECT_FALSE(NativeExists(w.dir.NativePath("other/test23893.txt")));
}

TEST(FolderRules, MakesEveryFolderAlongTheTarget) {
    SetupWorld w;
    w.vars.TargetFolder = w.dir.Backslashed() + "a\\b\\c\\";
    MakeFoldersAlong(w.vars.TargetFolder, w.vars, w.fs);
    EXPECT_TRUE(std::filesystem::is_directory(w.dir.NativePath("a/b/c")));
}

}  // namespace
}  // namespace vantorin
