// The command line's entry: parses the arguments and either answers --help
// and --version, checks a mirror, or runs one crawl with no window.
#pragma once

namespace vantorin {

// Returns the process's exit status (see app/CommandLine.h).
int RunCommandLine(int argc, char** argv);

}  // namespace vantorin
