#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include "app/ProgressLine.h"

namespace vantorin {
namespace {

using Action = CommandLine::Action;

TEST(CommandLine, ParsesOrRefusesEachLine) {
    struct Case {
        std::vector<std::string> args;
        Action action;
        std::string url, dir, timeout, connections, error;
    };
    const Case cases[] = {
        {{}, Action::Window, "", "", "", "4", ""},
        {{"--url", "www.a.test", "--dir", "/m"}, Action::Crawl, "www.a.test", "/m", "", "4", ""},
        {{"--dir=/m", "--url=x", "--timeout", "2.5", "--connections", "9"},
         Action::Crawl,
         "x",
         "/m",
         "2.5",
         "9",
         ""},
        // The connections as chosen from txtMax's list, "1" to "24" only; an
        // empty address is the wizard's to take.
        {{"--url", "", "--dir", "/m", "--connections", "24"},
         Action::Crawl,
         "",
         "/m",
         "",
         "24",
         ""},
        {{"--url", "x", "--dir", "/m", "--help"}, Action::Help, "", "", "", "4", ""},
        {{"--version"}, Action::Version, "", "", "", "4", ""},
        {{"--url", "x"}, Action::UsageError, "", "", "", "4", "--dir FOLDER is required"},
        {{"--dir", "/m"}, Action::UsageError, "", "", "", "4", "--url ADDRESS is required"},
        {{"--url"}, Action::UsageError, "", "", "", "4", "--url needs a value"},
        {{"--url", "x", "--url", "y", "--dir", "/m"},
         Action::UsageError,
         "",
         "",
         "",
         "4",
         "--url given twice"},
        {{"--url", "x", "--dir", "/m", "--timeout", "soon"},
         Action::UsageError,
         "",
         "",
         "",
         "4",
         "--timeout takes a number of seconds from 0.001 to 2147483: soon"},
        {{"www.a.test"}, Action::UsageError, "", "", "", "4", "unknown argument: www.a.test"},
        {{"--version=2"}, Action::UsageError, "", "", "", "4", "unknown argument: --version=2"},
    };
    for (const std::string bad : {"0", "25", "abc", "04", "4.0", "-1", ""}) {
        EXPECT_EQ(ParseCommandLine({"--url", "x", "--dir", "/m", "--connections", bad}).error,
                  "--connections takes a whole number from 1 to 24: " + bad);
    }
    // Below half a millisecond rounds to 0 ms, a timer that never fires; past
    // 2^31-1 ms the timers refuse it.
    for (const std::string bad : {"0", "-1", "0.0004", "2147484", " "}) {
        EXPECT_EQ(ParseCommandLine({"--url", "x", "--dir", "/m", "--timeout", bad}).action,
                  Action::UsageError)
            << bad;
    }
    for (const std::string good : {"0.001", "2147483", "1", "0.5"}) {
        EXPECT_EQ(ParseCommandLine({"--url", "x", "--dir", "/m", "--timeout", good}).action,
                  Action::Crawl)
            << good;
    }
    for (const Case& c : cases) {
        const CommandLine line = ParseCommandLine(c.args);
        const std::string label = c.args.empty() ? "(none)" : c.args.front();
        EXPECT_EQ(line.action, c.action) << label;
        EXPECT_EQ(line.url, c.url) << label;
        EXPECT_EQ(line.dir, c.dir) << label;
        EXPECT_EQ(line.timeout, c.timeout) << label;
        EXPECT_EQ(line.connections, c.connections) << label;
        EXPECT_EQ(line.error, c.error) << label;
    }
}

// What a script reads the help for: every option the parser takes and every
// status the program can end with.
TEST(CommandLine, HelpNamesEveryOptionAndExitStatus) {
    const std::string help = UsageText();
    for (const std::string option : {"--url", "--dir", "--timeout", "--connections"})
        EXPECT_NE(help.find("\n  " + option + " "), std::string::npos) << option;
    for (int status : {kExitDone, kExitFolderError, kExitWriteFailed, kExitNoServer, kExitUsage,
                       kExitInterrupted})
        EXPECT_NE(help.find("\n  " + std::to_string(status) + " "), std::string::npos) << status;
}

TEST(ProgressLine, FormatsTheFourFigures) {
    EXPECT_EQ(FormatProgress({1234, 5, 9876543, 4}),
              "Downloaded 1,234 files, 5 queued, 9,876,543 bytes, 4 connections busy");
    EXPECT_EQ(FormatProgress({}), "Downloaded 0 files, 0 queued, 0 bytes, 0 connections busy");
}

}  // namespace
}  // namespace vantorin
