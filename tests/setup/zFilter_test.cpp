#include "setup/zFilter.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "extractor/KeywordFilters.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using testing::AskedBox;
using testing::ReadNativeFile;
using testing::SetupWorld;

std::vector<std::string> Items(const zFilter& dialog) {
    return dialog.Items();
}

TEST(KeywordFilterDialog, OpensOnTheCurrentFiltersAndAddsUpperCased) {
    SetupWorld w;
    w.vars.KeywordFilters[1] = "banner";
    w.vars.KeywordFilters[2] = "Track";
    zFilter dialog(w.services);
    EXPECT_EQ(dialog.windowTitle(), "Keyword Filters");
    EXPECT_EQ(Items(dialog), (std::vector<std::string>{"banner", "Track"}));

    struct Case {
        const char* typed;
        bool duplicate;
    };
    const Case cases[] = {{"ads", false},  {"BANNER", true}, {"  Banner  ", true},
                          {" ads ", true}, {"   ", false},   {"pop up", false}};
    for (const auto& c : cases) {
        w.dialogs.asked.clear();
        dialog.Text1->setText(c.typed);
        dialog.Command1_Click();
        EXPECT_TRUE(dialog.Text1->text().isEmpty()) << c.typed;
        const std::vector<AskedBox> dup{{"Filter already exists in the list!", "Filter", 64}};
        EXPECT_EQ(w.dialogs.asked, c.duplicate ? dup : std::vector<AskedBox>{}) << c.typed;
    }
    EXPECT_EQ(Items(dialog), (std::vector<std::string>{"banner", "Track", "ADS", "POP UP"}));
}

TEST(KeywordFilterDialog, RemoveReselectsTheSamePlace) {
    SetupWorld w;
    for (int i = 1; i <= 3; ++i)
        w.vars.KeywordFilters[static_cast<std::size_t>(i)] = "K" + std::to_string(i);
    zFilter dialog(w.services);
    dialog.Command2_Click();  // nothing selected: nothing removed
    EXPECT_EQ(dialog.List1->count(), 3);

    dialog.List1->setCurrentRow(1);
    dialog.Command2_Click();
    EXPECT_EQ(Items(dialog), (std::vector<std::string>{"K1", "K3"}));
    EXPECT_EQ(dialog.List1->currentRow(), 1);
    EXPECT_TRUE(dialog.List1->item(1)->isSelected());

    dialog.Command2_Click();  // the last item: nothing left selected
    EXPECT_EQ(Items(dialog), std::vector<std::string>{"K1"});
    EXPECT_TRUE(dialog.List1->selectedItems().isEmpty());
    dialog.Command2_Click();
    EXPECT_EQ(dialog.List1->count(), 1);
}

TEST(KeywordFilterDialog, ClearAllAsksWithAStopIcon) {
    SetupWorld w;
    w.vars.KeywordFilters[1] = "x";
    zFilter dialog(w.services);
    w.dialogs.answers = {kAnswerNo, kAnswerYes};
    dialog.Command3_Click();
    EXPECT_EQ(dialog.List1->count(), 1);
    dialog.Command3_Click();
    EXPECT_EQ(dialog.List1->count(), 0);
    const AskedBox ask{"Are you sure you want to remove all the filters?", "Clear Filters", 20};
    EXPECT_EQ(w.dialogs.asked, (std::vector<AskedBox>{ask, ask}));
}

TEST(KeywordFilterDialog, ClosingAnyWaySavesTheListForTheNextStart) {
    for (int way = 0; way < 3; ++way) {
        SetupWorld w;
        w.vars.KeywordFilters[1] = "old";
        w.vars.KeywordFilters[2] = "gone";
        QPointer<zFilter> dialog = zFilter::ShowModeless(w.services, nullptr);
        dialog->List1->setCurrentRow(1);
        dialog->Command2_Click();
        dialog->Text1->setText("ads");
        dialog->Command1_Click();
        if (way == 0) dialog->Command4->click();
        if (way == 1) dialog->close();
        if (way == 2) dialog->reject();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(dialog.isNull()) << way;

        EXPECT_EQ(ReadNativeFile(w.ProgramFile("filters.txt")), "old\r\nADS\r\n") << way;
        EXPECT_EQ(KeywordFilterList(w.vars.KeywordFilters),
                  (std::vector<std::string>{"old", "ADS"}));
        KeywordFilterArray nextStart{};
        LoadKeywordFilters(nextStart, w.fs);
        EXPECT_EQ(nextStart, w.vars.KeywordFilters);
    }
}

}  // namespace
}  // namespace vantorin
