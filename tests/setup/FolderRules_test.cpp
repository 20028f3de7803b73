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

TEST(FolderRules, ProbeNeedsAFolderInsideTheTarget) {
    SetupWorld w;
    std::filesystem::create_directories(w.dir.NativePath("site"));
    std::filesystem::create_directories(w.dir.NativePath("other"));
    w.vars.TargetFolder = w.dir.Backslashed() + "site\\";
    std::string path = w.dir.Backslashed() + "site";  // no final backslash yet
    EXPECT_TRUE(TestFolderWritable(path, w.fs));
    EXPECT_EQ(path, w.vars.TargetFolder);
    // The guard refuses a probe outside the target folder.
    std::string other = w.dir.Backslashed() + "other\\";
    EXPECT_FALSE(TestFolderWritable(other, w.fs));
    EXPECT_FALSE(NativeExists(w.dir.NativePath("other/test23893.txt")));
}

}  // namespace
}  // namespace vantorin
