#include "platform/gui/QtDialogs.h"

#include <gtest/gtest.h>

#include <QtWidgets>

namespace vantorin {
namespace {

QMessageBox* OpenBox() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

// A question asked without waiting returns with its box open; the click that
// answers it gives the answer, whichever way the box is closed. A box opened
// while a question is open stands over it; an untitled box shows the
// program's name, never the executable's.
TEST(QtDialogs, QuestionsAreAnsweredByTheirBoxesAndABoxStandsOverAnOpenOne) {
    QtDialogs dialogs;
    struct Case {
        int style;
        QMessageBox::StandardButton clicked;  // NoButton: closed by its frame
        int answer;
        QMessageBox::Icon icon;
    };
    const Case cases[] = {
        {kYesNo + kInformation, QMessageBox::Yes, kAnswerYes, QMessageBox::Information},
        {kYesNo + kCritical, QMessageBox::NoButton, kAnswerNo, QMessageBox::Critical},
        {kInformation, QMessageBox::NoButton, kAnswerOk, QMessageBox::Information}};
    for (const Case& c : cases) {
        int answer = 0;
        dialogs.Ask("Sure?", "Stop Download", c.style, [&](int given) { answer = given; });
        QMessageBox* box = OpenBox();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->windowModality(), Qt::ApplicationModal);
        // An Ok box sets no default button (and has no Yes button).
        EXPECT_EQ(box->defaultButton(), box->button(QMessageBox::Yes));
        EXPECT_EQ(box->icon(), c.icon);
        c.clicked == QMessageBox::NoButton ? (void)box->close() : box->button(c.clicked)->click();
        EXPECT_EQ(answer, c.answer) << c.style;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    dialogs.Ask("Sure?", "Stop Download", kYesNo + kInformation, {});
    QMessageBox* question = OpenBox();
    QString title;
    QWidget* owner = nullptr;
    QTimer::singleShot(0, [&] {
        title = OpenBox()->windowTitle();
        owner = OpenBox()->parentWidget();
        OpenBox()->button(QMessageBox::No)->click();
    });
    EXPECT_EQ(dialogs.MsgBox("Done?", "Done.", kYesNo + kInformation), kAnswerNo);
    EXPECT_EQ(title, "Done.");
    EXPECT_EQ(owner, question);
    question->close();

    QTimer::singleShot(0, [&] {
        auto* input = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
        title = input->windowTitle();
        input->setTextValue("html");
        input->accept();
    });
    EXPECT_EQ(dialogs.InputBox("Enter a file extension (e.g. .html)", "", ""), "html");
    EXPECT_EQ(title, "Vantorin");
}

}  // namespace
}  // namespace vantorin
