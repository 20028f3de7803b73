#include "setup/frmNew.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QGroupBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <filesystem>

#include "extractor/FileTypesList.h"
#include "setup/zDir.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using testing::AskedBox;
using testing::NativeExists;
using testing::ReadNativeFile;
using testing::SetupWorld;

const char* const kEror = "That is an invalid directory. Check it has no invalid characters.";
const std::string kDefaultsFile =
    ".htm\r\n.html\r\n.php\r\n.asp\r\n.txt\r\n.gif\r\n.jpg\r\n.jpeg\r\n.png\r\n.pdf\r\n.zip\r\n"
    ".css\r\n";

std::vector<std::string> Items(const QListWidget& list) {
    std::vector<std::string> items;
    for (int i = 0; i < list.count(); ++i) items.push_back(list.item(i)->text().toStdString());
    return items;
}

class Wizard : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::create_directories(w.dir.NativePath("temp"));
        w.settings.values["InDir"] = w.dir.Backslashed() + "site\\";
    }
    std::string TypesFile() const { return ReadNativeFile(w.ProgramFile("temp/filetypes.txt")); }

    SetupWorld w;
};

TEST_F(Wizard, FirstLoadShowsDefaultsTwiceAndWritesTheSettingsBack) {
    w.settings.values.clear();
    frmNew form(w.services, w.host);
    EXPECT_EQ(form.List1->count(), 24);
    EXPECT_EQ(Items(*form.List1)[12], ".htm");
    EXPECT_EQ(TypesFile(), kDefaultsFile);
    EXPECT_EQ(form.txtURL->text(), "http://");
    EXPECT_EQ(w.settings.values["LastURL"], "http://");
    EXPECT_EQ(w.settings.values["InDir"], form.txtDir->text().toStdString());
    EXPECT_EQ(form.List2->currentText(), "15");
    std::vector<std::string> offered;
    for (int i = 0; i < form.List2->count(); ++i)
        offered.push_back(form.List2->itemText(i).toStdString());
    EXPECT_EQ(offered, (std::vector<std::string>{"5", "10", "20", "30", "45"}));
    const int before = w.settings.writes["LastURL"];
    form.txtURL->setText("http://a");
    form.txtURL->setText("http://ab");
    EXPECT_EQ(w.settings.writes["LastURL"], before + 2);
    EXPECT_EQ(w.settings.values["LastURL"], "http://ab");
    EXPECT_EQ(form.windowTitle(), "New Site Wizard");
    EXPECT_EQ(form.font().family(), "Verdana");
}

TEST_F(Wizard, DownloadChecksTheFolderSavesTypesAndStartsTheCrawl) {
    frmNew form(w.services, w.host);
    form.show();
    form.txtURL->setText("http://site.test/");
    form.txtDir->setText((w.dir.Native() + "/site/deeper").c_str());  // typed with slashes
    form.List2->setEditText("20");
    form.Command1_Click();

    const std::string folder = w.dir.Backslashed() + "site\\deeper\\";
    EXPECT_EQ(w.vars.TargetFolder, folder);
    EXPECT_EQ(form.txtDir->text().toStdString(), folder);
    EXPECT_EQ(w.settings.values["InDir"], folder);
    EXPECT_TRUE(std::filesystem::is_directory(w.dir.NativePath("site/deeper")));
    EXPECT_FALSE(NativeExists(w.dir.NativePath("site/deeper/test23893.txt")));
    EXPECT_EQ(w.host.text1, "http://site.test/");
    EXPECT_EQ(w.host.calls, (std::vector<std::string>{"SetText1", "ConnectNowNow"}));
    EXPECT_EQ(TypesFile(), kDefaultsFile + kDefaultsFile);  // the doubled first-run list
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(form.result(), QDialog::Accepted);
    EXPECT_EQ(w.host.TmrOutInterval(24), 20000);
    EXPECT_TRUE(w.dialogs.asked.empty());
}

