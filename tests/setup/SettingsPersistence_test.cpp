#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QSettings>
#include <filesystem>

#include "platform/QtSettingsStore.h"
#include "setup/frmNew.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

using testing::SetupWorld;
using testing::TempDir;

TEST(SettingsPersistence, ASecondWizardShowsWhatTheFirstStored) {
    TempDir config;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(config.Native()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(config.Native()));
    SetupWorld w;
    QtSettingsStore store;
    SetupServices services{w.vars, w.fs, store, w.dialogs};
    const std::string url = "http://caf\xE9.test/a b";
    {
        frmNew first(services, w.host);
        first.show();
        first.txtURL->setText(QString::fromLatin1(url.data(), static_cast<qsizetype>(url.size())));
        first.txtDir->setText((w.dir.Backslashed() + "site").c_str());
        first.List2->setEditText(" 20 ");
        first.reject();
    }
    EXPECT_TRUE(QFile::exists(QString::fromStdString(config.Native() + "/Vantorin/Vantorin.conf")));

    QtSettingsStore again;
    EXPECT_EQ(again.Read("LastURL", "x"), url);
    EXPECT_EQ(again.Read("Timeout", "x"), "20");
    EXPECT_EQ(again.Read("Missing", "fallback"), "fallback");
    SetupServices later{w.vars, w.fs, again, w.dialogs};
    frmNew second(later, w.host);
    EXPECT_EQ(second.txtURL->text().toLatin1().toStdString(), url);
    EXPECT_EQ(second.txtDir->text().toStdString(), w.dir.Backslashed() + "site");
    EXPECT_EQ(second.List2->currentText(), "20");
}

}  // namespace
}  // namespace vantorin
