// The window lives in a module of its own (vantorin-window), loaded only when
// the program opens its window, so that the command line runs without the
// widget and GUI libraries. Found beside the executable (a build tree, a
// portable copy) or in ../libexec/vantorin/ from it (installed).
#pragma once

#include <string>

namespace vantorin {

// Loads the module and runs its window until the program ends; returns the
// exit status. When the module cannot be loaded, `error` says why and the
// result is -1.
int RunWindowModule(int argc, char** argv, std::string& error);

}  // namespace vantorin
