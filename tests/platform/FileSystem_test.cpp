#include "platform/FileSystem.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/support/TempDir.h"

namespace vantorin {
namespace {

using testing::NativeExists;
using testing::ReadNativeFile;
using testing::TempDir;
using testing::WriteNativeFile;

class FileSystemTest : public ::testing::Test {
protected:
    TempDir dir;
    std::string target = dir.Backslashed() + "mirror\\";
    std::string program = dir.Backslashed() + "program";
    FileSystem fs{target, program};
    void SetUp() override {
        std::filesystem::create_directories(dir.NativePath("mirror"));
        std::filesystem::create_directories(dir.NativePath("program"));
    }
};

TEST_F(FileSystemTest, WritesAppendsAndReadsLinesWithCrLf) {
    std::string f = target + "log.txt";
    EXPECT_TRUE(fs.AppendLine(f, "one"));
    EXPECT_TRUE(fs.AppendLine(f, ""));
    EXPECT_TRUE(fs.AppendLine(f, "two\r\n"));
    EXPECT_EQ(ReadNativeFile(dir.NativePath("mirror/log.txt")), "one\r\n\r\ntwo\r\n\r\n");
    auto lines = fs.ReadLines(f);
    ASSERT_TRUE(lines);
    EXPECT_EQ(*lines, (std::vector<std::string>{"one", "", "two", ""}));
    EXPECT_EQ(fs.FileLength(f), 14u);

    std::string bin("a\0b\xff", 4);
    EXPECT_TRUE(fs.WriteWhole(target + "bin", bin));
    EXPECT_EQ(ReadNativeFile(dir.NativePath("mirror/bin")), bin);
    EXPECT_FALSE(fs.FileLength(target + "missing"));
    EXPECT_FALSE(fs.FileLength(target));  // a folder has no file length
    EXPECT_FALSE(fs.ReadLines(target + "missing"));
}

TEST_F(FileSystemTest, GuardRefusesEverythingOutsideTargetAndProgramFolders) {
    WriteNativeFile(dir.NativePath("outside.txt"), "keep");
    const std::string outside[] = {
        dir.Backslashed() + "outside.txt",
        target + "..\\outside.txt",
        target + "a\\..\\..\\outside.txt",
        dir.Backslashed() + "mirror2\\x.txt",  // a sibling sharing the prefix
        "\\etc\\vantorin-test-never",
        "relative-never.txt",
        // Judged whole it lies in the mirror; the system would cut it at the NUL.
        dir.Backslashed() + "escape" + std::string(1, '\0') + "\\..\\mirror\\x.txt",
        "",
    };
    for (const auto& path : outside) {
        EXPECT_FALSE(fs.MayChange(path)) << path;
        EXPECT_FALSE(fs.AppendLine(path, "x")) << path;
        EXPECT_FALSE(fs.WriteWhole(path, "x")) << path;
        EXPECT_FALSE(fs.DeleteFile(path)) << path;
    }
    EXPECT_EQ(ReadNativeFile(dir.NativePath("outside.txt")), "keep");
    EXPECT_FALSE(NativeExists(dir.NativePath("mirror2")));
    EXPECT_FALSE(NativeExists("relative-never.txt"));
    EXPECT_FALSE(NativeExists(dir.NativePath("escape")));

    EXPECT_TRUE(fs.WriteWhole(program + "\\filters.txt", "x"));
    EXPECT_TRUE(fs.WriteWhole(target + "a.txt", "x"));
    EXPECT_TRUE(fs.MayChange(target + "sub\\..\\b.txt"));
}

TEST_F(FileSystemTest, CountsFailedAndRefusedChangesKeepingTheFirstFive) {
    for (int i = 0; i < 7; ++i)
        EXPECT_FALSE(fs.WriteWhole(target + "missing\\f" + std::to_string(i), "x"));
    EXPECT_FALSE(fs.WriteWhole(target + "missing\\f6", "x"));  // the same file again
    EXPECT_FALSE(fs.WriteWhole(target + "missing\\quiet", "x", false));
    EXPECT_FALSE(fs.AppendLine(target + "missing\\log.txt", "x"));
    EXPECT_FALSE(fs.WriteWhole(dir.Backslashed() + "out.txt", "x"));
    EXPECT_FALSE(fs.AppendLine(dir.Backslashed() + "out.txt", "x"));
    EXPECT_FALSE(fs.CreateFolder(dir.Backslashed() + "out"));
    EXPECT_FALSE(fs.DeleteFile(dir.Backslashed() + "out.txt"));
    EXPECT_TRUE(fs.WriteWhole(target + "fine.txt", "x"));
    const WriteFaults& f = fs.Faults();
    EXPECT_EQ(f.filesFailed, 7);
    EXPECT_EQ(f.linesFailed, 1);
    EXPECT_EQ(f.refused, 4);
    ASSERT_EQ(f.firstFiles.size(), 5u);
    EXPECT_EQ(f.firstFiles[0],
              (WriteFailure{dir.NativePath("mirror/missing/f0"), "No such file or directory"}));
    EXPECT_EQ(f.firstFiles[4].path, dir.NativePath("mirror/missing/f4"));
    ASSERT_EQ(f.firstLines.size(), 1u);
    EXPECT_EQ(f.firstLines[0].path, dir.NativePath("mirror/missing/log.txt"));

    // A full disk takes the bytes into the stream's buffer and refuses them at the flush.
    if (!NativeExists("/dev/full")) return;
    FileSystem dev(target, "\\dev");
    EXPECT_FALSE(dev.WriteWhole("\\dev\\full", "x"));
    EXPECT_FALSE(dev.AppendLine("\\dev\\full", "x"));
    EXPECT_EQ(dev.Faults().firstFiles,
              (std::vector<WriteFailure>{{"/dev/full", "No space left on device"}}));
    EXPECT_EQ(dev.Faults().linesFailed, 1);
}

TEST_F(FileSystemTest, GuardFollowsLinksOutOfTheMirror) {
    std::filesystem::create_directories(dir.NativePath("elsewhere"));
    std::filesystem::create_directory_symlink(dir.NativePath("elsewhere"),
                                              dir.NativePath("mirror/link"));
    EXPECT_FALSE(fs.WriteWhole(target + "link\\x.txt", "x"));
    EXPECT_FALSE(NativeExists(dir.NativePath("elsewhere/x.txt")));
}

TEST_F(FileSystemTest, FoldersOnTheWayToTheTargetMayBeCreatedNothingBeside) {
    std::string deep = dir.Backslashed() + "new\\deeper\\";
    FileSystem guarded(deep, program);
    EXPECT_TRUE(guarded.CreateFolder(dir.Backslashed() + "new"));
    EXPECT_TRUE(guarded.CreateFolder(dir.Backslashed() + "new\\deeper"));
    EXPECT_TRUE(guarded.CreateFolder(dir.Backslashed() + "new\\deeper\\site.com"));
    EXPECT_FALSE(guarded.CreateFolder(dir.Backslashed() + "new\\beside"));
    EXPECT_FALSE(guarded.CreateFolder(dir.Backslashed() + "new\\deeper\\site.com"));  // exists
    EXPECT_FALSE(NativeExists(dir.NativePath("new/beside")));
}

TEST_F(FileSystemTest, DeleteMatchingFindsTheFolderWhateverItsCase) {
    std::filesystem::create_directories(dir.NativePath("mirror/Site.COM/Img"));
    WriteNativeFile(dir.NativePath("mirror/Site.COM/Img/a.gif.tmp"), "q");
    WriteNativeFile(dir.NativePath("mirror/Site.COM/Img/b.tmp"), "q");
    WriteNativeFile(dir.NativePath("mirror/Site.COM/Img/c.gif"), "keep");
    WriteNativeFile(dir.NativePath("mirror/Site.COM/Img/d.tmpl"), "keep");
    WriteNativeFile(dir.NativePath("mirror/Site.COM/top.tmp"), "keep");

    EXPECT_EQ(fs.CountFilesEndingIn(target, ".tmp"), 3);
    EXPECT_EQ(fs.CountFilesEndingIn(target + "nowhere", ".tmp"), 0);
    // The mirror part of the pattern is lower-cased, as the list of made folders is.
    std::string pattern = target + "site.com\\img\\*.tmp";
    EXPECT_EQ(fs.DeleteMatching(pattern), 2);
    EXPECT_FALSE(NativeExists(dir.NativePath("mirror/Site.COM/Img/a.gif.tmp")));
    EXPECT_TRUE(NativeExists(dir.NativePath("mirror/Site.COM/Img/c.gif")));
    EXPECT_TRUE(NativeExists(dir.NativePath("mirror/Site.COM/Img/d.tmpl")));
    EXPECT_TRUE(NativeExists(dir.NativePath("mirror/Site.COM/top.tmp")));
    EXPECT_EQ(fs.DeleteMatching(target + "nowhere\\*.tmp"), 0);
    EXPECT_FALSE(fs.DeleteFile(target + "Site.COM\\Img"));  // a folder is no file
    EXPECT_TRUE(NativeExists(dir.NativePath("mirror/Site.COM/Img")));

    WriteNativeFile(dir.NativePath("stray.tmp"), "keep");
    EXPECT_EQ(fs.DeleteMatching(dir.Backslashed() + "*.tmp"), 0);  // outside: refused
    EXPECT_TRUE(NativeExists(dir.NativePath("stray.tmp")));
}

}  // namespace
}  // namespace vantorin
