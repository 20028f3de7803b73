// The folder a site is saved to when none was chosen yet.
#pragma once

#include <string>

namespace vantorin {

// "C:\Websites\" on Windows; elsewhere the home folder + "\Websites\", in the
// program's backslash form.
std::string DefaultTargetFolder();

}  // namespace vantorin
