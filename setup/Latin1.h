// Byte strings in and out of widgets: Latin-1, so every byte round-trips.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace vantorin {

inline QString ToQString(std::string_view s) {
    return QString::fromLatin1(s.data(), static_cast<qsizetype>(s.size()));
}
inline std::string FromQString(const QString& s) {
    return s.toLatin1().toStdString();
}

}  // namespace vantorin
