#include "setup/zFilter.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>

#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using Strings = std::vector<std::string>;

TEST(KeywordFilterDialog, AddsUpperCasedRemovesAndClears) {
    testing::SetupWorld w;
    w.vars.KeywordFilters[1] = "banner";
    w.vars.KeywordFilters[2] = "Track";
    zFilter dialog(w.services);
    const std::pair<const char*, bool> cases[] = {
        {"ads", false}, {"  Banner  ", true}, {" ads ", true}, {"   ", false}, {"pop up", false}};
    for (const auto& [typed, duplicate] : cases) {
        w.dialogs.asked.clear();
        dialog.Text1->setText(typed);
        dialog.Command1_Click();
        EXPECT_TRUE(dialog.Text1->text().isEmpty()) << typed;
        EXPECT_EQ(w.dialogs.asked.size(), duplicate ? 1u : 0u) << typed;
    }
    EXPECT_EQ(dialog.Items(), (Strings{"banner", "Track", "ADS", "POP UP"}));

    dialog.List1->setCurrentRow(1);  // removing reselects the same place
    dialog.Command2_Click();
    EXPECT_EQ(dialog.Items(), (Strings{"banner", "ADS", "POP UP"}));
    EXPECT_TRUE(dialog.List1->item(1)->isSelected());
    dialog.List1->setCurrentRow(2);
    dialog.Command2_Click();  // the last item: nothing left selected, so nothing more goes
    dialog.Command2_Click();
    EXPECT_EQ(dialog.Items(), (Strings{"banner", "ADS"}));

    // The question is answered later: the list stays until Yes comes.
    w.dialogs.holdAnswers = true;
    for (const int answer : {kAnswerNo, kAnswerYes}) {
        dialog.Command3_Click();
        EXPECT_EQ(dialog.List1->count(), 2);
        w.dialogs.held.back()(answer);
    }
    EXPECT_EQ(dialog.List1->count(), 0);
    EXPECT_EQ(w.dialogs.asked.back(),
              "Clear Filters 20: Are you sure you want to remove all the filters?");
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

        EXPECT_EQ(testing::ReadNativeFile(w.dir.NativePath("prog/filters.txt")), "old\r\nADS\r\n")
            << way;
    }
}

}  // namespace
}  // namespace vantorin
