// The pause dialog: shown modally while the scheduler is off. However it is
// closed (its button, the window frame, Escape), it runs OnUnload once, which
// resumes the crawl.
#pragma once

#include <QDialog>
#include <functional>

class QLabel;
class QPushButton;

namespace vantorin {

class frmPause : public QDialog {
public:
    explicit frmPause(QWidget* parent = nullptr);

    std::function<void()> OnUnload;

    QLabel* Label1() const { return label1_; }
    QLabel* Label2() const { return label2_; }
    QPushButton* Command1() const { return command1_; }

    void Command1_Click();
    void done(int result) override;

private:
    QLabel* label1_;
    QLabel* label2_;
    QPushButton* command1_;
};

}  // namespace vantorin
