// The keyword filter dialog: shows the keyword filters, lets the user add and
// remove keywords, and on closing (any way) makes the list the new filters
// and writes "filters.txt". One is open at a time.
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

class KeywordFiltersDialog : public QDialog {
public:
    explicit KeywordFiltersDialog(SetupServices& services, QWidget* parent = nullptr);

    // Opens the dialog without waiting for it, or brings the open one to the
    // front; it deletes itself once closed.
    static KeywordFiltersDialog* Open(SetupServices& services, QWidget* parent);

    void AddClicked();       // Add
    void RemoveClicked();    // Remove
    void ClearAllClicked();  // Clear All
    void CloseClicked();     // Close

    std::vector<std::string> Items() const;

    QLabel* heading;
    QLabel* explanation;
    QLabel* keywordLabel;
    QLineEdit* entry;
    QPushButton* addButton;
    QListWidget* keywords;
    QPushButton* removeButton;
    QPushButton* clearAllButton;
    QPushButton* closeButton;
    QLabel* note;
    QLabel* picture;

    void done(int result) override;

private:
    void BuildControls();

    SetupServices& services_;
    bool unloaded_ = false;
};

}  // namespace vantorin
