// The main window: the site address, the queue, the 24 connection rows, the
// counters, the menu and the buttons. It renders the engine's CrawlState as it
// changes and turns clicks and keys into engine verbs; it writes no engine
// field or timer. The handlers are plain methods that the widgets' signals
// call and tests call directly.
#pragma once

#include <QMainWindow>
#include <array>
#include <functional>
#include <string>

#include "engine/CrawlEngine.h"
#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/ShellOpen.h"
#include "ui/ListBoxModel.h"
#include "ui/MainLayout.h"

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;

namespace vantorin {

class frmMain : public QMainWindow {
public:
    // Tells the engine to report its outcomes here: a confirmed stop reloads
    // the window, the exit ends the program's event loop.
    frmMain(CrawlEngine& engine, CrawlVariables& vars, Dialogs& dialogs, ShellOpen& shell,
            QWidget* parent = nullptr);
    ~frmMain() override;

    // Set by the application: show the New Site Wizard modally; show the
    // keyword filter dialog without waiting.
    std::function<void()> ShowNewSiteWizard;
    std::function<void()> ShowFilterDialog;

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
    // AskStop's reload: unload (asking nothing while stopping) and show again.
    void ReloadWindow();

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
        std::array<QLabel*, kSlotCount + 1> l{}, x{}, k{}, k2{};
    };

    void BuildControls();
    void BuildMenu();
    void ResetControls();
    void MakeRows();
    void ApplyLayout();
    void Place(QWidget* widget, const TwipRect& rect) const;
    QLabel* MakeLabel(QWidget* parent, const char* name, const char* caption);
    void ShowWizard();
    // The state drawn on the controls: one part as it changes, or all of it.
    void Render(StateChange change, int slot);
    void RenderAll();

    CrawlEngine& engine_;
    CrawlState& state_;
    CrawlVariables& vars_;
    Dialogs& dialogs_;
    ShellOpen& shell_;
    MainLayout layout_;
    bool wizardOpen_ = false;
    // The exit question is answered apart from the close event that asked it.
    bool unloadConfirmed_ = false;
    bool insideCloseEvent_ = false;

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
