// The New Site Wizard: the site address, the folder to save it in, the
// timeout and the file types; it checks the folder and starts the crawl.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "setup/SetupServices.h"
#include "setup/WizardSteps.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace vantorin {

class NewSiteWizard : public QDialog {
public:
    NewSiteWizard(SetupServices& services, QWidget* parent = nullptr);

    // Opens a wizard over the parent's window (modal to it), centred on it and
    // kept on the screen, and returns at once; the wizard deletes itself once
    // it has closed.
    static NewSiteWizard* Open(SetupServices& services, QWidget* parent);

    void DownloadClicked();      // Download Website Now!
    void CloseClicked();         // Close
    void AddTypeClicked();       // Add a file type
    void DeleteTypeClicked();    // Delete the selected file type
    void DefaultTypesClicked();  // Set Default
    void OptionsClicked();       // Options >> / <<
    void ChooseFolderClicked();  // the folder chooser
    void FiltersClicked();       // the keyword filters beside the wizard

    QLabel* addressLabel;
    QLineEdit* address;
    QLabel* folderLabel;
    QLineEdit* folder;
    QPushButton* chooseFolderButton;
    QLabel* warning;
    QPushButton* downloadButton;
    QPushButton* closeButton;
    QPushButton* optionsButton;
    QPushButton* filtersButton;
    QGroupBox* options;
    QLabel* fileTypesLabel;
    QListWidget* fileTypes;
    QPushButton* addTypeButton;
    QPushButton* deleteTypeButton;
    QPushButton* defaultTypesButton;
    QLabel* timeoutLabel;
    QComboBox* timeout;
    QLabel* secondsLabel;

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void BuildSiteControls();
    void BuildOptions();
    void ConnectControls();
    void Load();
    void SetWidthTwips(int twips);
    void KeepOnScreen();
    // What the boxes hold, and the normalised folder shown back after a check.
    WizardFields Fields() const;
    void ShowFolder(const WizardFields& fields);
    void ShowFileTypes(const std::vector<std::string>& items);

    SetupServices& services_;
    bool expanded_ = false;
    bool unloaded_ = false;
};

}  // namespace vantorin
