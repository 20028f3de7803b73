#include "platform/gui/QtDialogs.h"

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>

#include "platform/gui/Latin1.h"

namespace vantorin {

namespace {

// Message texts break lines with CR LF; a Qt label wants a bare LF.
QString DisplayText(const std::string& text) {
    QString shown = ToQt(text);
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return shown;
}

}  // namespace

int QtDialogs::MsgBox(const std::string& text, const std::string& title, int style) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(ToQt(title));
    box.setText(DisplayText(text));
    box.setIcon((style & kCritical) == kCritical ? QMessageBox::Critical
                                                 : QMessageBox::Information);
    const bool yesNo = (style & kYesNo) == kYesNo;
    if (yesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        box.setEscapeButton(QMessageBox::No);
    } else {
        box.setStandardButtons(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
    }
    const int clicked = box.exec();
    if (!yesNo) return kAnswerOk;
    return clicked == QMessageBox::Yes ? kAnswerYes : kAnswerNo;
}

std::optional<std::string> QtDialogs::InputBox(const std::string& prompt, const std::string& title,
                                               const std::string& defaultText) {
    bool ok = false;
    const QString answer =
        QInputDialog::getText(QApplication::activeWindow(), ToQt(title), DisplayText(prompt),
                              QLineEdit::Normal, ToQt(defaultText), &ok);
    if (!ok) return std::nullopt;
    return FromQt(answer);
}

}  // namespace vantorin
