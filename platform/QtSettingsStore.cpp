#include "platform/QtSettingsStore.h"

#include <QSettings>
#include <QString>

namespace vantorin {

namespace {

QString Latin1(const std::string& s) {
    return QString::fromLatin1(s.data(), static_cast<qsizetype>(s.size()));
}

// A fresh QSettings per call: each read sees what another instance wrote.
QSettings Store() {
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, "Vantorin", "Vantorin");
}

}  // namespace

std::string QtSettingsStore::Read(const std::string& key, const std::string& defaultValue) {
    QSettings settings = Store();
    settings.beginGroup("Settings");
    QVariant value = settings.value(Latin1(key));
    if (!value.isValid()) return defaultValue;
    return value.toString().toLatin1().toStdString();
}

void QtSettingsStore::Put(const std::string& key, const std::string& value) {
    QSettings settings = Store();
    settings.beginGroup("Settings");
    settings.setValue(Latin1(key), Latin1(value));
    settings.endGroup();
    settings.sync();
}

}  // namespace vantorin
