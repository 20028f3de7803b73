#include "setup/zDir.h"

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
#include "platform/Text.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/Twips.h"
#include "setup/Settings.h"

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

zDir::zDir(SettingsStore& settings, QWidget* parent) : QDialog(parent) {
    BuildControls();
    FillDrives();
    Label1->setText(Shown(ReadFolderSetting(settings)));
    SetDir1Path(ReadFolderSetting(settings));
}

void zDir::BuildControls() {
    setWindowTitle("Select Directory to Save the Website");
    setFont(DesignFont(8));

    Image1 = new QLabel(this);
    Image1->setPixmap(style()->standardIcon(QStyle::SP_DirHomeIcon).pixmap(32, 32));
    Image1->setAlignment(Qt::AlignCenter);
    PlaceTwips(*Image1, 120, 120, 600, 600);
    // Wider and taller than first drawn: the caption is not cut by the window
    // manager's buttons, and deep folders and long paths fit their lists.
    Drive1 = new QComboBox(this);
    PlaceTwips(*Drive1, 840, 240, 5895, 315);
    Label1 = new QLabel("c:\\", this);
    Label1->setTextFormat(Qt::PlainText);
    PlaceTwips(*Label1, 840, 660, 5895, 255);
    Dir1 = new QListWidget(this);
    PlaceTwips(*Dir1, 120, 1020, 6615, 3495);
    Command1 = new QPushButton("&Ok...", this);
    Command1->setDefault(true);
    PlaceTwips(*Command1, 4080, 4680, 1215, 375);
    Command2 = new QPushButton("Cancel", this);
    Command2->setAutoDefault(false);
    PlaceTwips(*Command2, 5400, 4680, 1335, 375);
    setFixedSize(Twips(*this, 6855), Twips(*this, 5175));

    connect(Drive1, &QComboBox::currentIndexChanged, this, [this] { Drive1_Change(); });
    connect(Dir1, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
        SetDir1Path(FromQt(item->data(kPathRole).toString()));
    });
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
}

void zDir::FillDrives() {
    const QSignalBlocker quiet(Drive1);
    for (const QStorageInfo& drive : Drives()) {
        std::string root = Backslashed(drive.rootPath());
        QString shown = Shown(root);
        if (!drive.name().isEmpty()) shown += " [" + drive.name() + "]";
        Drive1->addItem(shown, ToQt(root));
    }
}

void zDir::SelectDriveOf(const std::string& path) {
    int best = -1;
    qsizetype bestLength = -1;
    const QString here = ToQt(path);
    for (int i = 0; i < Drive1->count(); ++i) {
        QString root = Drive1->itemData(i).toString();
        QString prefix = root.endsWith('\\') ? root : root + '\\';
        if ((here == root || here.startsWith(prefix)) && root.size() > bestLength) {
            best = i;
            bestLength = root.size();
        }
    }
    const QSignalBlocker quiet(Drive1);
    Drive1->setCurrentIndex(best);
}

void zDir::SetDir1Path(const std::string& path) {
    QDir dir(Native(path));
    if (Trim(path).empty() || !dir.exists()) {
        // The folder is gone or was never made: open its drive's root instead.
        SelectDriveOf(Backslashed(dir.absolutePath()));
        QString root = Drive1->currentIndex() >= 0 ? Drive1->currentData().toString()
                                                   : ToQt(Backslashed(QDir::rootPath()));
        dir.setPath(Native(FromQt(root)));
    }
    dir1Path_ = Backslashed(dir.absolutePath());
    SelectDriveOf(dir1Path_);
    FillFolders();
    Dir1_Change();
}

void zDir::FillFolders() {
    Dir1->clear();
    QDir dir(Native(dir1Path_));
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
                                         QString(depth * 3, ' ') + name, Dir1);
        item->setData(kPathRole, ToQt(Backslashed(folder)));
        ++depth;
    }
    Dir1->setCurrentRow(Dir1->count() - 1);
    for (const QString& sub : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        auto* item = new QListWidgetItem(style()->standardIcon(QStyle::SP_DirClosedIcon),
                                         QString(depth * 3, ' ') + sub, Dir1);
        item->setData(kPathRole, ToQt(Backslashed(dir.absoluteFilePath(sub))));
    }
}

void zDir::Dir1_Change() {
    Label1->setText(Shown(dir1Path_));
}

void zDir::Drive1_Change() {
    if (Drive1->currentIndex() >= 0) SetDir1Path(FromQt(Drive1->currentData().toString()));
}

void zDir::Command1_Click() {
    chosen_ = FromDisplayPath(FromQt(Label1->text())) + "\\";
    accept();
}

void zDir::Command2_Click() {
    reject();
}

}  // namespace vantorin
