// The directory chooser: pick the folder to save the website in by browsing
// drives and folders. Ok hands back the open folder + "\". Paths are kept in
// backslash form and shown with the platform's separator.
#pragma once

#include <QDialog>
#include <string>

#include "platform/SettingsStore.h"

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace vantorin {

class FolderChooser : public QDialog {
public:
    explicit FolderChooser(SettingsStore& settings, QWidget* parent = nullptr);

    // What Ok chose, in backslash form: the open folder + "\", so a root ends
    // in two ("\\", shown "//" off Windows).
    const std::string& Chosen() const { return chosen_; }

    // Opens the folder at a backslash path and lists the folders in it. A
    // folder that does not exist opens the root of its drive instead.
    void OpenFolder(const std::string& path);

    void DriveChosen();
    void OkClicked();      // &Ok...
    void CancelClicked();  // Cancel

    QComboBox* drives;
    QListWidget* folders;
    QLabel* openFolderLabel;
    QPushButton* okButton;
    QPushButton* cancelButton;
    QLabel* picture;

private:
    void BuildControls();
    void FolderOpened();
    void FillDrives();
    void FillFolders();
    void SelectDriveOf(const std::string& path);

    std::string openFolder_;
    std::string chosen_;
};

}  // namespace vantorin
