#include "setup/FolderChooser.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStorageInfo>
#include <QStyle>
#include <algorithm>
#include <vector>

#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/Named.h"
#include "platform/gui/Twips.h"
#include "setup/Settings.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

constexpr int kPathRole = Qt::UserRole;

std::string Backslashed(const QString& nativePath) {
    return Replace(FromQt(QDir::cleanPath(nativePath)), "/", "\\");
}

QString Native(const std::string& path) {
    return QString::fromStdString(FileSystem::ToNative(path).string());
}

// A backslash path as the dialog shows it.
QString Shown(const std::string& path) {
    return ToQt(ToDisplayPath(path));
}

// The roots of the mounted volumes that hold files: the system root first,
// then every volume on a real device, each once.
std::vector<QStorageInfo> Drives() {
    std::vector<QStorageInfo> drives;
    auto known = [&drives](const QString& root) {
        return std::any_of(drives.begin(), drives.end(),
                           [&root](const QStorageInfo& d) { return d.rootPath() == root; });
    };
    QStorageInfo root = QStorageInfo::root();
    drives.push_back(root);
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        if (!volume.isValid() || !volume.isReady() || known(volume.rootPath())) continue;
#ifndef _WIN32
        if (!volume.device().startsWith("/dev/")) continue;
#endif
        drives.push_back(volume);
    }
    return drives;
}

}  // namespace

FolderChooser::FolderChooser(SettingsStore& settings, QWidget* parent) : QDialog(parent) {
    BuildControls();
    FillDrives();
    openFolderLabel->setText(Shown(ReadFolderSetting(settings)));
    OpenFolder(ReadFolderSetting(settings));
}

void FolderChooser::BuildControls() {
    setObjectName("folderChooser");
    setWindowTitle("Select Directory to Save the Website");
    setFont(DesignFont(8));

    picture = Named(new QLabel(this), "picture");
    picture->setPixmap(style()->standardIcon(QStyle::SP_DirHomeIcon).pixmap(32, 32));
    picture->setAlignment(Qt::AlignCenter);
    PlaceTwips(*picture, 120, 120, 600, 600);
    // Wider and taller than first drawn: the caption is not cut by the window
    // manager's buttons, and deep folders and long paths fit their lists.
    drives = Named(new QComboBox(this), "drives");
    PlaceTwips(*drives, 840, 240, 5895, 315);
    openFolderLabel = Named(new QLabel("c:\\", this), "openFolderLabel");
    openFolderLabel->setTextFormat(Qt::PlainText);
    PlaceTwips(*openFolderLabel, 840, 660, 5895, 255);
    folders = Named(new QListWidget(this), "folders");
    PlaceTwips(*folders, 120, 1020, 6615, 3495);
    okButton = Named(new QPushButton("&Ok...", this), "okButton");
    okButton->setDefault(true);
    PlaceTwips(*okButton, 4080, 4680, 1215, 375);
    cancelButton = Named(new QPushButton("Cancel", this), "cancelButton");
    cancelButton->setAutoDefault(false);
    PlaceTwips(*cancelButton, 5400, 4680, 1335, 375);
    setFixedSize(Twips(*this, 6855), Twips(*this, 5175));

    connect(drives, &QComboBox::currentIndexChanged, this, [this] { DriveChosen(); });
    connect(folders, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        OpenFolder(FromQt(item->data(kPathRole).toString()));
    });
    connect(okButton, &QPushButton::clicked, this, [this] { OkClicked(); });
    connect(cancelButton, &QPushButton::clicked, this, [this] { CancelClicked(); });
}

void FolderChooser::FillDrives() {
    const QSignalBlocker quiet(drives);
    for (const QStorageInfo& drive : Drives()) {
        std::string root = Backslashed(drive.rootPath());
        QString shown = Shown(root);
        if (!drive.name().isEmpty()) shown += " [" + drive.name() + "]";
        drives->addItem(shown, ToQt(root));
    }
}

void FolderChooser::SelectDriveOf(const std::string& path) {
    int best = -1;
    qsizetype bestLength = -1;
    const QString here = ToQt(path);
    for (int i = 0; i < drives->count(); ++i) {
        QString root = drives->itemData(i).toString();
        QString prefix = root.endsWith('\\') ? root : root + '\\';
        if ((here == root || here.startsWith(prefix)) && root.size() > bestLength) {
            best = i;
            bestLength = root.size();
        }
    }
    const QSignalBlocker quiet(drives);
    drives->setCurrentIndex(best);
}

void FolderChooser::OpenFolder(const std::string& path) {
    QDir dir(Native(path));
    if (Trim(path).empty() || !dir.exists()) {
        // The folder is gone or was never made: open its drive's root instead.
        SelectDriveOf(Backslashed(dir.absolutePath()));
        QString root = drives->currentIndex() >= 0 ? drives->currentData().toString()
                                                   : ToQt(Backslashed(QDir::rootPath()));
        dir.setPath(Native(FromQt(root)));
    }
    openFolder_ = Backslashed(dir.absolutePath());
    SelectDriveOf(openFolder_);
    FillFolders();
    FolderOpened();
}

void FolderChooser::FillFolders() {
    folders->clear();
    QDir dir(Native(openFolder_));
    // The open folder's ancestors first, root at the top, as open folders.
    std::vector<QString> chain;
    for (QDir up = dir;;) {
        chain.push_back(up.absolutePath());
        if (up.isRoot() || !up.cdUp()) break;
    }
    std::reverse(chain.begin(), chain.end());
    int depth = 0;
    for (const QString& folder : chain) {
        QDir at(folder);
        QString name = at.isRoot() ? Shown(Backslashed(folder)) : at.dirName();
        auto* item = new QListWidgetItem(style()->standardIcon(QStyle::SP_DirOpenIcon),
                                         QString(depth * 3, ' ') + name, folders);
        item->setData(kPathRole, ToQt(Backslashed(folder)));
        ++depth;
    }
    folders->setCurrentRow(folders->count() - 1);
    for (const QString& sub : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        auto* item = new QListWidgetItem(style()->standardIcon(QStyle::SP_DirClosedIcon),
                                         QString(depth * 3, ' ') + sub, folders);
        item->setData(kPathRole, ToQt(Backslashed(dir.absoluteFilePath(sub))));
    }
}

void FolderChooser::FolderOpened() {
    openFolderLabel->setText(Shown(openFolder_));
}

void FolderChooser::DriveChosen() {
    if (drives->currentIndex() >= 0) OpenFolder(FromQt(drives->currentData().toString()));
}

void FolderChooser::OkClicked() {
    chosen_ = FromDisplayPath(FromQt(openFolderLabel->text())) + "\\";
    accept();
}

void FolderChooser::CancelClicked() {
    reject();
}

}  // namespace vantorin