TEST_F(Wizard, AnUnwritableFolderShowsEror_ForDownloadAndClose) {
    // Running as root ignores read-only permissions, so the unwritable folder
    // is one that cannot exist: below a plain file.
    testing::WriteNativeFile(w.dir.NativePath("plain.txt"), "x");
    frmNew form(w.services, w.host);
    form.show();
    const std::string typesBefore = TypesFile();
    w.dialogs.inputs.push_back(".new");
    form.Command3_Click();
    form.txtDir->setText((w.dir.Backslashed() + "plain.txt/sub").c_str());

    form.Command1_Click();
    form.Command2_Click();

    const AskedBox eror{kEror, "Eror", 16};
    EXPECT_EQ(w.dialogs.asked, (std::vector<AskedBox>{eror, eror}));
    EXPECT_TRUE(form.isVisible());
    EXPECT_TRUE(w.host.calls.empty());
    EXPECT_EQ(TypesFile(), typesBefore);
    EXPECT_EQ(w.settings.values["InDir"], w.dir.Backslashed() + "plain.txt\\sub\\");
}

TEST_F(Wizard, CloseSavesTheTypesWithoutStarting) {
    frmNew form(w.services, w.host);
    form.show();
    w.dialogs.answers.push_back(kAnswerYes);
    form.Command5_Click();  // back to the 12 defaults
    form.Command2_Click();
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(w.host.calls.empty());
    EXPECT_EQ(TypesFile(), kDefaultsFile);
}

TEST_F(Wizard, UnloadSetsTheTimeoutTimersOnEveryWayOfClosing) {
    struct Case {
        const char* text;
        const char* stored;
        long long ms;  // 777: left unchanged
        int refuseFrom;
    };
    const Case cases[] = {
        {"12", "12", 12000, 25}, {"12 sec", "12 sec", 12000, 25}, {"abc", "abc", 0, 25},
        {"", "", 777, 25},       {"  7.5 ", "7.5", 7500, 25},     {"45", "45", 45000, 10},
    };
    for (const auto& c : cases) {
        for (int way = 0; way < 3; ++way) {
            SetupWorld fresh;
            fresh.host.refuseFrom = c.refuseFrom;
            {
                frmNew form(fresh.services, fresh.host);
                form.show();
                form.List2->setEditText(c.text);
                if (way == 0) form.close();   // the window frame
                if (way == 1) form.reject();  // Escape
                if (way == 2) {
                    form.txtDir->setText((fresh.dir.Backslashed() + "ok").c_str());
                    form.Command2_Click();
                }
                EXPECT_FALSE(form.isVisible());
            }
            EXPECT_EQ(fresh.settings.values["Timeout"], c.stored) << c.text;
            const int last = std::min(24, c.refuseFrom - 1);
            EXPECT_EQ(fresh.host.TmrOutInterval(1), c.ms) << c.text << " way " << way;
            EXPECT_EQ(fresh.host.TmrOutInterval(last), c.ms) << c.text;
            if (c.refuseFrom <= 24) {
                EXPECT_EQ(fresh.host.TmrOutInterval(24), 777) << c.text;
            }
        }
    }
}

TEST_F(Wizard, AddingFileTypes) {
    struct Case {
        std::optional<std::string> answer;
        const char* added;  // nullptr: nothing added
        bool tooLong;
    };
    const Case cases[] = {
        {"HTML", ".html", false},       {"  .Jpeg  ", ".jpeg", false}, {".abcd", ".abcd", false},
        {".htm", ".htm", false},        {"abcde", nullptr, true},      {"   ", nullptr, false},
        {std::nullopt, nullptr, false},
    };
    for (const auto& c : cases) {
        SetupWorld fresh;
        frmNew form(fresh.services, fresh.host);
        const int before = form.List1->count();
        fresh.dialogs.inputs.push_back(c.answer);
        form.Command3_Click();
        ASSERT_EQ(fresh.dialogs.prompts.size(), 1u);
        EXPECT_EQ(fresh.dialogs.prompts[0].text, "Enter a file extension (e.g. .html)");
        EXPECT_EQ(fresh.dialogs.prompts[0].title, "");
        if (c.added) {
            ASSERT_EQ(form.List1->count(), before + 1);
            EXPECT_EQ(form.List1->item(before)->text().toStdString(), c.added);
        } else {
            EXPECT_EQ(form.List1->count(), before);
        }
        const std::vector<AskedBox> tooLong{
            {"That file extension is too long! (max 4 characters)", "Error", 64}};
        EXPECT_EQ(fresh.dialogs.asked, c.tooLong ? tooLong : std::vector<AskedBox>{});
    }
}

