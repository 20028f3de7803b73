#include "setup/zFilter.h"

#include <gtest/gtest.h>

#include <QtWidgets>

#include "platform/Text.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin::testing {
namespace {

using Strings = std::vector<std::string>;

TEST(KeywordFilterDialog, AddsUpperCasedRemovesClearsAndWritesItsFileOnClose) {
    SetupWorld w;
    w.vars.KeywordFilters[1] = "gone";
    QPointer<zFilter> dialog = zFilter::ShowModeless(w.services, nullptr);
    // The question is answered later: the list stays until Yes comes.
    w.dialogs.holdAnswers = true;
    for (const int answer : {kAnswerNo, kAnswerYes}) {
        dialog->Command3_Click();
        EXPECT_EQ(dialog->List1->count(), 1);
        w.dialogs.held.back()(answer);
    }
    EXPECT_EQ(dialog->List1->count(), 0);
    EXPECT_TRUE(StartsWith(w.dialogs.asked.back(), "Clear Filters 20: "));
    w.dialogs.holdAnswers = false;

    // Typed keywords are trimmed and upper-cased; a blank one is not added, and
    // a repeat in any case is refused with a box.
    w.dialogs.asked.clear();
    for (const char* typed : {"banner", "ads", "  Banner  ", " ads ", "   ", "pop up", "track"}) {
        dialog->Text1->setText(typed);
        dialog->Command1->click();
    }
    EXPECT_TRUE(dialog->Text1->text().isEmpty());
    EXPECT_EQ(w.dialogs.asked.size(), 2u);
    EXPECT_EQ(dialog->Items(), (Strings{"BANNER", "ADS", "POP UP", "TRACK"}));

    dialog->List1->setCurrentRow(1);  // removing reselects the same place
    dialog->Command2->click();
    EXPECT_EQ(dialog->Items(), (Strings{"BANNER", "POP UP", "TRACK"}));
    EXPECT_TRUE(dialog->List1->item(1)->isSelected());
    dialog->List1->setCurrentRow(2);
    dialog->Command2_Click();  // the last item: nothing left selected, so nothing more goes
    dialog->Command2_Click();
    EXPECT_EQ(dialog->Items(), (Strings{"BANNER", "POP UP"}));

    dialog->Command4->click();
    EXPECT_FALSE(dialog->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(dialog.isNull());
    EXPECT_EQ(ReadNativeFile(w.dir.NativePath("prog/filters.txt")), "BANNER\r\nPOP UP\r\n");
}

}  // namespace
}  // namespace vantorin::testing
