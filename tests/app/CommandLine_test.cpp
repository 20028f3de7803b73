#include "app/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/ProgressLine.h"
#include "app/StartHints.h"
#include "tests/support/EngineWorld.h"

namespace vantorin {
namespace {

// The parse in one line: action, url, dir, timeout, connections, error.
std::string Parsed(const std::vector<std::string>& args) {
    const CommandLine l = ParseCommandLine(args);
    const char* const actions[] = {"Window", "Crawl", "Check", "Help", "Version", "UsageError"};
    return std::string(actions[static_cast<int>(l.action)]) + "|" + l.url + "|" + l.dir + "|" +
           l.timeout + "|" + l.connections + "|" + l.error;
}

TEST(CommandLine, ParsesOrRefusesEachLine) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{}, "Window||||4|"},
        {{"--url", "www.a.test", "--dir", "/m", "--connections", "10"}, "Crawl|www.a.test|/m||10|"},
        {{"--dir=/m", "--url=x", "--timeout", "2.5", "--connections", "19"}, "Crawl|x|/m|2.5|19|"},
        // An empty address is the wizard's to take.
        {{"--url", "", "--dir", "/m", "--connections", "24"}, "Crawl||/m||24|"},
        {{"--url", "x", "--dir", "/m", "--help"}, "Help||||4|"},
        {{"--dir", "/m"}, "UsageError||||4|--url ADDRESS is required"},
        {{"--url"}, "UsageError||||4|--url needs a value"},
        {{"--url", "x", "--url", "y", "--dir", "/m"}, "UsageError||||4|--url given twice"},
        {{"--url", "x", "--dir", "/m", "--timeout", "soon"},
         "UsageError||||4|--timeout takes a number of seconds from 0.001 to 2147483: soon"},
        {{"www.a.test"}, "UsageError||||4|unknown argument: www.a.test"},
        {{"--version=2"}, "UsageError||||4|unknown argument: --version=2"},
        {{"--check=/m"}, "Check||||4|"},
        {{"--check=m", "--connections=2"}, "UsageError||||4|--check FOLDER takes no other option"},
        {{"--check", ""}, "UsageError||||4|--check FOLDER is required"},
    };
    for (const auto& [args, parsed] : cases)
        EXPECT_EQ(Parsed(args), parsed) << (args.empty() ? "(none)" : args.front());
    // The connections as chosen from the connections box's list, "1" to "24" only.
    for (const std::string bad : {"0", "25", "abc", "04", "4.0", "-1", ""})
        EXPECT_EQ(ParseCommandLine({"--url", "x", "--dir", "/m", "--connections", bad}).error,
                  "--connections takes a whole number from 1 to 24: " + bad);
    // Below half a millisecond rounds to 0 ms, a timer that never fires; past
    // 2^31-1 ms the timers refuse it.
    for (const std::string t : {"0", "-1", "0.0004", "2147484", " ", "0.001", "2147483", "0.5"})
        EXPECT_EQ(ParseCommandLine({"--url", "x", "--dir", "/m", "--timeout", t}).error.empty(),
                  t == "0.001" || t == "2147483" || t == "0.5")
            << t;
    // What a script reads the help for: both forms of the command, every
    // option the parser takes, the timeout's default and every exit status.
    for (const std::string item :
         {"--help | --version\n", "\n  --url ", "\n  --dir ", "\n  --timeout ", "(default 15)\n",
          "\n  --connections ", "\nExit status:\n  0 ", "\n  2 ", "\n  3 ", "\n  4 ", "\n  64 ",
          "\n  130 ", "\n  --check ", "\nWith --check: 0 "})
        EXPECT_NE(UsageText().find(item), std::string::npos) << item;
}

// The figures of a crawl, as plain lines only when they change.
TEST(ProgressLine, FormatsTheFourFiguresAndRepeatsNothing) {
    testing::EngineWorld world;
    testing::WriteNativeFile(world.dir.NativePath("prog/temp/filetypes.txt"), ".html\r\n");
    world.Start("www.a.test/");
    world.socket(1).Accept();
    world.socket(1).Receive("H\r\n\r\n<a href='x.html'> <a href='y.html'> <a href='z.html'>", true);
    world.loop.RunUntilIdle();
    for (int i = 0; i < 2; ++i) world.tick().Fire();  // two at work, one queued
    EXPECT_EQ(FiguresOf(world.engine), (ProgressFigures{1, 1, 58, 2}));
    EXPECT_EQ(FormatProgress({1234, 5, 9876543, 4}),
              "Downloaded 1,234 files, 5 queued, 9,876,543 bytes, 4 connections busy");
    ProgressLine line(false);
    ::testing::internal::CaptureStderr();
    for (const std::int64_t files : {0, 0, 7, 7, 0}) line.Show({files, 0, 0, 0});
    line.Break();                 // nothing open in plain mode
    ProgressLine terminal(true);  // one line rewritten in place, ended once
    terminal.Show({7, 0, 0, 0});
    for (int i = 0; i < 2; ++i) terminal.Break();
    const std::string zero = FormatProgress({}), seven = FormatProgress({7, 0, 0, 0});
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              zero + "\n" + seven + "\n" + zero + "\n\r" + seven + "\033[K\n");
}

TEST(StartHints, NameWhatTheAddressWillNotDoAndThePlaceholdersLeftBehind) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        // A colon in the path names no port.
        {"", {"www.a.test/x.html", "http://www.a.test/", "www.a.test/page:1.html"}},
        {"is empty", {"  "}},
        {"starts with \"https://\"", {"HTTPS://www.a.test/", "https://www.a.test:443/"}},
        // A drive letter's bounds, with and without a path.
        {"is a local path",
         {"/home/me/site", "\\\\server\\share", "File:///tmp/x.html", "z:\\sites", "a:/x",
          "A:", "Z:"}},
        {"names a port", {"a:80", "www.a.test:8080/x:y", "http://www.a.test:81"}},
    };
    using namespace ::testing;
    for (const auto& [wanted, addresses] : cases)
        for (const std::string& address : addresses)  // one hint naming it, or none
            EXPECT_THAT(AddressHints(address),
                        AllOf(SizeIs(!wanted.empty()), Each(HasSubstr(wanted))))
                << address;
    EXPECT_EQ(PlaceholderHint(0) + "|" + PlaceholderHint(1),
              "|Hint: the folder holds 1 placeholder (\".tmp\") from an earlier run; their pages "
              "count as already queued and will be skipped. Choose a new folder to get them.");
    EXPECT_NE(PlaceholderHint(1234).find("holds 1,234 placeholders"), std::string::npos);
}

}  // namespace
}  // namespace vantorin
