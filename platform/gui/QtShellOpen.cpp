#include "platform/gui/QtShellOpen.h"

#include <QDesktopServices>
#include <QUrl>

#include "platform/FileSystem.h"
#include "platform/gui/Latin1.h"

namespace vantorin {

// Failures are ignored: the desktop either opens the place or it does not.
void QtShellOpen::OpenFolder(const std::string& folder) {
    const std::string native = FileSystem::ToNative(folder).string();
    QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(native)));
}

void QtShellOpen::OpenAddress(const std::string& address) {
    QDesktopServices::openUrl(QUrl(ToQt(address), QUrl::TolerantMode));
}

}  // namespace vantorin
