// Byte strings cross to and from Qt one byte per character (Latin-1), so every
// byte round-trips.
#pragma once

#include <QString>
#include <string>

namespace vantorin {

inline QString ToQt(const std::string& bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

inline std::string FromQt(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

}  // namespace vantorin
