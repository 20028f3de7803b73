#include "setup/frmNew.h"

#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QStyle>
#include <QTimer>
#include <cmath>

#include "extractor/FileTypesList.h"
#include "platform/NativePath.h"
#include "platform/Text.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/ScreenPlacement.h"
#include "platform/gui/Twips.h"
#include "setup/Settings.h"
#include "setup/WrappingButton.h"
#include "setup/zDir.h"
#include "setup/zFilter.h"

namespace vantorin {

namespace {

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

frmNew::frmNew(SetupServices& services, CrawlEngine& engine, QWidget* parent)
    : QDialog(parent), services_(services), engine_(engine) {
    BuildControls();
    FormLoad();
}

void frmNew::ShowModal(SetupServices& services, CrawlEngine& engine, QWidget* parent) {
    frmNew wizard(services, engine, parent);
    if (parent) wizard.move(CentredOver(parent->window()->frameGeometry(), wizard.size()));
    wizard.KeepOnScreen();
    wizard.exec();
}

void frmNew::BuildControls() {
    setWindowTitle("New Site Wizard");
    setFont(DesignFont(8));

    Image1 = Picture(this, QStyle::SP_DriveNetIcon);
    PlaceTwips(*Image1, 240, 240, 600, 600);
    Image2 = Picture(this, QStyle::SP_ArrowRight);
    PlaceTwips(*Image2, 960, 240, 600, 600);
    Image3 = Picture(this, QStyle::SP_ComputerIcon);
    PlaceTwips(*Image3, 1680, 240, 600, 600);

    Label1 = new QLabel("Website to Download", this);
    PlaceTwips(*Label1, 600, 1440, 4455, 240);
    txtURL = new QLineEdit("http://", this);
    PlaceTwips(*txtURL, 600, 1680, 5775, 345);

    Label4 = new QLabel("Save to this Directory", this);
    PlaceTwips(*Label4, 600, 2280, 4455, 240);
    Command7 = new QPushButton(this);
    Command7->setIcon(style()->standardIcon(QStyle::SP_DirOpenIcon));
    PlaceTwips(*Command7, 600, 2520, 495, 375);
    txtDir = new QLineEdit("C:\\websites\\", this);
    PlaceTwips(*txtDir, 1200, 2520, 5175, 345);

    Label8 = new QLabel(
        "If you have previously downloaded this website, make sure the directory is "
        "different to last time, or the website may not be downloaded correctly.",
        this);
    Label8->setWordWrap(true);
    Label8->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceTwips(*Label8, 600, 3120, 3975, 1455);

    Command1 = new WrappingButton("Download Website Now!", this);
    Command1->setDefault(true);
    PlaceTwips(*Command1, 4800, 3600, 1695, 975);
    Command2 = new QPushButton("Close", this);
    PlaceTwips(*Command2, 5160, 120, 1455, 375);
    Command6 = new QPushButton("Options >>", this);
    PlaceTwips(*Command6, 5160, 600, 1455, 375);
    Command8 = new QPushButton("Filters", this);
    PlaceTwips(*Command8, 5160, 1080, 1455, 375);

    Frame1 = new QGroupBox(this);
    PlaceTwips(*Frame1, 6840, 120, 2655, 4455);
    Label3 = new QLabel("Get These File Types", Frame1);
    PlaceTwips(*Label3, 120, 240, 2415, 255);
    List1 = new QListWidget(Frame1);
    PlaceTwips(*List1, 120, 480, 2415, 2175);
    Command3 = new QPushButton("Add", Frame1);
    PlaceTwips(*Command3, 120, 2760, 1170, 375);
    Command4 = new QPushButton("Delete", Frame1);
    PlaceTwips(*Command4, 1365, 2760, 1170, 375);
    Command5 = new QPushButton("Set Default", Frame1);
    PlaceTwips(*Command5, 120, 3195, 2415, 375);
    Label5 = new QLabel("Timeout", Frame1);
    PlaceTwips(*Label5, 120, 3780, 855, 255);
    List2 = new QComboBox(Frame1);
    List2->setEditable(true);
    // The box offers its five items only; what is typed is never added.
    List2->setInsertPolicy(QComboBox::NoInsert);
    PlaceTwips(*List2, 960, 3720, 855, 345);
    Label6 = new QLabel("Seconds", Frame1);
    PlaceTwips(*Label6, 1890, 3780, 705, 255);

    for (QPushButton* b : {Command2, Command3, Command4, Command5, Command6, Command7, Command8})
        b->setAutoDefault(false);

    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
    connect(Command5, &QPushButton::clicked, this, [this] { Command5_Click(); });
    connect(Command6, &QPushButton::clicked, this, [this] { Command6_Click(); });
    connect(Command7, &QPushButton::clicked, this, [this] { Command7_Click(); });
    connect(Command8, &QPushButton::clicked, this, [this] { Command8_Click(); });

    // Every change of the two boxes is stored at once, keystroke by keystroke.
    connect(txtURL, &QLineEdit::textChanged, this, [this](const QString& text) {
        PutSetting(services_.settings, "LastURL", FromQt(text));
    });
    connect(txtDir, &QLineEdit::textChanged, this, [this](const QString& text) {
        PutFolderSetting(services_.settings, FromDisplayPath(FromQt(text)));
    });
    txtURL->installEventFilter(this);
    txtDir->installEventFilter(this);
}

void frmNew::FormLoad() {
    const WizardFields fields = LoadWizard(services_);
    ShowFileTypes(fields.fileTypes);
    {
        // The load has stored what it read already.
        const QSignalBlocker quietURL(txtURL);
        const QSignalBlocker quietDir(txtDir);
        txtURL->setText(ToQt(fields.txtURL));
        txtDir->setText(ToQt(ToDisplayPath(fields.txtDir)));
    }
    for (const char* seconds : {"5", "10", "20", "30", "45"}) List2->addItem(seconds);
    List2->setEditText(ToQt(fields.timeout));

    setFixedHeight(Twips(*this, kHeightTwips));
    SetFormWidth(kCollapsedTwips);
}

void frmNew::done(int result) {
    // A filter dialog opened from here is the wizard's child, so it takes
    // input beside the modal wizard; it cannot outlive it, so it closes with
    // it and, as every way of closing it does, writes filters.txt. The crawl
    // the wizard may have started scans its first page only later, so it
    // already sees those keywords.
    for (zFilter* filters : findChildren<zFilter*>()) filters->reject();
    if (!unloaded_) {
        unloaded_ = true;
        UnloadWizard(FromQt(List2->currentText()), services_, engine_);
    }
    QDialog::done(result);
}

bool frmNew::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && (watched == txtURL || watched == txtDir)) {
        auto* box = static_cast<QLineEdit*>(watched);
        // After the focus change settles, or a mouse click would undo it.
        QTimer::singleShot(0, box, [box] { box->selectAll(); });
    }
    return QDialog::eventFilter(watched, event);
}

