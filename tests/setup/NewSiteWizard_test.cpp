#include "setup/NewSiteWizard.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QtWidgets>
#include <filesystem>
#include <map>
#include <string>

#include "platform/SettingsStore.h"
#include "setup/FolderChooser.h"
#include "setup/KeywordFiltersDialog.h"
#include "setup/SetupServices.h"
#include "tests/support/EngineWorld.h"
#include "tests/support/WidgetSnapshot.h"
#include "text/Strings.h"

namespace vantorin::testing {
namespace {

// A settings store in memory, and one world per test: an engine world with
// the setup dialogs' seams over it.
struct MemorySettings : SettingsStore {
    std::string Read(const std::string& key, const std::string& defaultValue) override {
        return values.contains(key) ? values[key] : defaultValue;
    }
    void Put(const std::string& key, const std::string& value) override { values[key] = value; }
    std::map<std::string, std::string> values;
};

struct SetupWorld : EngineWorld {
    MemorySettings settings;
    SetupServices services{engine, files, filters, settings, dialogs};
};

// The tests but one share a world; that one makes a world per row.
class Wizard : public ::testing::Test, public SetupWorld {};

using Strings = std::vector<std::string>;

const std::string kDefaultsFile =
    ".htm\r\n.html\r\n.php\r\n.asp\r\n.txt\r\n.gif\r\n.jpg\r\n.jpeg\r\n.png\r\n.pdf\r\n.zip\r\n"
    ".css\r\n";

const std::string kEror =
    "Eror 16: That is an invalid directory. Check it has no invalid characters.";

std::string TypesFile(const SetupWorld& w) {
    return ReadNativeFile(w.dir.NativePath("prog/temp/filetypes.txt"));
}

// A click as the window system delivers it: a window that a modal dialog
// blocks never gets it.
void Click(QWidget* button) {
    QTest::mouseClick(button->window()->windowHandle(), Qt::LeftButton, {},
                      button->mapTo(button->window(), button->rect().center()));
}

// Every way of closing the wizard stores the timeout typed, trimmed, and sets
// every connection's timer from it. Download and Close first make the folder typed
// with slashes: shown and stored as typed with the final separator added,
// handed to the rules backslashed; they save the types shown (a first run
// shows the defaults twice). A folder that cannot be made gets "Eror" and the
// wizard stays open, nothing stored or saved; running as root ignores
// read-only permissions, so that folder is one below a plain file.
TEST_F(Wizard, ClosingSetsTheTimersAndDownloadAndCloseMakeTheFolder) {
    enum Way { kDownload, kClose, kFrame, kEscape };
    // How it closes, the folder typed below the temporary one ("": left
    // alone), the timeout typed, the timers' interval (20000: left as it was;
    // 3000000 s is more than a timer holds).
    const std::tuple<Way, std::string, const char*, int> cases[] = {
        {kDownload, "/site/deeper", "12", 12000},
        {kClose, "/site/deeper", "  7.5 ", 7500},
        {kDownload, "/plain.txt/sub", "12", 20000},
        {kClose, "/plain.txt/sub", "12", 20000},
        {kFrame, "", "abc", 0},
        {kEscape, "", "", 20000},
        {kFrame, "", "3000000", 20000}};
    for (const auto& [way, folder, timeout, ms] : cases) {
        SCOPED_TRACE(::testing::Message() << way << folder << " " << timeout);
        SetupWorld w;
        WriteNativeFile(w.dir.NativePath("plain.txt"), "x");
        NewSiteWizard form(w.services);
        form.show();
        // What was read is written back; the timeout list shows 15 first.
        EXPECT_EQ(w.settings.values["LastURL"] + form.timeout->currentText().toStdString(),
                  "http://15");
        form.address->setText("http://site.test/");
        if (!folder.empty()) form.folder->setText((w.dir.Native() + folder).c_str());
        form.timeout->setEditText(timeout);
        if (way == kDownload) form.DownloadClicked();
        if (way == kClose) form.CloseClicked();
        if (way == kFrame) form.close();
        if (way == kEscape) form.reject();

        const bool refused = folder.starts_with("/plain"), made = !refused && !folder.empty();
        const bool started = made && way == kDownload;
        // The box, still open, the crawl, the timeout stored, the first and last timers, the
        // types saved.
        EXPECT_EQ(
            std::tuple(w.dialogs.asked, form.isVisible(), w.model.address, w.model.Running(),
                       w.settings.values["Timeout"], w.engine.ConnectionAt(1).SilenceInterval(),
                       w.engine.ConnectionAt(24).SilenceInterval(), TypesFile(w)),
            std::tuple(Strings(refused, kEror), refused, started ? "www.site.test/" : "", started,
                       refused ? "" : QString(timeout).trimmed().toStdString(), ms, ms,
                       made ? kDefaultsFile + kDefaultsFile : kDefaultsFile));
        // A folder not made would fail its probe and be refused; the probe's
        // removal shows in the end-to-end mirror's list of files.
        if (!made) continue;
        const std::string typed = w.dir.Native() + folder + "/";
        EXPECT_EQ(std::make_tuple(w.engine.TargetFolder(), form.folder->text().toStdString(),
                                  w.settings.values["InDir"]),
                  std::make_tuple(w.dir.Backslashed() + "site\\deeper\\", typed, typed));
    }
}

// Add takes an extension of at most four letters, with its dot, lower-cased;
// Delete asks first; Set Default asks and, unless answered No, resets the
// list and writes the file.
TEST_F(Wizard, FileTypesButtons) {
    NewSiteWizard form(services);
    dialogs.inputs = {"HTML", "  .Jpeg  ", ".abcd", ".htm", "abcde", "   ", std::nullopt};
    for (int i = 0; i < 7; ++i) form.AddTypeClicked();
    // Added after the 24 a first run shows (the defaults twice).
    EXPECT_TRUE(ShownText(*form.fileTypes).ends_with(".css,.html,.jpeg,.abcd,.htm]"));
    EXPECT_EQ(dialogs.prompts.back(), "Enter a file extension (e.g. .html)");

    form.DeleteTypeClicked();  // nothing selected
    form.fileTypes->setCurrentRow(1);
    dialogs.answers = {kAnswerNo, kAnswerYes};
    form.DeleteTypeClicked();
    form.DeleteTypeClicked();
    EXPECT_EQ(form.fileTypes->item(1)->text(), ".php");  // one of the 28 gone, on Yes
    EXPECT_EQ(dialogs.asked,
              (Strings{"Error 64: That file extension is too long! (max 4 characters)",
                       "Error 64: You must select a list item to delete.",
                       "Delete 68: Are you sure you want to remove this list item?\r\n\r\n.html",
                       "Delete 68: Are you sure you want to remove this list item?\r\n\r\n.html"}));

    // Set Default: No keeps the list; anything else resets it and writes the file.
    dialogs.answers = {kAnswerNo, kAnswerOk};
    form.DefaultTypesClicked();
    EXPECT_EQ(form.fileTypes->count(), 27);
    form.DefaultTypesClicked();
    EXPECT_EQ(dialogs.asked.back(),
              "Default 68: Are you sure you want to set the file types list to default?");
    EXPECT_EQ(std::pair(form.fileTypes->count(), TypesFile(*this)), std::pair(12, kDefaultsFile));
}

// The wizard opens centred over the main window and grows and shrinks about
// its centre, but never leaves the screen's available area; Options names
// the way it goes next.
TEST_F(Wizard, OpensOverTheMainWindowAndStaysOnTheScreenAsItGrows) {
    QWidget main;
    const QRect screen = main.screen()->availableGeometry();
    // The main window; whether the wizard has room to grow about its centre.
    const std::pair<QRect, bool> cases[] = {{{screen.center().x() - 300, 100, 600, 300}, true},
                                            {{screen.x(), 100, 100, 300}, false},
                                            {{screen.right() - 99, 100, 100, 300}, false}};
    for (const auto& [placed, room] : cases) {
        main.setGeometry(placed);
        NewSiteWizard* wizard = NewSiteWizard::Open(services, &main);
        EXPECT_NEAR(wizard->geometry().center().y(), placed.center().y(), 1);
        for (int click = 0; click < 3; ++click) {  // opened, expanded, collapsed
            if (click > 0) wizard->OptionsClicked();
            // Its frame's size is known once it is shown, after it was placed.
            const QRect frame =
                click ? wizard->frameGeometry() : QRect(wizard->pos(), wizard->size());
            EXPECT_TRUE(screen.contains(frame)) << placed.x() << " " << click;
            EXPECT_EQ(wizard->optionsButton->text(), click == 1 ? "Options <<" : "Options >>");
            if (room) {
                EXPECT_NEAR(frame.center().x(), placed.center().x(), 2) << click;
            }
        }
        wizard->reject();
    }
}

// Folders show with "/" in the chooser whatever form InDir was stored in, and
// the chooser opens the root of a missing one; the rules get the backslash
// form, a root with its designed double separator.
TEST_F(Wizard, TheFolderChooserShowsSlashesAndHandsBackBackslashes) {
    std::filesystem::create_directories(dir.NativePath("sites/Beta"));
    const std::string sites = dir.Native() + "/sites";
    // Stored InDir, the folder shown, what Ok chooses.
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {sites + "/", sites, dir.Backslashed() + "sites\\"},
        {dir.Backslashed() + "sites\\", sites, dir.Backslashed() + "sites\\"},
        {sites + "/never/made/", "/", "\\\\"},
        {"", "/", "\\\\"}};
    for (const auto& [stored, shown, chosen] : cases) {
        settings.values["InDir"] = stored;
        FolderChooser chooser(settings);
        EXPECT_EQ(chooser.openFolderLabel->text().toStdString(), shown) << stored;
        EXPECT_EQ(chooser.folders->item(0)->text().toStdString(), "/") << stored;
        QStringList drives;
        for (int i = 0; i < chooser.drives->count(); ++i) drives << chooser.drives->itemText(i);
        EXPECT_TRUE(drives[0].startsWith("/") && drives.removeDuplicates() == 0 &&
                    chooser.drives->currentIndex() >= 0)  // the open folder's drive is selected
            << stored;
        chooser.OkClicked();
        EXPECT_EQ(chooser.Chosen(), chosen) << stored;
    }

