#include "platform/gui/QtDialogs.h"

#include <gtest/gtest.h>

#include <QtWidgets>

namespace vantorin {
namespace {

QMessageBox* OpenBox() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

// A question asked without waiting returns with its box open, modal to the
// whole program, Yes its default; the click that answers it gives the answer,
// a box closed by its frame answering No (Ok where it has no No). A box opened
// while a question is open stands over it; an untitled box shows the
// program's name, never the executable's.
TEST(QtDialogs, QuestionsAreAnsweredByTheirBoxesAndABoxStandsOverAnOpenOne) {
    QtDialogs dialogs;
    int answer = 0;
    // Style, the button clicked (NoButton: closed by its frame), the answer.
    const std::tuple<int, QMessageBox::StandardButton, int> cases[] = {
        {kYesNo + kInformation, QMessageBox::Yes, kAnswerYes},
        {kYesNo + kCritical, QMessageBox::NoButton, kAnswerNo},
        {kInformation, QMessageBox::NoButton, kAnswerOk}};
    for (const auto& [style, clicked, expected] : cases) {
        dialogs.Ask("Sure?", "Stop Download", style, [&](int given) { answer = given; });
        QMessageBox* box = OpenBox();
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->windowModality() == Qt::ApplicationModal &&
                    box->defaultButton() == box->button(QMessageBox::Yes));
        clicked == QMessageBox::NoButton ? (void)box->close() : box->button(clicked)->click();
        EXPECT_EQ(answer, expected) << style;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // A box asked while another is open stands over it.
    dialogs.Ask("Sure?", "Stop Download", kYesNo + kInformation, {});
    QMessageBox* question = OpenBox();
    dialogs.Ask("Done?", "Done.", kYesNo + kInformation, [&](int given) { answer = given; });
    EXPECT_EQ(std::tuple(OpenBox()->windowTitle(), OpenBox()->parentWidget()),
              std::tuple(QString("Done."), static_cast<QWidget*>(question)));
    OpenBox()->button(QMessageBox::No)->click();
    EXPECT_EQ(answer, kAnswerNo);
    question->close();

    std::optional<std::string> typed;
    dialogs.AskText("Enter a file extension (e.g. .html)", "", "",
                    [&](std::optional<std::string> text) { typed = std::move(text); });
    auto* input = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(input, nullptr);
    EXPECT_EQ(input->windowTitle(), "Vantorin");
    input->setTextValue("html");
    input->accept();
    EXPECT_EQ(typed, "html");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace
}  // namespace vantorin
