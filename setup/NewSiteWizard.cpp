#include "setup/NewSiteWizard.h"

#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <QTimer>

#include "extractor/FileTypesList.h"
#include "platform/NativePath.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/Named.h"
#include "platform/gui/ScreenPlacement.h"
#include "platform/gui/Twips.h"
#include "setup/FolderChooser.h"
#include "setup/KeywordFiltersDialog.h"
#include "setup/Settings.h"
#include "setup/WrappingButton.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

// The wizard's width collapsed and with its options shown, in twips.
constexpr int kCollapsedTwips = 6855;
constexpr int kExpandedTwips = 9720;
constexpr double kHeightTwips = 4740;
// The designed widths count the window's border too (60 twips each side), so
// the options area at 6840 is out of sight when collapsed.
constexpr double kBorderTwips = 120;

QLabel* Picture(QWidget* parent, QStyle::StandardPixmap which) {
    auto* label = new QLabel(parent);
    label->setPixmap(parent->style()->standardIcon(which).pixmap(32, 32));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

}  // namespace

NewSiteWizard::NewSiteWizard(SetupServices& services, QWidget* parent)
    : QDialog(parent), services_(services) {
    BuildControls();
    Load();
}

NewSiteWizard* NewSiteWizard::Open(SetupServices& services, QWidget* parent) {
    auto* wizard = new NewSiteWizard(services, parent);
    wizard->setAttribute(Qt::WA_DeleteOnClose);
    if (parent) wizard->move(CentredOver(parent->window()->frameGeometry(), wizard->size()));
    wizard->KeepOnScreen();
    wizard->open();
    return wizard;
}

void NewSiteWizard::BuildControls() {
    setObjectName("newSiteWizard");
    setWindowTitle("New Site Wizard");
    setFont(DesignFont(8));
    BuildSiteControls();
    BuildOptions();
    ConnectControls();
}

// The address and folder boxes, the warning and the buttons beside them.
void NewSiteWizard::BuildSiteControls() {
    PlaceTwips(*Picture(this, QStyle::SP_DriveNetIcon), 240, 240, 600, 600);
    PlaceTwips(*Picture(this, QStyle::SP_ArrowRight), 960, 240, 600, 600);
    PlaceTwips(*Picture(this, QStyle::SP_ComputerIcon), 1680, 240, 600, 600);

    addressLabel = Named(new QLabel("Website to Download", this), "addressLabel");
    PlaceTwips(*addressLabel, 600, 1440, 4455, 240);
    address = Named(new QLineEdit("http://", this), "address");
    PlaceTwips(*address, 600, 1680, 5775, 345);

    folderLabel = Named(new QLabel("Save to this Directory", this), "folderLabel");
    PlaceTwips(*folderLabel, 600, 2280, 4455, 240);
    chooseFolderButton = Named(new QPushButton(this), "chooseFolderButton");
    chooseFolderButton->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
    PlaceTwips(*chooseFolderButton, 600, 2520, 495, 375);
    folder = Named(new QLineEdit("C:\\websites\\", this), "folder");
    PlaceTwips(*folder, 1200, 2520, 5175, 345);

    warning = Named(
        new QLabel("If you have previously downloaded this website, make sure the directory is "
                   "different to last time, or the website may not be downloaded correctly.",
                   this),
        "warning");
    warning->setWordWrap(true);
    warning->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceTwips(*warning, 600, 3120, 3975, 1455);

    downloadButton = Named(new WrappingButton("Download Website Now!", this), "downloadButton");
    downloadButton->setDefault(true);
    PlaceTwips(*downloadButton, 4800, 3600, 1695, 975);
    closeButton = Named(new QPushButton("Close", this), "closeButton");
    PlaceTwips(*closeButton, 5160, 120, 1455, 375);
    optionsButton = Named(new QPushButton("Options >>", this), "optionsButton");
    PlaceTwips(*optionsButton, 5160, 600, 1455, 375);
    filtersButton = Named(new QPushButton("Filters", this), "filtersButton");
    PlaceTwips(*filtersButton, 5160, 1080, 1455, 375);
}

