// The program's command line: no arguments open the window; otherwise
// `vantorin --url ADDRESS --dir FOLDER [--timeout SECONDS] [--connections N]`
// runs one crawl with no window, `vantorin --check FOLDER` checks a mirror's
// links, or --help / --version answer and end.
#pragma once

#include <string>
#include <vector>

namespace vantorin {

struct CommandLine {
    enum class Action { Window, Crawl, Check, Help, Version, UsageError };
    Action action = Action::Window;
    std::string url;
    std::string dir;
    std::string checkFolder;        // the folder --check reads
    std::string timeout;            // empty: 15 seconds, as a first start shows
    std::string connections = "4";  // as chosen from the connections box's list: "1" to "24"
    std::string error;              // why the line was refused
};

// `args` are the arguments after the program name. Options take their value
// as the next argument or after "=" (--url=ADDRESS). An empty address is
// taken, as the wizard takes it; a missing one is a usage error.
CommandLine ParseCommandLine(const std::vector<std::string>& args);

std::string UsageText();
inline constexpr const char* kVersionText = "Vantorin Website Downloader 1.9";

// Exit codes of the command line; --check has its own (check/OfflineCheck.h).
inline constexpr int kExitDone = 0;
inline constexpr int kExitFolderError = 2;
inline constexpr int kExitWriteFailed = 3;
inline constexpr int kExitNoServer = 4;
inline constexpr int kExitUsage = 64;
inline constexpr int kExitInterrupted = 130;

}  // namespace vantorin
