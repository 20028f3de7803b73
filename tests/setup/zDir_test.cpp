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

using testing::MemorySettings;
using testing::TempDir;

std::string Without(const std::string& folder) {
    return folder.substr(0, folder.size() - 1);
}

QListWidgetItem* ItemNamed(QListWidget& list, const QString& name) {
    for (int i = 0; i < list.count(); ++i)
        if (list.item(i)->text().trimmed() == name) return list.item(i);
    return nullptr;
}

TEST(DirectoryChooser, OpensOnTheStoredFolderAndBrowsesDown) {
    TempDir dir;
    std::filesystem::create_directories(dir.NativePath("sites/Beta"));
    std::filesystem::create_directories(dir.NativePath("sites/alpha"));
    MemorySettings settings;
    settings.values["InDir"] = dir.Backslashed() + "sites\\";
    zDir chooser(settings);
    EXPECT_EQ(chooser.windowTitle(), "Select Directory to Save the Website");
    EXPECT_EQ(chooser.Command1->text(), "&Ok...");
    EXPECT_EQ(chooser.Label1->text().toStdString(), dir.Backslashed() + "sites");
    EXPECT_EQ(chooser.Drive1->currentIndex(), 0);

    QListWidgetItem* beta = ItemNamed(*chooser.Dir1, "Beta");
    ASSERT_NE(beta, nullptr);
    ASSERT_NE(ItemNamed(*chooser.Dir1, "alpha"), nullptr);
    emit chooser.Dir1->itemActivated(beta);
    EXPECT_EQ(chooser.Label1->text().toStdString(), dir.Backslashed() + "sites\\Beta");

    chooser.Command1_Click();
    EXPECT_EQ(chooser.result(), QDialog::Accepted);
    EXPECT_EQ(chooser.Chosen(), dir.Backslashed() + "sites\\Beta\\");

    zDir cancelled(settings);
    cancelled.Drive1_Change();  // the root drive stays selected: its root opens
    EXPECT_EQ(cancelled.Label1->text(), "\\");
    cancelled.Command2_Click();
    EXPECT_EQ(cancelled.result(), QDialog::Rejected);
    EXPECT_EQ(cancelled.Chosen(), "");
}

TEST(DirectoryChooser, MissingFolderOpensTheRootAndOkThereKeepsTwoBackslashes) {
    TempDir dir;
    struct Case {
        std::string stored;
        bool present;
    };
    const Case cases[] = {{dir.Backslashed() + "never\\made\\", false},
                          {"", false},
                          {"C:\\Websites\\", false},
                          {Without(dir.Backslashed()), true}};
    for (const auto& c : cases) {
        MemorySettings settings;
        settings.values["InDir"] = c.stored;
        zDir chooser(settings);
        const std::string expected = c.present ? c.stored : "\\";
        EXPECT_EQ(chooser.Dir1Path(), expected) << c.stored;
        EXPECT_EQ(chooser.Label1->text().toStdString(), expected) << c.stored;
        chooser.Command1_Click();
        EXPECT_EQ(chooser.Chosen(), expected + "\\") << c.stored;
    }
}

}  // namespace
}  // namespace vantorin
