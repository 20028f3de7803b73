// The paths a person sees and types, and the backslash form the rules work on.
// Folder rules, the mirror and the record files keep the backslash form; the
// folder box, the folder chooser and the stored folder setting show the
// platform's own separator, so on Linux nobody ever reads "\home\me\".
#pragma once

#include <string>
#include <string_view>

namespace vantorin {

// Backslash form -> what is shown: every "\" becomes "/" off Windows;
// unchanged on Windows.
std::string ToDisplayPath(std::string_view path);
// What was typed or shown -> backslash form: every "/" becomes "\" off
// Windows; unchanged on Windows, where the folder rules turn "/" themselves.
std::string FromDisplayPath(std::string_view shown);

}  // namespace vantorin
