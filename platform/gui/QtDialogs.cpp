#include "platform/gui/QtDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

#include "platform/gui/Latin1.h"

namespace vantorin {

namespace {

// A box without a title shows the program's name, never the executable's.
// Passed here rather than as the application's display name, which X11 would
// append to every designed window caption.
QString Title(const std::string& title) {
    return title.empty() ? QStringLiteral("Vantorin") : ToQt(title);
}

// Message texts break lines with CR LF; a Qt label wants a bare LF.
QString DisplayText(const std::string& text) {
    QString shown = ToQt(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

// A box opened while another modal dialog is up blocks that dialog until it
// is answered, so it stands over it (centred on it, kept above it): a click
// never lands on a box that cannot take it.
QWidget* Owner() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return QApplication::activeWindow();
}

QMessageBox* MakeBox(const std::string& text, const std::string& title, int style) {
    auto* box = new QMessageBox(Owner());
    box->setWindowTitle(Title(title));
    box->setText(DisplayText(text));
    box->setIcon((style & kCritical) == kCritical ? QMessageBox::Critical
                                                  : QMessageBox::Information);
    if ((style & kYesNo) == kYesNo) {
        box->setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box->setDefaultButton(QMessageBox::Yes);
        box->setEscapeButton(QMessageBox::No);
    } else {
        box->setStandardButtons(QMessageBox::Ok);
        box->setEscapeButton(QMessageBox::Ok);
    }
    return box;
}

int Answer(const QMessageBox& box, int style) {
    if ((style & kYesNo) != kYesNo) return kAnswerOk;
    return box.standardButton(box.clickedButton()) == QMessageBox::Yes ? kAnswerYes : kAnswerNo;
}

}  // namespace

void QtDialogs::Ask(const std::string& text, const std::string& title, int style,
                    std::function<void(int answer)> answered) {
    QMessageBox* box = MakeBox(text, title, style);
    box->setWindowModality(Qt::ApplicationModal);
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QDialog::finished, box, [box, style, answered = std::move(answered)] {
        if (answered) answered(Answer(*box, style));
    });
    box->show();
}

void QtDialogs::AskText(const std::string& prompt, const std::string& title,
                        const std::string& defaultText,
                        std::function<void(std::optional<std::string>)> answered) {
    auto* input = new QInputDialog(Owner());
    input->setWindowTitle(Title(title));
    input->setLabelText(DisplayText(prompt));
    input->setTextValue(ToQt(defaultText));
    input->setWindowModality(Qt::ApplicationModal);
    input->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(input, &QDialog::finished, input,
                     [input, answered = std::move(answered)](int result) {
                         if (!answered) return;
                         if (result == QDialog::Accepted) {
                             answered(FromQt(input->textValue()));
                         } else {
                             answered(std::nullopt);
                         }
                     });
    input->show();
}

}  // namespace vantorin