// The options area, out of sight until Options is pressed: the file types and
// the timeout.
void NewSiteWizard::BuildOptions() {
    options = Named(new QGroupBox(this), "options");
    PlaceTwips(*options, 6840, 120, 2655, 4455);
    fileTypesLabel = Named(new QLabel("Get These File Types", options), "fileTypesLabel");
    PlaceTwips(*fileTypesLabel, 120, 240, 2415, 255);
    fileTypes = Named(new QListWidget(options), "fileTypes");
    PlaceTwips(*fileTypes, 120, 480, 2415, 2175);
    addTypeButton = Named(new QPushButton("Add", options), "addTypeButton");
    PlaceTwips(*addTypeButton, 120, 2760, 1170, 375);
    deleteTypeButton = Named(new QPushButton("Delete", options), "deleteTypeButton");
    PlaceTwips(*deleteTypeButton, 1365, 2760, 1170, 375);
    defaultTypesButton = Named(new QPushButton("Set Default", options), "defaultTypesButton");
    PlaceTwips(*defaultTypesButton, 120, 3195, 2415, 375);
    timeoutLabel = Named(new QLabel("Timeout", options), "timeoutLabel");
    PlaceTwips(*timeoutLabel, 120, 3780, 855, 255);
    timeout = Named(new QComboBox(options), "timeout");
    timeout->setEditable(true);
    // The box offers its five items only; what is typed is never added.
    timeout->setInsertPolicy(QComboBox::NoInsert);
    PlaceTwips(*timeout, 960, 3720, 855, 345);
    secondsLabel = Named(new QLabel("Seconds", options), "secondsLabel");
    PlaceTwips(*secondsLabel, 1890, 3780, 705, 255);
}

void NewSiteWizard::ConnectControls() {
    for (QPushButton* b : {closeButton, addTypeButton, deleteTypeButton, defaultTypesButton,
                           optionsButton, chooseFolderButton, filtersButton})
        b->setAutoDefault(false);

    connect(downloadButton, &QPushButton::clicked, this, [this] { DownloadClicked(); });
    connect(closeButton, &QPushButton::clicked, this, [this] { CloseClicked(); });
    connect(addTypeButton, &QPushButton::clicked, this, [this] { AddTypeClicked(); });
    connect(deleteTypeButton, &QPushButton::clicked, this, [this] { DeleteTypeClicked(); });
    connect(defaultTypesButton, &QPushButton::clicked, this, [this] { DefaultTypesClicked(); });
    connect(optionsButton, &QPushButton::clicked, this, [this] { OptionsClicked(); });
    connect(chooseFolderButton, &QPushButton::clicked, this, [this] { ChooseFolderClicked(); });
    connect(filtersButton, &QPushButton::clicked, this, [this] { FiltersClicked(); });

    // Every change of the two boxes is stored at once, keystroke by keystroke.
    connect(address, &QLineEdit::textChanged, this, [this](const QString& text) {
        PutSetting(services_.settings, "LastURL", FromQt(text));
    });
    connect(folder, &QLineEdit::textChanged, this, [this](const QString& text) {
        PutFolderSetting(services_.settings, FromDisplayPath(FromQt(text)));
    });
    address->installEventFilter(this);
    folder->installEventFilter(this);
}

void NewSiteWizard::Load() {
    const WizardFields fields = LoadWizard(services_);
    ShowFileTypes(fields.fileTypes);
    {
        // The load has stored what it read already.
        const QSignalBlocker quietAddress(address);
        const QSignalBlocker quietFolder(folder);
        address->setText(ToQt(fields.address));
        folder->setText(ToQt(ToDisplayPath(fields.folder)));
    }
    for (const char* seconds : {"5", "10", "20", "30", "45"}) timeout->addItem(seconds);
    timeout->setEditText(ToQt(fields.timeout));

    setFixedHeight(Twips(*this, kHeightTwips));
    SetWidthTwips(kCollapsedTwips);
}

void NewSiteWizard::done(int result) {
    // A filter dialog opened from here is the wizard's child, so it takes
    // input beside the wizard; it cannot outlive it, so it closes with it and,
    // as every way of closing it does, writes filters.txt. The crawl the
    // wizard may have started scans its first page only later, so it already
    // sees those keywords.
    for (KeywordFiltersDialog* filters : findChildren<KeywordFiltersDialog*>()) filters->reject();
    if (!unloaded_) {
        unloaded_ = true;
        UnloadWizard(FromQt(timeout->currentText()), services_);
    }
    QDialog::done(result);
}

bool NewSiteWizard::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && (watched == address || watched == folder)) {
        auto* box = static_cast<QLineEdit*>(watched);
        // After the focus change settles, or a mouse click would undo it.
        QTimer::singleShot(0, box, [box] { box->selectAll(); });
    }
    return QDialog::eventFilter(watched, event);
}

void NewSiteWizard::SetWidthTwips(int twips) {
    expanded_ = twips == kExpandedTwips;
    setFixedWidth(Twips(*this, twips - kBorderTwips));
}

