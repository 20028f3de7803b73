#include "ui/frmPause.h"

#include <QFont>
#include <QLabel>
#include <QPushButton>

#include "ui/MainLayout.h"

namespace vantorin {

frmPause::frmPause(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPause"));
    setWindowTitle(QStringLiteral("Paused"));
    setModal(true);

    QFont verdana(QStringLiteral("Verdana"));
    verdana.setPointSizeF(8.25);
    QFont heading = verdana;
    heading.setPointSizeF(12);
    heading.setBold(true);

    label1_ = new QLabel(QStringLiteral("Download Paused"), this);
    label1_->setObjectName(QStringLiteral("Label1"));
    label1_->setFont(heading);
    label2_ = new QLabel(
        QStringLiteral("No new files will start downloading while program is paused."), this);
    label2_->setObjectName(QStringLiteral("Label2"));
    label2_->setFont(verdana);
    label2_->setWordWrap(true);
    command1_ = new QPushButton(QStringLiteral("Click to resume..."), this);
    command1_->setObjectName(QStringLiteral("Command1"));
    command1_->setDefault(true);

    const int dpi = logicalDpiY();
    const auto place = [dpi](QWidget* w, int left, int top, int width, int height) {
        w->setGeometry(TwipsToPixels(left, dpi), TwipsToPixels(top, dpi), TwipsToPixels(width, dpi),
                       TwipsToPixels(height, dpi));
    };
    place(label1_, 240, 180, 4200, 360);
    place(label2_, 240, 600, 4200, 480);
    place(command1_, 1320, 1200, 2040, 420);
    setFixedSize(TwipsToPixels(4680, dpi), TwipsToPixels(1800, dpi));

    connect(command1_, &QPushButton::clicked, this, [this] { Command1_Click(); });
}

void frmPause::Command1_Click() {
    close();
}

void frmPause::done(int result) {
    // Every way out of the dialog passes here exactly once per showing.
    if (OnUnload) OnUnload();
    QDialog::done(result);
}

}  // namespace vantorin
