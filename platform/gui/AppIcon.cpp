#include "platform/gui/AppIcon.h"

#include <QApplication>
#include <QIcon>

// The resource lives in a static library, whose registration the linker would
// drop; Q_INIT_RESOURCE must be used outside any namespace.
static void LoadIconResource() {
    Q_INIT_RESOURCE(AppIcon);
}

namespace vantorin {

void SetApplicationIcon() {
    LoadIconResource();
    QIcon icon;
    for (const char* size : {"48", "128", "256"}) {
        icon.addFile(QStringLiteral(":/icons/%1.png").arg(QLatin1String(size)));
    }
    QApplication::setWindowIcon(icon);
    QGuiApplication::setDesktopFileName(QStringLiteral("org.vantorin.Vantorin"));
}

}  // namespace vantorin