    settings.values["InDir"] = sites;
    NewSiteWizard form(services);
    form.chooseFolderButton->click();
    auto* chooser = form.findChild<FolderChooser*>();
    ASSERT_TRUE(chooser && chooser->isVisible());
    const auto found = chooser->folders->findItems("Beta", Qt::MatchContains);
    ASSERT_EQ(found.size(), 1);
    emit chooser->folders->itemActivated(found[0]);
    const auto beta = chooser->folders->findItems("Beta", Qt::MatchContains);  // listed anew
    ASSERT_EQ(beta.size(), 1);
    // Three blanks deeper than the folder it is in.
    EXPECT_EQ(beta[0]->text().indexOf('B'),
              chooser->folders->findItems("sites", Qt::MatchEndsWith)[0]->text().indexOf('s') + 3);
    chooser->okButton->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(std::pair(form.folder->text().toStdString(), form.findChild<FolderChooser*>()),
              std::pair(sites + "/Beta/", static_cast<FolderChooser*>(nullptr)));
}

// The keyword filters opened from the modal wizard take input beside it (the
// snapshot shows them modeless, so the wizard takes its own too), Filters
// pressed again brings the same dialog forward, and closing the wizard closes
// it, written.
// Keywords are trimmed and upper-cased; a blank one is not added, a repeat in
// any case is refused with a box; removing the last item leaves none
// selected; Clear answered No keeps the list.
TEST_F(Wizard, FiltersTakeInputBesideTheModalWizardAndCloseWithIt) {
    QWidget main;
    main.show();
    QPointer<KeywordFiltersDialog> dialog;
    NewSiteWizard* wizard = NewSiteWizard::Open(services, &main);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(wizard));
    Click(wizard->address);  // the focus selects the whole address
    QCoreApplication::processEvents();
    EXPECT_EQ(wizard->address->selectedText(), wizard->address->text());
    // The dialogs opened: the wizard's children, so they take input beside it.
    const auto open = [&] { return wizard->findChildren<KeywordFiltersDialog*>(); };
    Click(wizard->filtersButton);
    ASSERT_EQ(open().size(), 1);
    dialog = open()[0];
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog));
    for (const char* typed : {" ads ", "Ads", "   ", "pop up", "track"}) {
        dialog->entry->setText(typed);
        Click(dialog->addButton);
    }
    Click(wizard->filtersButton);  // pressed again: the same dialog, its list as it stands
    EXPECT_EQ(open(), QList{dialog.data()});
    EXPECT_EQ(std::tuple(dialog->Items(), dialogs.asked.size(), dialog->entry->text(),
                         dialog->focusWidget() == dialog->entry),  // ready for the next
              std::tuple(Strings{"ADS", "POP UP", "TRACK"}, std::size_t{1}, QString(), true));
    dialog->keywords->setCurrentRow(2);  // the last goes, and nothing more after it
    Click(dialog->removeButton);
    Click(dialog->removeButton);
    dialogs.answers = {kAnswerNo};
    Click(dialog->clearAllButton);
    EXPECT_EQ(std::pair(dialog->Items(), dialogs.asked.back()),
              std::pair(Strings{"ADS", "POP UP"},
                        std::string("Clear Filters 20: Are you sure you want to remove all the "
                                    "filters?")));
    wizard->reject();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog.isNull());
    EXPECT_EQ(ReadNativeFile(dir.NativePath("prog/filters.txt")), "ADS\r\nPOP UP\r\n");
}

