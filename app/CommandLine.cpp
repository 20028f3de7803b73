#include "app/CommandLine.h"

#include <limits>

#include "text/Strings.h"

namespace vantorin {

namespace {

CommandLine Only(CommandLine::Action action) {
    CommandLine line;
    line.action = action;
    return line;
}

CommandLine Refuse(const std::string& why) {
    CommandLine refused = Only(CommandLine::Action::UsageError);
    refused.error = why;
    return refused;
}

// One of the window's list items "1" to "24", as chosen, not typed: the
// typed check would refuse 24 and let 0 through, which then hangs a crawl
// that may use no connection.
bool IsConnectionsItem(const std::string& text) {
    if (text.empty() || text.size() > 2 || text.front() == '0') return false;
    for (char c : text)
        if (c < '0' || c > '9') return false;
    return std::stoi(text) <= 24;
}

// A number of seconds the timeout timers can hold: at least one whole
// millisecond once rounded (0 ms would mean never), at most the timers' range.
bool IsTimeoutSeconds(const std::string& text) {
    if (!IsNumeric(text)) return false;
    const long long ms = RoundHalfEven(Val(text) * 1000);
    return ms >= 1 && ms <= std::numeric_limits<int>::max();
}

}  // namespace

std::string UsageText() {
    return "Usage: vantorin --url ADDRESS --dir FOLDER [--timeout SECONDS] [--connections N]\n"
           "       vantorin --check FOLDER\n"
           "       vantorin --help | --version\n"
           "Without arguments the program opens its window.\n"
           "\n"
           "  --url ADDRESS      the site to download (plain HTTP, always port 80)\n"
           "  --dir FOLDER       the folder the mirror is saved in\n"
           "  --timeout SECONDS  per-file timeout, from 0.001 to 2147483\n"
           "                     (default 15)\n"
           "  --connections N    connections at once, 1 to 24 (default 4)\n"
           "  --check FOLDER     check that the saved pages in FOLDER link to each other\n"
           "                     offline; the first 20 broken links are listed\n"
           "\n"
           "A crawl ends with the same check over the pages it saved.\n"
           "\n"
           "Exit status:\n"
           "  0    the site was downloaded and every file written\n"
           "  2    the folder cannot be written to\n"
           "  3    files could not be written, or were refused (listed on stderr)\n"
           "  4    no server answered: nothing was received\n"
           "  64   usage error\n"
           "  130  interrupted (Ctrl-C or SIGTERM)\n"
           "When both 3 and 4 apply, 3 is given.\n"
           "With --check: 0 every local link leads to a saved file, 1 some do not,\n"
           "2 the folder or a page in it cannot be read, 64 usage error.\n";
}

CommandLine ParseCommandLine(const std::vector<std::string>& args) {
    CommandLine line;
    if (args.empty()) return line;
    line.action = CommandLine::Action::Crawl;
    bool sawUrl = false;
    bool sawDir = false;
    bool sawTimeout = false;
    bool sawConnections = false;
    bool sawCheck = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string name = args[i];
        std::string value;
        bool hasValue = false;
        if (const std::size_t eq = name.find('=');
            Left(name, 2) == "--" && eq != std::string::npos) {
            value = name.substr(eq + 1);
            name = name.substr(0, eq);
            hasValue = true;
        }
        if ((name == "--help" || name == "-h") && !hasValue) return Only(CommandLine::Action::Help);
        if (name == "--version" && !hasValue) return Only(CommandLine::Action::Version);

        struct Option {
            const char* name;
            std::string* target;
            bool* seen;
        };
        const Option options[] = {{"--url", &line.url, &sawUrl},
                                  {"--dir", &line.dir, &sawDir},
                                  {"--timeout", &line.timeout, &sawTimeout},
                                  {"--connections", &line.connections, &sawConnections},
                                  {"--check", &line.checkFolder, &sawCheck}};
        const Option* option = nullptr;
        for (const Option& candidate : options) {
            if (name == candidate.name) option = &candidate;
        }
        if (!option) return Refuse("unknown argument: " + args[i]);
        if (*option->seen) return Refuse(name + " given twice");
        if (!hasValue) {
            if (i + 1 >= args.size()) return Refuse(name + " needs a value");
            value = args[++i];
        }
        *option->target = value;
        *option->seen = true;
    }
    if (sawCheck) {
        if (sawUrl || sawDir || sawTimeout || sawConnections)
            return Refuse("--check FOLDER takes no other option");
        if (line.checkFolder.empty()) return Refuse("--check FOLDER is required");
        line.action = CommandLine::Action::Check;
        return line;
    }
    if (!sawUrl) return Refuse("--url ADDRESS is required");
    if (!sawDir || Trim(line.dir).empty()) return Refuse("--dir FOLDER is required");
    if (sawTimeout && !IsTimeoutSeconds(line.timeout))
        return Refuse("--timeout takes a number of seconds from 0.001 to 2147483: " + line.timeout);
    if (!IsConnectionsItem(line.connections))
        return Refuse("--connections takes a whole number from 1 to 24: " + line.connections);
    return line;
}

}  // namespace vantorin
