#include "ui/PauseDialog.h"

#include <QLabel>
#include <QPushButton>

#include "platform/gui/DesignFont.h"
#include "platform/gui/Twips.h"

namespace vantorin {

PauseDialog::PauseDialog(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("pauseDialog"));
    setWindowTitle(QStringLiteral("Paused"));
    setModal(true);

    heading_ = new QLabel(QStringLiteral("Download Paused"), this);
    heading_->setObjectName(QStringLiteral("heading"));
    heading_->setFont(DesignFont(12, true));
    explanation_ = new QLabel(
        QStringLiteral("No new files will start downloading while program is paused."), this);
    explanation_->setObjectName(QStringLiteral("explanation"));
    explanation_->setFont(DesignFont());
    explanation_->setWordWrap(true);
    resumeButton_ = new QPushButton(QStringLiteral("Click to resume..."), this);
    resumeButton_->setObjectName(QStringLiteral("resumeButton"));
    resumeButton_->setDefault(true);

    PlaceTwips(*heading_, 240, 180, 4200, 360);
    PlaceTwips(*explanation_, 240, 600, 4200, 480);
    PlaceTwips(*resumeButton_, 1320, 1200, 2040, 420);
    setFixedSize(TwipsToPixels(4680, logicalDpiX()), TwipsToPixels(1800, logicalDpiY()));

    connect(resumeButton_, &QPushButton::clicked, this, [this] { close(); });
}

void PauseDialog::done(int result) {
    // Every way out of the dialog passes here exactly once per showing.
    if (onClosed) onClosed();
    QDialog::done(result);
}

}  // namespace vantorin