// Each dialog of the setup as it opens, control by control: the wizard
// collapsed and expanded (collapsing again is pinned by the placement test),
// the keyword filters with two keywords, and the folder chooser on a folder
// with two folders in it (the machine's drives and the temporary folder's
// name masked).
TEST_F(Wizard, EachDialogLooksAsItsSnapshot) {
    settings.values = {{"InDir", "/home/me/Websites/"}, {"LastURL", "http://www.site.test/"}};
    NewSiteWizard wizard(services);
    wizard.show();
    ExpectSnapshot(wizard, "setup/snapshots/wizard-collapsed.txt");
    wizard.OptionsClicked();
    ExpectSnapshot(wizard, "setup/snapshots/wizard-expanded.txt");

    filters.Save({"ADS", "TRACK"}, files);
    KeywordFiltersDialog* dialog = KeywordFiltersDialog::Open(services, &wizard);
    ExpectSnapshot(*dialog, "setup/snapshots/filters.txt");
    const QPointer<KeywordFiltersDialog> closed = dialog;
    dialog->reject();  // gone once closed, so Filters opens a fresh one
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(closed.isNull());

    for (const char* folder : {"sites/Alpha", "sites/Beta"})
        std::filesystem::create_directories(dir.NativePath(folder));
    settings.values["InDir"] = dir.Native() + "/sites/";
    FolderChooser chooser(settings);
    chooser.show();
    // The text between `after` and the next quote, replaced.
    const auto masked = [](std::string& snapshot, const std::string& after, const char* with) {
        const std::size_t from = snapshot.find(after) + after.size();
        snapshot.replace(from, snapshot.find('"', from) - from, with);
    };
    ExpectSnapshot(chooser, "setup/snapshots/folder-chooser.txt", [&](std::string snapshot) {
        masked(snapshot, " drives \"", "DRIVES");
        masked(snapshot, " openFolderLabel \"", "TEMPORARY/sites");
        masked(snapshot, " folders \"", "... sites, Alpha, Beta]");
        return snapshot;
    });
}

}  // namespace
}  // namespace vantorin::testing
