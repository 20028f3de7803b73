#include "setup/zDir.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <filesystem>

#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

// Paths show with "/" whatever form InDir was stored in; Ok hands back the
// backslash form, a root with its designed double separator.
TEST(DirectoryChooser, OpensTheStoredFolderOrTheRootOfAMissingOne) {
    testing::TempDir dir;
    std::filesystem::create_directories(dir.NativePath("sites"));
    const std::string sites = dir.Native() + "/sites";
    // Stored InDir, the folder shown, what Ok chooses.
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {sites + "/", sites, dir.Backslashed() + "sites\\"},
        {dir.Backslashed() + "sites\\", sites, dir.Backslashed() + "sites\\"},
        {sites + "/never/made/", "/", "\\\\"},
        {"", "/", "\\\\"}};
    for (const auto& [stored, shown, chosen] : cases) {
        testing::MemorySettings settings;
        settings.values["InDir"] = stored;
        zDir chooser(settings);
        EXPECT_EQ(chooser.windowTitle(), "Select Directory to Save the Website");
        EXPECT_TRUE(chooser.Command1->isDefault());
        EXPECT_EQ(chooser.Label1->text().toStdString(), shown) << stored;
        EXPECT_EQ(chooser.Dir1->item(0)->text().toStdString(), "/") << stored;
        EXPECT_TRUE(chooser.Drive1->currentText().startsWith("/")) << stored;
        chooser.Command1_Click();
        EXPECT_EQ(chooser.Chosen(), chosen) << stored;
    }
}

}  // namespace
}  // namespace vantorin