TEST_F(Wizard, DeletingAndResettingFileTypes) {
    frmNew form(w.services, w.host);
    form.Command4_Click();  // nothing selected
    EXPECT_EQ(w.dialogs.asked.back(),
              (AskedBox{"You must select a list item to delete.", "Error", 64}));

    form.List1->setCurrentRow(1);
    w.dialogs.answers = {kAnswerNo, kAnswerYes};
    form.Command4_Click();
    EXPECT_EQ(
        w.dialogs.asked.back(),
        (AskedBox{"Are you sure you want to remove this list item?\r\n\r\n.html", "Delete", 68}));
    EXPECT_EQ(form.List1->count(), 24);
    form.Command4_Click();
    EXPECT_EQ(form.List1->count(), 23);
    EXPECT_EQ(form.List1->item(1)->text(), ".php");

    // Set Default: No keeps the list; anything else resets it and writes the file.
    testing::WriteNativeFile(w.ProgramFile("temp/filetypes.txt"), ".x\r\n");
    w.dialogs.answers = {kAnswerNo, kAnswerOk};
    form.Command5_Click();
    EXPECT_EQ(form.List1->count(), 23);
    form.Command5_Click();
    EXPECT_EQ(
        w.dialogs.asked.back(),
        (AskedBox{"Are you sure you want to set the file types list to default?", "Default", 68}));
    EXPECT_EQ(Items(*form.List1), DefaultFileTypes());
    EXPECT_EQ(TypesFile(), kDefaultsFile);
}

TEST_F(Wizard, OptionsGrowsAndShrinksAboutTheCentre) {
    frmNew form(w.services, w.host);
    form.move(400, 100);
    const int collapsed = form.width();
    EXPECT_EQ(form.FormWidthTwips(), 6855);
    EXPECT_EQ(collapsed, qRound((6855 - 120) * form.logicalDpiX() / 1440.0));
    const int shift = qRound(1432.5 * form.logicalDpiX() / 1440.0);

    form.Command6_Click();
    EXPECT_EQ(form.FormWidthTwips(), 9720);
    EXPECT_EQ(form.width(), qRound((9720 - 120) * form.logicalDpiX() / 1440.0));
    EXPECT_EQ(form.x(), 400 - shift);
    EXPECT_EQ(form.Command6->text(), "Options <<");
    EXPECT_LT(form.Frame1->geometry().left(), form.width());
    EXPECT_GE(form.Frame1->geometry().left(), collapsed);

    form.Command6_Click();
    EXPECT_EQ(form.width(), collapsed);
    EXPECT_EQ(form.x(), 400);
    EXPECT_EQ(form.Command6->text(), "Options >>");
}

TEST_F(Wizard, FocusSelectsTheWholeText) {
    frmNew form(w.services, w.host);
    for (QLineEdit* box : {form.txtURL, form.txtDir}) {
        box->deselect();
        QFocusEvent focus(QEvent::FocusIn, Qt::MouseFocusReason);
        QApplication::sendEvent(box, &focus);
        QApplication::processEvents();
        EXPECT_EQ(box->selectedText(), box->text());
    }
}

TEST_F(Wizard, DirectoryAndFiltersButtons) {
    std::filesystem::create_directories(w.dir.NativePath("site/pick"));
    frmNew form(w.services, w.host);
    QTimer::singleShot(0, [&] {
        auto* chooser = dynamic_cast<zDir*>(QApplication::activeModalWidget());
        ASSERT_NE(chooser, nullptr);
        chooser->SetDir1Path(w.dir.Backslashed() + "site\\pick");
        chooser->Command1->click();
    });
    form.Command7_Click();
    EXPECT_EQ(form.txtDir->text().toStdString(), w.dir.Backslashed() + "site\\pick\\");
    EXPECT_EQ(w.settings.values["InDir"], w.dir.Backslashed() + "site\\pick\\");

    QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
    form.Command7_Click();  // closed by its frame: nothing changes
    EXPECT_EQ(form.txtDir->text().toStdString(), w.dir.Backslashed() + "site\\pick\\");

    form.Command8_Click();
    EXPECT_EQ(w.host.calls, std::vector<std::string>{"ShowKeywordFilterDialog"});
}

}  // namespace
}  // namespace vantorin
