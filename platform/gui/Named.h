// Controls carry the names the window's tests and tools know them by, given
// where each is made.
#pragma once

#include <QObject>

namespace vantorin {

template <class Control>
Control* Named(Control* control, const char* name) {
    control->setObjectName(name);
    return control;
}

}  // namespace vantorin
