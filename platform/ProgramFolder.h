// Where the program keeps its own files (temp\filetypes.txt, filters.txt,
// dldata\): an installed program in the user's data folder, for every user
// and root too, since its executable's folder (/usr/bin, Program Files) is
// not the user's; a build tree or a copy the user put in a folder of their
// own beside the executable, unless that folder cannot be written to.
#pragma once

#include <functional>
#include <string>

namespace vantorin {

enum class FolderConvention { Xdg, Windows };

// Reads an environment variable; "" when it is unset.
using EnvironmentLookup = std::function<std::string(const std::string& name)>;
// Asks the file system about a native path.
using PathQuery = std::function<bool(const std::string& path)>;

// The rule alone. An installation (the package, `make install PREFIX=...`)
// puts the window module in <prefix>/libexec/vantorin beside the executable's
// <prefix>/bin, whatever the prefix was; a build tree and a portable copy have
// it beside the executable. `isFile` finds that module, `canMakeFileIn` is
// asked only of a folder that is not installed. `executableFolder` and the
// environment's folders are native paths; the result is in the program's
// backslash form without a trailing "\". The user's folder is
// $XDG_DATA_HOME/Vantorin (else ~/.local/share/Vantorin), or
// %APPDATA%\Vantorin on Windows; when the environment names none, the
// executable's folder stays, and writes there simply fail.
std::string ChooseProgramFolder(const std::string& executableFolder, const PathQuery& isFile,
                                const PathQuery& canMakeFileIn, FolderConvention convention,
                                const EnvironmentLookup& environment);

// Asks the system: the running executable's folder, the files around it,
// whether a file can be made in it, and the environment. Makes the user's
// folder (with its parents) when that is the one chosen. Needs the
// application object to exist.
std::string FindProgramFolder();

}  // namespace vantorin
