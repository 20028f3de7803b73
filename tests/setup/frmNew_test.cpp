#include "setup/frmNew.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <filesystem>

#include "setup/zDir.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using Strings = std::vector<std::string>;

const std::string kDefaultsFile =
    ".htm\r\n.html\r\n.php\r\n.asp\r\n.txt\r\n.gif\r\n.jpg\r\n.jpeg\r\n.png\r\n.pdf\r\n.zip\r\n"
    ".css\r\n";

std::string TypesFile(const testing::SetupWorld& w) {
    return testing::ReadNativeFile(w.dir.NativePath("prog/temp/filetypes.txt"));
}

TEST(Wizard, DownloadAndCloseMakeTheFolderAndSaveTheTypes) {
    for (const bool download : {true, false}) {
        testing::SetupWorld w;
        frmNew form(w.services, w.engine, w.showFilters);
        EXPECT_EQ(TypesFile(w), kDefaultsFile);
        EXPECT_EQ(w.settings.values["LastURL"], "http://");  // what was read is written back
        EXPECT_EQ(form.List2->currentText(), "15");
        form.txtURL->setText("http://site.test/");
        form.txtDir->setText((w.dir.Native() + "/site/deeper").c_str());  // typed with slashes
        form.List2->setEditText("20");
        download ? form.Command1_Click() : form.Command2_Click();

        EXPECT_EQ(w.vars.TargetFolder, w.dir.Backslashed() + "site\\deeper\\");
        EXPECT_TRUE(std::filesystem::is_directory(w.dir.NativePath("site/deeper")));
        EXPECT_FALSE(testing::NativeExists(w.dir.NativePath("site/deeper/test23893.txt")));
        EXPECT_EQ(w.engine.Running(), download);
        EXPECT_EQ(w.engine.State().Text1(), download ? "www.site.test/" : "");
        // The first run shows the defaults twice, and saves what it shows.
        EXPECT_EQ(TypesFile(w), kDefaultsFile + kDefaultsFile);
        EXPECT_EQ(w.engine.TimeoutInterval(24), 20000);
        EXPECT_EQ(w.dialogs.asked, Strings{});
    }
}

TEST(Wizard, AnUnwritableFolderShowsEror_ForDownloadAndClose) {
    // Running as root ignores read-only permissions, so the unwritable folder
    // is one that cannot exist: below a plain file.
    testing::SetupWorld w;
    testing::WriteNativeFile(w.dir.NativePath("plain.txt"), "x");
    frmNew form(w.services, w.engine, w.showFilters);
    form.show();
    const std::string typesBefore = TypesFile(w);
    w.dialogs.inputs.push_back(".new");
    form.Command3_Click();
    form.txtDir->setText((w.dir.Backslashed() + "plain.txt/sub").c_str());
    form.Command1_Click();
    form.Command2_Click();
    const std::string eror =
        "Eror 16: That is an invalid directory. Check it has no invalid characters.";
    EXPECT_EQ(w.dialogs.asked, (Strings{eror, eror}));
    EXPECT_TRUE(form.isVisible());
    EXPECT_FALSE(w.engine.Running());
    EXPECT_EQ(TypesFile(w), typesBefore);
}

TEST(Wizard, ClosingByFrameOrEscapeSetsTheTimeoutTimers) {
    struct Case {
        const char* text;
        int ms;  // 20000: left as it was
    };
    // "  7.5 " is stored trimmed; a value no timer can hold changes none.
    const Case cases[] = {
        {"12", 12000}, {"abc", 0}, {"", 20000}, {"  7.5 ", 7500}, {"3000000", 20000}};
    for (const auto& c : cases) {
        for (const bool frame : {true, false}) {
            testing::SetupWorld w;
            frmNew form(w.services, w.engine, w.showFilters);
            form.show();
            form.List2->setEditText(c.text);
            frame ? (void)form.close() : form.reject();
            EXPECT_EQ(w.settings.values["Timeout"], QString(c.text).trimmed().toStdString());
            EXPECT_EQ(w.engine.TimeoutInterval(1), c.ms) << c.text << frame;
            EXPECT_EQ(w.engine.TimeoutInterval(24), c.ms) << c.text << frame;
        }
    }
}

