#include "app/CommandLine.h"

#include "platform/Text.h"

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

}  // namespace

std::string UsageText() {
    return "Usage: vantorin --url ADDRESS --dir FOLDER [--timeout SECONDS] [--connections N]\n"
           "       vantorin --help | --version\n"
           "Without arguments the program opens its window.\n"
           "\n"
           "  --url ADDRESS      the site to download (plain http, port 80)\n"
           "  --dir FOLDER       the folder the mirror is saved in\n"
           "  --timeout SECONDS  per-file timeout (default: the stored setting, else 15)\n"
           "  --connections N    connections at once, 1 to 23 (default 4)\n"
           "\n"
           "Exit status: 0 downloaded, 2 the folder is not writable, 64 usage error,\n"
           "130 interrupted.\n";
}

CommandLine ParseCommandLine(const std::vector<std::string>& args) {
    CommandLine line;
    if (args.empty()) return line;
    line.action = CommandLine::Action::Crawl;
    bool sawUrl = false;
    bool sawDir = false;
    bool sawTimeout = false;
    bool sawConnections = false;
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
                                  {"--connections", &line.connections, &sawConnections}};
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
    if (!sawUrl || Trim(line.url).empty()) return Refuse("--url ADDRESS is required");
    if (!sawDir || Trim(line.dir).empty()) return Refuse("--dir FOLDER is required");
    if (sawTimeout && !IsNumeric(line.timeout))
        return Refuse("--timeout needs a number of seconds: " + line.timeout);
    return line;
}

}  // namespace vantorin
