// The program's icon, compiled into the executable so that a build tree shows
// it as well as an installation does.
#pragma once

namespace vantorin {

// Makes the icon the window icon of every window, and names the desktop entry
// the windows belong to (Wayland takes the icon from that entry). Call it
// right after the QApplication is made.
void SetApplicationIcon();

}  // namespace vantorin
