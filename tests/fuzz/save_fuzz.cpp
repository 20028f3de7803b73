// Saving a hostile response under a hostile address: nothing is written
// outside the target folder, a body that no text rule touches is written byte
// for byte after the header, "cancel" writes nothing, every other call raises
// the saved-files count by one.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "output/SaveFile.h"
#include "platform/Text.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/ScratchMirror.h"

using namespace vantorin;
using vantorin::fuzz::Check;

namespace {

// Every pattern a text rule of the save replaces.
constexpr std::array<std::string_view, 12> kRulePatterns = {
    ".php'", ".php\"", ".php>", ".asp'",  ".asp\"", ".asp>",
    ".php?", ".PHP?",  "href",  "http:/", "applet", "script ",
};

bool RulesTouch(const std::string& body) {
    for (std::string_view pattern : kRulePatterns)
        if (Contains(body, pattern)) return true;
    // The own-host link is matched with the case the slot's host gave it.
    return Contains(LCase(body), "http:/");
}

// Paths whose text gets its line ends doubled or whose page text is recorded.
bool TextPath(const std::string& savePath) {
    for (std::string_view ext : {".htm", ".php", ".shtm", ".asp", ".txt"})
        if (Contains(savePath, ext)) return true;
    return Contains(LCase(savePath), ".tx") || Contains(LCase(savePath), ".htm");
}

// The body as the header strip must leave it: after the first blank line,
// or from the fourth character when there is none.
std::string ExpectedBody(const std::string& received) {
    const std::size_t blank = received.find("\r\n\r\n");
    const std::size_t from = blank == std::string::npos ? 3 : blank + 4;
    return from < received.size() ? received.substr(from) : std::string();
}

// A plain address: letters and digits in "/"-separated parts, a ".bin" name.
std::string PlainAddress(const std::string& raw) {
    std::string out = "\\site.com/";
    for (char c : raw.substr(0, 40)) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))
            out += c;
        else if (c == '/' && out.back() != '/')
            out += c;
    }
    if (out.back() == '/') out += 'f';
    return out + ".bin";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::ScratchMirror scratch;
    scratch.Reset();
    fuzz::FuzzInput input(data, size);
    const std::uint8_t choice = input.Byte();
    const bool plain = (choice & 3) == 0;
    std::string address = input.Field();
    if (address.size() > 512) address.resize(512);
    if (plain) address = PlainAddress(address);
    std::string slotHost = choice & 4 ? input.Field() : std::string("www.site.com");
    std::string received = input.Rest();
    if (received.size() > 65536) received.resize(65536);

    scratch.m.pageText = [](const std::string&) { return std::string("text"); };
    std::int32_t filesDone = 0;
    SaveFile(received, address, slotHost, scratch.m, filesDone);

    scratch.CheckNothingOutside();
    if (LowerTrim(received) == "cancel") {
        Check(filesDone == 0, "cancel is not counted");
        Check(scratch.TargetEmpty(), "cancel writes nothing");
        return 0;
    }
    Check(filesDone == 1, "every other save is counted once");

    const std::string& savePath = scratch.vars.SavePath;
    const std::string body = ExpectedBody(received);
    if (TextPath(savePath) || RulesTouch(body)) return 0;
    auto written = scratch.fs.ReadWhole(savePath);
    if (plain) Check(written.has_value(), "a plain address is saved");
    if (written) Check(*written == body + "\r\n", "an untouched body is written byte for byte");
    return 0;
}
