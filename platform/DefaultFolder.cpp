#include "platform/DefaultFolder.h"

#include <QDir>

#include "text/Strings.h"

namespace vantorin {

std::string DefaultTargetFolder() {
#ifdef _WIN32
    return "C:\\Websites\\";
#else
    std::string home = QDir::homePath().toLatin1().toStdString();
    return Replace(home, "/", "\\") + "\\Websites\\";
#endif
}

}  // namespace vantorin
