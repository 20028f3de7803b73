#include "ui/frmPause.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QPushButton>

namespace vantorin {
namespace {

TEST(frmPause, CaptionsAndEveryWayOfClosingResumesOnce) {
    enum class Way { Button, Frame, Escape };
    for (const Way way : {Way::Button, Way::Frame, Way::Escape}) {
        frmPause pause;
        EXPECT_EQ(pause.windowTitle().toStdString(), "Paused");
        EXPECT_EQ(pause.Label1()->text().toStdString(), "Download Paused");
        EXPECT_EQ(pause.Label2()->text().toStdString(),
                  "No new files will start downloading while program is paused.");
        EXPECT_EQ(pause.Command1()->text().toStdString(), "Click to resume...");
        int resumed = 0;
        pause.OnUnload = [&] { ++resumed; };
        pause.show();
        if (way == Way::Button) pause.Command1()->click();
        if (way == Way::Frame) pause.close();
        if (way == Way::Escape) pause.reject();
        EXPECT_EQ(resumed, 1) << static_cast<int>(way);
        EXPECT_FALSE(pause.isVisible());
    }
}

}  // namespace
}  // namespace vantorin