WizardFields NewSiteWizard::Fields() const {
    WizardFields fields{FromQt(address->text()),
                        FromDisplayPath(FromQt(folder->text())),
                        FromQt(timeout->currentText()),
                        {}};
    for (int i = 0; i < fileTypes->count(); ++i)
        fields.fileTypes.push_back(FromQt(fileTypes->item(i)->text()));
    return fields;
}

void NewSiteWizard::ShowFolder(const WizardFields& fields) {
    const QSignalBlocker stored(folder);  // FolderReady stored it already
    folder->setText(ToQt(ToDisplayPath(fields.folder)));
}

void NewSiteWizard::DownloadClicked() {
    WizardFields fields = Fields();
    const bool started = DownloadWebsiteNow(fields, services_);
    ShowFolder(fields);
    if (!started) return;
    unloaded_ = true;  // the download ran the unload steps itself
    accept();
}

void NewSiteWizard::CloseClicked() {
    WizardFields fields = Fields();
    const bool ready = FolderReady(fields, services_);
    ShowFolder(fields);
    if (ready) accept();
}

void NewSiteWizard::ShowFileTypes(const std::vector<std::string>& items) {
    fileTypes->clear();
    for (const auto& item : items) fileTypes->addItem(ToQt(item));
}

void NewSiteWizard::AddTypeClicked() {
    services_.dialogs.AskText(
        "Enter a file extension (e.g. .html)", "", "",
        [this, wizard = QPointer<NewSiteWizard>(this)](std::optional<std::string> answer) {
            if (!wizard) return;
            std::string extension = LowerTrim(answer.value_or(""));
            if (extension.empty()) return;
            if (Left(extension, 1) != ".") extension = "." + extension;
            if (extension.size() < 6) {
                fileTypes->addItem(ToQt(extension));
            } else {
                services_.dialogs.Ask("That file extension is too long! (max 4 characters)",
                                      "Error", kInformation | kOkOnly, {});
            }
        });
}

void NewSiteWizard::DeleteTypeClicked() {
    QListWidgetItem* selected = fileTypes->currentItem();
    const std::string text =
        selected && selected->isSelected() ? FromQt(selected->text()) : std::string();
    if (Trim(text).empty()) {
        services_.dialogs.Ask("You must select a list item to delete.", "Error",
                              kInformation | kOkOnly, {});
        return;
    }
    // The question is modal, so the list cannot change before it is answered.
    services_.dialogs.Ask("Are you sure you want to remove this list item?\r\n\r\n" + text,
                          "Delete", kInformation | kYesNo,
                          [this, wizard = QPointer<NewSiteWizard>(this), selected](int answer) {
                              if (wizard && answer == kAnswerYes)
                                  delete fileTypes->takeItem(fileTypes->row(selected));
                          });
}

void NewSiteWizard::DefaultTypesClicked() {
    services_.dialogs.Ask("Are you sure you want to set the file types list to default?", "Default",
                          kInformation | kYesNo,
                          [this, wizard = QPointer<NewSiteWizard>(this)](int answer) {
                              if (!wizard || answer == kAnswerNo) return;
                              std::vector<std::string> items;
                              MakeFileTypesFile(items, services_.files);
                              ShowFileTypes(items);
                          });
}

// The wizard grows and shrinks about its centre, then stays on the screen: a
// wizard near the screen's edge would otherwise lose the part it grew by.
void NewSiteWizard::OptionsClicked() {
    const int shift = Twips(*this, (kExpandedTwips - kCollapsedTwips) / 2.0);
    if (expanded_) {
        SetWidthTwips(kCollapsedTwips);
        move(x() + shift, y());
        optionsButton->setText("Options >>");
    } else {
        SetWidthTwips(kExpandedTwips);
        move(x() - shift, y());
        optionsButton->setText("Options <<");
    }
    KeepOnScreen();
}

void NewSiteWizard::KeepOnScreen() {
    move(KeptInside(frameGeometry(), screen()->availableGeometry()));
}

void NewSiteWizard::ChooseFolderClicked() {
    auto* chooser = new FolderChooser(services_.settings, this);
    chooser->setAttribute(Qt::WA_DeleteOnClose);
    connect(chooser, &QDialog::accepted, this,
            [this, chooser] { folder->setText(ToQt(ToDisplayPath(chooser->Chosen()))); });
    chooser->open();
}

void NewSiteWizard::FiltersClicked() {
    KeywordFiltersDialog::Open(services_, this);
}

}  // namespace vantorin