TEST(Wizard, FileTypesButtons) {
    testing::SetupWorld w;
    frmNew form(w.services, w.engine, w.showFilters);
    w.dialogs.inputs = {"HTML", "  .Jpeg  ", ".abcd", ".htm", "abcde", "   ", std::nullopt};
    for (int i = 0; i < 7; ++i) form.Command3_Click();
    Strings added;
    for (int i = 24; i < form.List1->count(); ++i)
        added.push_back(form.List1->item(i)->text().toStdString());
    EXPECT_EQ(added, (Strings{".html", ".jpeg", ".abcd", ".htm"}));

    form.Command4_Click();  // nothing selected
    form.List1->setCurrentRow(1);
    w.dialogs.answers = {kAnswerNo, kAnswerYes};
    form.Command4_Click();
    EXPECT_EQ(form.List1->count(), 28);
    form.Command4_Click();
    EXPECT_EQ(form.List1->item(1)->text(), ".php");
    EXPECT_EQ(w.dialogs.asked,
              (Strings{"Error 64: That file extension is too long! (max 4 characters)",
                       "Error 64: You must select a list item to delete.",
                       "Delete 68: Are you sure you want to remove this list item?\r\n\r\n.html",
                       "Delete 68: Are you sure you want to remove this list item?\r\n\r\n.html"}));

    // Set Default: No keeps the list; anything else resets it and writes the file.
    w.dialogs.answers = {kAnswerNo, kAnswerOk};
    form.Command5_Click();
    EXPECT_EQ(form.List1->count(), 27);
    form.Command5_Click();
    EXPECT_EQ(w.dialogs.asked.back(),
              "Default 68: Are you sure you want to set the file types list to default?");
    EXPECT_EQ(form.List1->count(), 12);
    EXPECT_EQ(TypesFile(w), kDefaultsFile);
}

TEST(Wizard, OptionsGrowsAndShrinksAboutTheCentre) {
    testing::SetupWorld w;
    frmNew form(w.services, w.engine, w.showFilters);
    form.move(400, 100);
    const double dpi = form.logicalDpiX();
    for (int click = 1; click <= 2; ++click) {
        form.Command6_Click();
        EXPECT_EQ(form.width(), qRound((click == 1 ? 9720 - 120 : 6855 - 120) * dpi / 1440.0));
        EXPECT_EQ(form.x(), click == 1 ? 400 - qRound(1432.5 * dpi / 1440.0) : 400);
        EXPECT_EQ(form.Command6->text(), click == 1 ? "Options <<" : "Options >>");
    }
}

TEST(Wizard, DirectoryButtonBrowsesFromTheStoredFolderAndFiltersOpensTheFilters) {
    testing::SetupWorld w;
    std::filesystem::create_directories(w.dir.NativePath("sites/Beta"));
    const std::string beta = w.dir.Backslashed() + "sites\\Beta\\";
    w.settings.values["InDir"] = w.dir.Backslashed() + "sites";
    frmNew form(w.services, w.engine, w.showFilters);
    QTimer::singleShot(0, [] {
        auto* chooser = dynamic_cast<zDir*>(QApplication::activeModalWidget());
        ASSERT_NE(chooser, nullptr);
        const auto found = chooser->Dir1->findItems("Beta", Qt::MatchContains);
        ASSERT_EQ(found.size(), 1);
        emit chooser->Dir1->itemActivated(found[0]);
        chooser->Command1->click();
    });
    form.Command7_Click();
    EXPECT_EQ(form.txtDir->text().toStdString(), beta);
    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    form.Command7_Click();  // closed by its frame: nothing changes
    EXPECT_EQ(form.txtDir->text().toStdString(), beta);

    form.Command8_Click();
    EXPECT_EQ(w.filterDialogs, 1);
}

}  // namespace
}  // namespace vantorin
