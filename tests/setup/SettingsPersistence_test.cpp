#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QSettings>

#include "platform/QtSettingsStore.h"
#include "setup/frmNew.h"
#include "tests/setup/SetupFakes.h"

namespace vantorin {
namespace {

TEST(SettingsPersistence, ASecondWizardShowsWhatTheFirstStored) {
    testing::TempDir config;
    qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(config.Native()));
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       QString::fromStdString(config.Native()));
    testing::SetupWorld w;
    const std::string url = "http://caf\xE9.test/a b";  // one Latin-1 byte, kept as it is
    {
        QtSettingsStore store;
        SetupServices services{w.vars, w.fs, store, w.dialogs};
        frmNew first(services, w.engine);
        first.txtURL->setText(QString::fromLatin1(url.data(), static_cast<qsizetype>(url.size())));
        first.txtDir->setText((w.dir.Native() + "/site").c_str());
        first.List2->setEditText(" 20 ");
        first.reject();
    }
    EXPECT_TRUE(testing::NativeExists(config.Native() + "/Vantorin/Vantorin.conf"));
    QtSettingsStore again;
    SetupServices later{w.vars, w.fs, again, w.dialogs};
    frmNew second(later, w.engine);
    EXPECT_EQ(second.txtURL->text().toLatin1().toStdString(), url);
    EXPECT_EQ(second.txtDir->text().toStdString(), w.dir.Native() + "/site");
    EXPECT_EQ(second.List2->currentText(), "20");
}

}  // namespace
}  // namespace vantorin
