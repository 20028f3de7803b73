#include "ui/frmPause.h"

#include <QLabel>
#include <QPushButton>

#include "platform/gui/DesignFont.h"
#include "platform/gui/Twips.h"

namespace vantorin {

frmPause::frmPause(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmPause"));
    setWindowTitle(QStringLiteral("Paused"));
    setModal(true);

    label1_ = new QLabel(QStringLiteral("Download Paused"), this);
    label1_->setObjectName(QStringLiteral("Label1"));
    label1_->setFont(DesignFont(12, true));
    label2_ = new QLabel(
        QStringLiteral("No new files will start downloading while program is paused."), this);
    label2_->setObjectName(QStringLiteral("Label2"));
    label2_->setFont(DesignFont());
    label2_->setWordWrap(true);
    command1_ = new QPushButton(QStringLiteral("Click to resume..."), this);
    command1_->setObjectName(QStringLiteral("Command1"));
    command1_->setDefault(true);

    PlaceTwips(*label1_, 240, 180, 4200, 360);
    PlaceTwips(*label2_, 240, 600, 4200, 480);
    PlaceTwips(*command1_, 1320, 1200, 2040, 420);
    setFixedSize(TwipsToPixels(4680, logicalDpiX()), TwipsToPixels(1800, logicalDpiY()));

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
