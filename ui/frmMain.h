// The main window: the site address, the queue, the 24 connection rows, the
// counters, the menu and the buttons. It is the engine's view of the window
// (WindowSeam) and the wizard's (WizardHost); the handlers are plain methods
// that the widgets' signals call and tests call directly.
#pragma once

#include <QMainWindow>
#include <array>
#include <functional>
#include <string>

#include "engine/WindowSeam.h"
#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/ShellOpen.h"
#include "setup/WizardHost.h"
#include "ui/ListBoxModel.h"
#include "ui/MainLayout.h"

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QListView;
class QMenu;
class QPushButton;

namespace vantorin {

class CrawlEngine;

inline constexpr int kRowCount = 24;

class frmMain : public QMainWindow, public WindowSeam, public WizardHost {
public:
    frmMain(CrawlVariables& vars, FileSystem& fs, Dialogs& dialogs, ShellOpen& shell,
            QWidget* parent = nullptr);
    ~frmMain() override;

    // The engine is made after the window (it needs the window) and attached here.
    void AttachEngine(CrawlEngine& engine);

    // Set by the application: show the New Site Wizard modally; show the
    // keyword filter dialog without waiting; end the program.
    std::function<void()> ShowNewSiteWizard;
    std::function<void()> ShowFilterDialog;
    std::function<void()> OnEndProgram;

    // --- load, activation, layout ---
    void Form_Load();
    void Form_Activate();
    void Form_Resize();
    bool ShowWizardOnActivate = false;

    // --- handlers ---
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void mnunew_Click();
    void mnupref_Click();
    void mnuexit_Click();
    void mnupause_Click();
    void mnuexplore_Click();
    void mnuabout_Click();
    void List1_DblClick();
    void Text1_GotFocus();

    // --- WindowSeam ---
    StringList& List1() override { return list1Model_; }
    StringList& List2() override { return list2Model_; }
    std::string Text1() const override;
    void SetText1(const std::string& text) override;
    void SetText1Enabled(bool enabled) override;
    void FocusText1() override;
    bool Command1Enabled() const override;
    void SetCommand1Enabled(bool enabled) override;
    void SetCommand2Enabled(bool enabled) override;
    void SetPauseEnabled(bool enabled) override;
    std::string TxtMax() const override;
    void SetTxtMax(const std::string& text) override;
    void SetLabel6(const std::string& caption) override;
    void SetLabel3(const std::string& caption) override;
    void SetLabel4(const std::string& caption) override;
    void SetLabel5(const std::string& caption) override;
    void SetRowStatus(int slot, const std::string& caption) override;
    void SetRowSize(int slot, const std::string& caption) override;
    void SetRowReceived(int slot, const std::string& caption) override;
    void ReloadWindow() override;
    void EndProgram() override;

    // --- WizardHost (SetText1 above serves both) ---
    void ConnectNowNow() override;
    bool SetTmrOutInterval(int slot, long long ms) override;
    long long TmrOutInterval(int slot) const override;
    void ShowKeywordFilterDialog() override;

    // --- the controls, for the application and the tests ---
    QLineEdit* text1() const { return text1_; }
    QListView* list1() const { return list1_; }
    QListView* list2() const { return list2_; }
    QComboBox* txtMax() const { return txtMax_; }
    QPushButton* command(int n) const { return commands_[static_cast<std::size_t>(n - 1)]; }
    QLabel* label(int n) const { return labels_[static_cast<std::size_t>(n)]; }
    QFrame* picture(int n) const { return pictures_[static_cast<std::size_t>(n - 1)]; }
    // Row labels, 0 (the designed row) to 24.
    QLabel* l(int i) const { return rows_.l[static_cast<std::size_t>(i)]; }
    QLabel* x(int i) const { return rows_.x[static_cast<std::size_t>(i)]; }
    QLabel* k(int i) const { return rows_.k[static_cast<std::size_t>(i)]; }
    QLabel* k2(int i) const { return rows_.k2[static_cast<std::size_t>(i)]; }
    QAction* mnupause() const { return mnupause_; }
    const MainLayout& Layout() const { return layout_; }

protected:
    bool event(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    struct Rows {
        std::array<QLabel*, kRowCount + 1> l{}, x{}, k{}, k2{};
    };

    void BuildControls();
    void BuildMenu();
    void ResetControls();
    void MakeRows();
    void ApplyLayout();
    void Place(QWidget* widget, const TwipRect& rect) const;
    QLabel* MakeLabel(QWidget* parent, const char* name, const char* caption);
    QLabel* RowLabel(const std::array<QLabel*, kRowCount + 1>& row, int slot) const;
    void ShowWizard();

    CrawlVariables& vars_;
    FileSystem& fs_;
    Dialogs& dialogs_;
    ShellOpen& shell_;
    CrawlEngine* engine_ = nullptr;
    MainLayout layout_;
    bool wizardOpen_ = false;

    ListBoxModel list1Model_;
    ListBoxModel list2Model_;
    QLineEdit* text1_ = nullptr;
    QListView* list1_ = nullptr;
    QListView* list2_ = nullptr;
    QComboBox* txtMax_ = nullptr;
    std::array<QPushButton*, 4> commands_{};
    std::array<QLabel*, 10> labels_{};  // Label1..Label9 at their numbers
    std::array<QFrame*, 3> pictures_{};
    QLabel* connectionsHeading_ = nullptr;
    QLabel* dataInHeading_ = nullptr;
    Rows rows_;
    QAction* mnupause_ = nullptr;
};

}  // namespace vantorin
