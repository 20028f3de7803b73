// The New Site Wizard: the site address, the folder to save it in, the
// timeout and the file types; it checks the folder and starts the crawl.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

#include "engine/CrawlEngine.h"
#include "setup/SetupServices.h"
#include "setup/WizardSteps.h"

class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace vantorin {

class frmNew : public QDialog {
public:
    frmNew(SetupServices& services, CrawlEngine& engine, QWidget* parent = nullptr);

    // Opens a wizard modally, centred over the parent's window and on the
    // screen, and returns when it has unloaded and gone.
    static void ShowModal(SetupServices& services, CrawlEngine& engine, QWidget* parent);

    // The form's width in twips: 6855 collapsed, 9720 expanded.
    int FormWidthTwips() const { return widthTwips_; }

    void Command1_Click();  // Download Website Now!
    void Command2_Click();  // Close
    void Command3_Click();  // Add a file type
    void Command4_Click();  // Delete the selected file type
    void Command5_Click();  // Set Default
    void Command6_Click();  // Options >> / <<
    void Command7_Click();  // the directory chooser
    void Command8_Click();  // Filters: the keyword filters beside the wizard

    QLabel* Label1;
    QLineEdit* txtURL;
    QLabel* Label4;
    QLineEdit* txtDir;
    QPushButton* Command7;
    QLabel* Label8;
    QPushButton* Command1;
    QPushButton* Command2;
    QPushButton* Command6;
    QPushButton* Command8;
    QGroupBox* Frame1;
    QLabel* Label3;
    QListWidget* List1;
    QPushButton* Command3;
    QPushButton* Command4;
    QPushButton* Command5;
    QLabel* Label5;
    QComboBox* List2;
    QLabel* Label6;
    QLabel* Image1;
    QLabel* Image2;
    QLabel* Image3;

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void BuildControls();
    void FormLoad();
    void SetFormWidth(int twips);
    void KeepOnScreen();
    // What the boxes hold, and the normalised folder shown back after a check.
    WizardFields Fields() const;
    void ShowFolder(const WizardFields& fields);
    void ShowFileTypes(const std::vector<std::string>& items);
    void MakeFileTypesFile();

    SetupServices& services_;
    CrawlEngine& engine_;
    int widthTwips_ = 6855;
    bool unloaded_ = false;
};

}  // namespace vantorin
