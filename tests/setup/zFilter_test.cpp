#include "setup/zFilter.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "extractor/KeywordFilters.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using testing::AskedBox;
using Strings = std::vector<std::string>;

TEST(KeywordFilterDialog, OpensOnTheCurrentFiltersAndAddsUpperCased) {
    testing::SetupWorld w;
    w.vars.KeywordFilters[1] = "banner";
    w.vars.KeywordFilters[2] = "Track";
    zFilter dialog(w.services);
    EXPECT_EQ(dialog.Items(), (Strings{"banner", "Track"}));
    const std::pair<const char*, bool> cases[] = {
        {"ads", false}, {"  Banner  ", true}, {" ads ", true}, {"   ", false}, {"pop up", false}};
    for (const auto& [typed, duplicate] : cases) {
        w.dialogs.asked.clear();
        dialog.Text1->setText(typed);
        dialog.Command1_Click();
        EXPECT_TRUE(dialog.Text1->text().isEmpty()) << typed;
        const std::vector<AskedBox> dup{{"Filter already exists in the list!", "Filter", 64}};
        EXPECT_EQ(w.dialogs.asked, duplicate ? dup : std::vector<AskedBox>{}) << typed;
    }
    EXPECT_EQ(dialog.Items(), (Strings{"banner", "Track", "ADS", "POP UP"}));
}

TEST(KeywordFilterDialog, RemoveReselectsTheSamePlaceAndClearAllAsks) {
    testing::SetupWorld w;
    for (std::size_t i = 1; i <= 3; ++i) w.vars.KeywordFilters[i] = "K" + std::to_string(i);
    zFilter dialog(w.services);
    dialog.List1->setCurrentRow(1);
    dialog.Command2_Click();
    EXPECT_EQ(dialog.Items(), (Strings{"K1", "K3"}));
    EXPECT_TRUE(dialog.List1->item(1)->isSelected());
    dialog.Command2_Click();  // the last item: nothing left selected, so nothing more goes
    dialog.Command2_Click();
    EXPECT_EQ(dialog.Items(), Strings{"K1"});

    w.dialogs.answers = {kAnswerNo, kAnswerYes};
    dialog.Command3_Click();
    EXPECT_EQ(dialog.List1->count(), 1);
    dialog.Command3_Click();
    EXPECT_EQ(dialog.List1->count(), 0);
    EXPECT_EQ(w.dialogs.asked.back(),
              (AskedBox{"Are you sure you want to remove all the filters?", "Clear Filters", 20}));
}

TEST(KeywordFilterDialog, ClosingAnyWaySavesTheListForTheNextStart) {
    for (int way = 0; way < 3; ++way) {
        testing::SetupWorld w;
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

        EXPECT_EQ(testing::ReadNativeFile(w.ProgramFile("filters.txt")), "old\r\nADS\r\n") << way;
        KeywordFilterArray nextStart{};
        LoadKeywordFilters(nextStart, w.fs);
        EXPECT_EQ(nextStart, w.vars.KeywordFilters);
    }
}

}  // namespace
}  // namespace vantorin