void frmNew::SetFormWidth(int twips) {
    widthTwips_ = twips;
    setFixedWidth(Twips(*this, twips - kBorderTwips));
}

WizardFields frmNew::Fields() const {
    WizardFields fields{FromQt(txtURL->text()),
                        FromDisplayPath(FromQt(txtDir->text())),
                        FromQt(List2->currentText()),
                        {}};
    for (int i = 0; i < List1->count(); ++i)
        fields.fileTypes.push_back(FromQt(List1->item(i)->text()));
    return fields;
}

void frmNew::ShowFolder(const WizardFields& fields) {
    const QSignalBlocker stored(txtDir);  // FolderReady stored it as InDir
    txtDir->setText(ToQt(ToDisplayPath(fields.txtDir)));
}

void frmNew::Command1_Click() {
    WizardFields fields = Fields();
    const DownloadStart start = DownloadWebsiteNow(fields, services_, engine_);
    ShowFolder(fields);
    if (start == DownloadStart::FolderRefused) return;
    unloaded_ = true;  // the download ran the unload steps itself
    accept();
}

void frmNew::Command2_Click() {
    WizardFields fields = Fields();
    const bool ready = FolderReady(fields, services_);
    ShowFolder(fields);
    if (ready) accept();
}

void frmNew::ShowFileTypes(const std::vector<std::string>& items) {
    List1->clear();
    for (const auto& item : items) List1->addItem(ToQt(item));
}

void frmNew::MakeFileTypesFile() {
    std::vector<std::string> items;
    vantorin::MakeFileTypesFile(items, services_.fs);
    ShowFileTypes(items);
}

void frmNew::Command3_Click() {
    auto answer = services_.dialogs.InputBox("Enter a file extension (e.g. .html)", "", "");
    std::string ext = LowerTrim(answer.value_or(""));
    if (ext.empty()) return;
    if (Left(ext, 1) != ".") ext = "." + ext;
    if (ext.size() < 6) {
        List1->addItem(ToQt(ext));
    } else {
        services_.dialogs.MsgBox("That file extension is too long! (max 4 characters)", "Error",
                                 kInformation | kOkOnly);
    }
}

void frmNew::Command4_Click() {
    QListWidgetItem* selected = List1->currentItem();
    const std::string text =
        selected && selected->isSelected() ? FromQt(selected->text()) : std::string();
    if (Trim(text).empty()) {
        services_.dialogs.MsgBox("You must select a list item to delete.", "Error",
                                 kInformation | kOkOnly);
        return;
    }
    if (services_.dialogs.MsgBox("Are you sure you want to remove this list item?\r\n\r\n" + text,
                                 "Delete", kInformation | kYesNo) == kAnswerYes)
        delete List1->takeItem(List1->row(selected));
}

void frmNew::Command5_Click() {
    if (services_.dialogs.MsgBox("Are you sure you want to set the file types list to default?",
                                 "Default", kInformation | kYesNo) != kAnswerNo)
        MakeFileTypesFile();
}

// The form grows and shrinks about its centre, then stays on the screen: a
// wizard near the screen's edge would otherwise lose the part it grew by.
void frmNew::Command6_Click() {
    const int shift = Twips(*this, (kExpandedTwips - kCollapsedTwips) / 2.0);
    if (widthTwips_ != kCollapsedTwips) {
        SetFormWidth(kCollapsedTwips);
        move(x() + shift, y());
        Command6->setText("Options >>");
    } else {
        SetFormWidth(kExpandedTwips);
        move(x() - shift, y());
        Command6->setText("Options <<");
    }
    KeepOnScreen();
}

void frmNew::KeepOnScreen() {
    move(KeptInside(frameGeometry(), screen()->availableGeometry()));
}

void frmNew::Command7_Click() {
    zDir chooser(services_.settings, this);
    if (chooser.exec() == QDialog::Accepted) txtDir->setText(ToQt(ToDisplayPath(chooser.Chosen())));
}

void frmNew::Command8_Click() {
    zFilter::ShowModeless(services_, this);
}

}  // namespace vantorin
