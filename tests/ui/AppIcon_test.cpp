#include "platform/gui/AppIcon.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>

namespace vantorin {
namespace {

// A wrong resource path fails silently at run time: the windows would simply
// show the desktop's generic glyph.
TEST(AppIconTest, EverySizeOfTheIconIsCompiledIn) {
    SetApplicationIcon();
    const QList<QSize> sizes = QApplication::windowIcon().availableSizes();
    for (int side : {48, 128, 256}) EXPECT_TRUE(sizes.contains(QSize(side, side))) << side;
    EXPECT_EQ(QGuiApplication::desktopFileName(), "org.vantorin.Vantorin");
}

}  // namespace
}  // namespace vantorin
