// The pause dialog: shown while the scheduler is held. However it is closed
// (its button, the window frame, Escape), it runs onClosed once, which
// resumes the crawl.
#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QPushButton;

namespace vantorin {

class PauseDialog : public QDialog {
public:
    explicit PauseDialog(QWidget* parent = nullptr);

    std::function<void()> onClosed;

    QLabel* heading() const { return heading_; }
    QLabel* explanation() const { return explanation_; }
    QPushButton* resumeButton() const { return resumeButton_; }

    void done(int result) override;

private:
    QLabel* heading_;
    QLabel* explanation_;
    QPushButton* resumeButton_;
};

}  // namespace vantorin
