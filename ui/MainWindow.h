// The main window: the site address, the queue, the 24 connection rows, the
// counters, the menu and the buttons. It draws the engine's model at its own
// pace, turns clicks and keys into engine verbs, and asks the questions the
// crawl's ends call for (stop, exit, completion); it writes no engine field.
// The handlers are plain methods that the widgets' signals call and tests
// call directly.
#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QTimer>
#include <array>
#include <functional>
#include <string>

#include "engine/CrawlEngine.h"
#include "platform/Dialogs.h"
#include "platform/ShellOpen.h"
#include "ui/MainLayout.h"
#include "ui/QueueModel.h"

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;

namespace vantorin {

class MainWindow : public QMainWindow {
public:
    // Takes the engine's events: a confirmed stop reloads the window, the end
    // of the exit ends the program's event loop.
    MainWindow(CrawlEngine& engine, Dialogs& dialogs, ShellOpen& shell, QWidget* parent = nullptr);
    ~MainWindow() override;

    // Set by the application: open the New Site Wizard (it returns at once)
    // and the keyword filters dialog.
    std::function<QDialog*()> openNewSiteWizard;
    std::function<void()> openFilters;

    // --- the buttons, the menu, the boxes
    void StartClicked();
    void StopClicked();
    void FiltersClicked();
    void NewSiteChosen();  // File > New Site, and Sites > Preferences...
    void ExitChosen();
    void PauseChosen();
    void ExploreChosen();  // Sites > Explore..., and the explore button
    void AboutChosen();
    void QueueDoubleClicked();
    void AddressFocused();
    // The first activation after a load opens the wizard.
    void Activated();
    // Draws the model on the controls; a timer calls it at most every frame.
    void Render();

    // --- the controls, for the application and the tests
    QLineEdit* address() const { return address_; }
    QListView* queue() const { return queue_; }
    QComboBox* connectionsBox() const { return connectionsBox_; }
    QPushButton* startButton() const { return startButton_; }
    QPushButton* stopButton() const { return stopButton_; }
    QPushButton* filtersButton() const { return filtersButton_; }
    QPushButton* exploreButton() const { return exploreButton_; }
    QLabel* downloadedCount() const { return downloadedCount_; }
    QLabel* bytesCount() const { return bytesCount_; }
    QLabel* queuedCount() const { return queuedCount_; }
    QLabel* statusLine() const { return statusLine_; }
    QAction* pauseAction() const { return pauseAction_; }
    // Row n's labels, 1 to 24.
    QLabel* rowNumber(int n) const { return Row(n).number; }
    QLabel* rowStatus(int n) const { return Row(n).status; }
    QLabel* rowSize(int n) const { return Row(n).size; }
    QLabel* rowReceived(int n) const { return Row(n).received; }

protected:
    bool event(QEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* watched, QEvent* e) override;

private:
    struct RowLabels {
        QLabel* number = nullptr;
        QLabel* status = nullptr;
        QLabel* size = nullptr;
        QLabel* received = nullptr;
    };
    const RowLabels& Row(int n) const { return rows_.at(static_cast<std::size_t>(n - 1)); }

    void BuildControls();
    void BuildMenu();
    void MakeRows();
    void FillConnectionsBox();
    void ApplyLayout();
    void Place(QWidget* widget, const TwipRect& rect) const;
    QLabel* MakeLabel(QWidget* parent, const char* name, const char* caption);
    void OnEvent(const CrawlEvent& event);
    void AskStop(std::function<void()> then);
    void OpenWizard();
    // After a confirmed stop: the window as a fresh start shows it, and the
    // wizard on its next activation.
    void Reload();
    void Leave();

    CrawlEngine& engine_;
    Dialogs& dialogs_;
    ShellOpen& shell_;
    MainLayout layout_;
    QTimer frames_;
    QueueModel queueModel_;
    QPointer<QDialog> wizard_;
    bool wizardOnActivation_ = true;
    // From a confirmed stop until the reloaded window has opened the wizard:
    // a close then asks nothing.
    bool stopping_ = false;
    bool leaving_ = false;  // the exit has ended: the close goes through
    int focusRequestsSeen_ = 0;

    QLineEdit* address_ = nullptr;
    QListView* queue_ = nullptr;
    QComboBox* connectionsBox_ = nullptr;
    QPushButton* startButton_ = nullptr;
    QFrame* toolbar_ = nullptr;
    QPushButton* stopButton_ = nullptr;
    QPushButton* filtersButton_ = nullptr;
    QPushButton* exploreButton_ = nullptr;
    QFrame* connectionPanel_ = nullptr;
    QFrame* dataInColumn_ = nullptr;
    QLabel* connectionsHeading_ = nullptr;
    QLabel* dataInHeading_ = nullptr;
    QLabel* downloadedLabel_ = nullptr;
    QLabel* downloadedCount_ = nullptr;
    QLabel* bytesCount_ = nullptr;
    QLabel* queuedLabel_ = nullptr;
    QLabel* queuedCount_ = nullptr;
    QLabel* connectionsQuestion_ = nullptr;
    QLabel* connectionsFooter_ = nullptr;
    QLabel* queueHeading_ = nullptr;
    QLabel* statusLine_ = nullptr;
    std::array<RowLabels, kConnectionCount> rows_{};
    QAction* pauseAction_ = nullptr;
};

}  // namespace vantorin
