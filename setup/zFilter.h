// The keyword filter dialog: shows KeywordFilters, lets the user add and
// remove keywords, and on closing (any way) makes the list the new filters
// and writes "filters.txt".
// Its messages are asked without waiting in them: opened from the main window
// it stays open during a crawl, and a click handled inside a save's or a
// scan's yield must not freeze that job until the message is closed.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "setup/SetupServices.h"

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace vantorin {

class zFilter : public QDialog {
public:
    explicit zFilter(SetupServices& services, QWidget* parent = nullptr);

    // Opens the dialog without waiting for it, or brings the open one to the
    // front; it deletes itself once closed.
    static zFilter* ShowModeless(SetupServices& services, QWidget* parent);

    void Command1_Click();  // Add
    void Command2_Click();  // Remove
    void Command3_Click();  // Clear All
    void Command4_Click();  // Close

    std::vector<std::string> Items() const;

    QLabel* Label2;
    QLabel* Label1;
    QLabel* Label3;
    QLineEdit* Text1;
    QPushButton* Command1;
    QListWidget* List1;
    QPushButton* Command2;
    QPushButton* Command3;
    QPushButton* Command4;
    QLabel* Label4;
    QLabel* Image1;

    void done(int result) override;

private:
    void BuildControls();

    SetupServices& services_;
    bool unloaded_ = false;
};

}  // namespace vantorin
