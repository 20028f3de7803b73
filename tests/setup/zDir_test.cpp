#include "setup/zDir.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <filesystem>

#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

TEST(DirectoryChooser, OpensTheStoredFolderOrTheRootOfAMissingOne) {
    testing::TempDir dir;
    std::filesystem::create_directories(dir.NativePath("sites"));
    const std::string sites = dir.Backslashed() + "sites";
    const std::pair<std::string, std::string> cases[] = {
        {sites + "\\", sites}, {sites + "\\never\\made\\", "\\"}, {"", "\\"}};
    for (const auto& [stored, opens] : cases) {
        testing::MemorySettings settings;
        settings.values["InDir"] = stored;
        zDir chooser(settings);
        EXPECT_EQ(chooser.Dir1Path(), opens) << stored;
        EXPECT_EQ(chooser.Label1->text().toStdString(), opens) << stored;
        chooser.Command1_Click();  // Ok at the root keeps two backslashes
        EXPECT_EQ(chooser.Chosen(), opens + "\\") << stored;
    }
}

}  // namespace
}  // namespace vantorin
