#include "platform/FileSystem.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <tuple>

#include "tests/support/TempDir.h"

namespace vantorin::testing {
namespace {

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

// Refused writes are counted, but not refused tests, nor folders that exist.
TEST_F(FileSystemTest, GuardRefusesEverythingOutsideTargetAndProgramFolders) {
    WriteNativeFile(dir.NativePath("outside.txt"), "keep");
    std::filesystem::create_directories(dir.NativePath("elsewhere"));
    std::filesystem::create_directory_symlink(dir.NativePath("elsewhere"),
                                              dir.NativePath("mirror/link"));
    const auto before = ListTreeExcept(dir.Native(), dir.NativePath("mirror"));
    const std::string outside[] = {
        dir.Backslashed() + "outside.txt",
        target + "..\\outside.txt",
        target + "a\\..\\..\\outside.txt",
        dir.Backslashed() + "mirror2\\x.txt",  // a sibling sharing the prefix
        target + "link\\x.txt",                // a link out of the mirror is followed
        "\\etc\\vantorin-test-never",
        "relative-never.txt",
        // Judged whole it lies in the mirror; the system would cut it at the NUL.
        dir.Backslashed() + "escape" + std::string(1, '\0') + "\\..\\mirror\\x.txt",
        "",
    };
    for (const auto& path : outside)
        EXPECT_FALSE(fs.MayChange(path) || fs.AppendLine(path, "x") || fs.WriteWhole(path, "x") ||
                     fs.DeleteFile(path))
            << path;
    EXPECT_EQ(fs.Faults().refused, 3 * std::ssize(outside));  // each change refused
    // Nothing beside the mirror is made, changed or deleted.
    EXPECT_EQ(ListTreeExcept(dir.Native(), dir.NativePath("mirror")), before);
    // Removed if an escape wrote it, so that it fails this run only.
    for (const char* never : {"relative-never.txt", "/etc/vantorin-test-never"})
        EXPECT_FALSE(std::filesystem::remove(never)) << never;

    EXPECT_TRUE(fs.WriteWhole(program + "\\filters.txt", "x") &&
                fs.WriteWhole(target + "a.txt", "x") && fs.MayChange(target + "sub\\..\\b.txt"));

    FileSystem guarded(dir.Backslashed() + "new\\deeper\\", program);
    // The folders on the way to the target folder may be made; nothing beside
    // them, nor a folder that exists.
    std::string made;
    for (const char* folder :
         {"new", "new\\deeper", "new\\deeper\\site.com", "new\\beside", "new\\deeper\\site.com"})
        made += guarded.CreateFolder(dir.Backslashed() + folder) ? '1' : '0';
    EXPECT_EQ(made, "11100");
    EXPECT_EQ(guarded.Faults().refused, 1);
}

// The first five failures of each kind are kept with the system's reason.
TEST_F(FileSystemTest, CountsFailedWritesKeepingTheFirstFive) {
    for (const char* name : {"f0", "f1", "f2", "f3", "f4", "f5", "f6", "f6"})  // f6 twice
        EXPECT_FALSE(fs.WriteWhole(target + "missing\\" + name, "x")) << name;
    EXPECT_FALSE(fs.WriteWhole(target + "missing\\quiet", "x", false));
    EXPECT_FALSE(fs.AppendLine(target + "missing\\log.txt", "x"));
    EXPECT_TRUE(fs.WriteWhole(target + "fine.txt", "x"));
    const std::string gone = dir.NativePath("mirror/missing/"), why = "No such file or directory";
    std::vector<WriteFailure> firstFive;
    for (const char* name : {"f0", "f1", "f2", "f3", "f4"}) firstFive.push_back({gone + name, why});
    const WriteFaults& f = fs.Faults();
    EXPECT_EQ(std::tuple(f.filesFailed, f.firstFiles, f.linesFailed, f.firstLines),
              std::tuple(7, firstFive, 1, std::vector<WriteFailure>{{gone + "log.txt", why}}));

    // A full disk takes the bytes into the stream's buffer and refuses them at the flush.
    if (!NativeExists("/dev/full"))
        GTEST_SKIP() << "no /dev/full here: the full disk is not checked";
    FileSystem dev(target, "\\dev");
    EXPECT_FALSE(dev.WriteWhole("\\dev\\full", "x") || dev.AppendLine("\\dev\\full", "x"));
    EXPECT_EQ(std::tuple(dev.Faults().firstFiles, dev.Faults().linesFailed),
              std::tuple(std::vector<WriteFailure>{{"/dev/full", "No space left on device"}}, 1));
}

TEST_F(FileSystemTest, DeleteMatchingFindsTheFolderWhateverItsCase) {
    for (const char* name : {"a.gif.tmp", "b.tmp", "c.gif", "d.tmpl"})
        WriteNativeFile(dir.NativePath("mirror/Site.COM/Img/") + name, "q");
    WriteNativeFile(dir.NativePath("mirror/Site.COM/top.tmp"), "keep");
    WriteNativeFile(dir.NativePath("stray.tmp"), "keep");

    EXPECT_EQ(fs.CountFilesEndingIn(target, ".tmp"), 3);
    EXPECT_EQ(fs.CountFilesEndingIn(target + "nowhere", ".tmp"), 0);
    // The mirror part of the pattern is lower-cased, as the list of made folders is.
    EXPECT_EQ(fs.DeleteMatching(target + "site.com\\img\\*.tmp"), 2);
    // Nothing goes from a missing folder, a folder is no file, and outside is refused.
    EXPECT_FALSE(fs.DeleteMatching(target + "nowhere\\*.tmp") ||
                 fs.DeleteFile(target + "Site.COM\\Img") ||
                 fs.DeleteMatching(dir.Backslashed() + "*.tmp"));
    EXPECT_FALSE(NativeExists(dir.NativePath("mirror/Site.COM/Img/a.gif.tmp")));
    for (const char* kept : {"Img/c.gif", "Img/d.tmpl", "top.tmp", "Img", "../../stray.tmp"})
        EXPECT_TRUE(NativeExists(dir.NativePath("mirror/Site.COM/") + kept)) << kept;
}

}  // namespace
}  // namespace vantorin::testing
