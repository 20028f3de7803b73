// Where the program keeps its own files (temp\filetypes.txt, filters.txt,
// dldata\): beside the executable when that folder can be written to (a build
// tree, a portable copy), otherwise in the user's data folder, since an
// installed executable's folder (/usr/bin, Program Files) is not the user's.
#pragma once

#include <functional>
#include <string>

namespace vantorin {

enum class FolderConvention { Xdg, Windows };

// Reads an environment variable; "" when it is unset.
using EnvironmentLookup = std::function<std::string(const std::string& name)>;

// The rule alone. `executableFolder` and the environment's folders are native
// paths; the result is in the program's backslash form without a trailing "\".
// The user's folder is $XDG_DATA_HOME/Vantorin (else ~/.local/share/Vantorin),
// or %APPDATA%\Vantorin on Windows; when the environment names none, the
// executable's folder stays, and writes there simply fail.
std::string ChooseProgramFolder(const std::string& executableFolder, bool executableFolderWritable,
                                FolderConvention convention, const EnvironmentLookup& environment);

// Asks the system: the running executable's folder, whether a file can be
// made in it, and the environment. Makes the user's folder (with its parents)
// when that is the one chosen. Needs the application object to exist.
std::string FindProgramFolder();

}  // namespace vantorin
