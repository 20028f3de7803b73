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

class zDir : public QDialog {
public:
    explicit zDir(SettingsStore& settings, QWidget* parent = nullptr);

    // What Ok chose, in backslash form: the folder Label1 shows + "\", so a
    // root ends in two ("\\", shown "//" off Windows).
    const std::string& Chosen() const { return chosen_; }

    // Dir1's path in backslash form. A folder that does not exist opens the
    // root of its drive instead.
    void SetDir1Path(const std::string& path);
    const std::string& Dir1Path() const { return dir1Path_; }

    void Drive1_Change();
    void Command1_Click();  // &Ok...
    void Command2_Click();  // Cancel

    QComboBox* Drive1;
    QListWidget* Dir1;
    QLabel* Label1;
    QPushButton* Command1;
    QPushButton* Command2;
    QLabel* Image1;

private:
    void BuildControls();
    void Dir1_Change();
    void FillDrives();
    void FillFolders();
    void SelectDriveOf(const std::string& path);

    std::string dir1Path_;
    std::string chosen_;
};

}  // namespace vantorin
