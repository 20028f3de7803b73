// The engine's handling of received chunks on one slot, the chunks hostile:
// the byte counters add up what was fed (an add that would pass the 32-bit
// limit is skipped), the expected size changes only on a chunk that names it
// and reads a well-formed value right, the response holds every byte until
// the server closes, and the finished job is saved once, inside the target folder.
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "engine/CrawlEngine.h"
#include "platform/Text.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/ScratchMirror.h"
#include "tests/support/EngineFakes.h"
#include "tests/support/ScriptedDialogs.h"

using namespace vantorin;
using vantorin::fuzz::Check;
using vantorin::testing::FakeSocket;

namespace {

constexpr std::int32_t kMax = std::numeric_limits<std::int32_t>::max();

std::int32_t Added(std::int32_t counter, std::size_t amount) {
    const long long sum = static_cast<long long>(counter) + static_cast<long long>(amount);
    return sum <= kMax ? static_cast<std::int32_t>(sum) : counter;
}

// The value of a well-formed first "Content-Length: N" CR LF with N of at most
// ten digits and within 32 bits, or nothing.
std::optional<std::int32_t> WellFormedLength(const std::string& chunk) {
    const std::size_t at = chunk.find("Content-Length:");
    if (at == std::string::npos || chunk.compare(at + 15, 1, " ") != 0) return std::nullopt;
    std::size_t end = at + 16;
    while (end < chunk.size() && chunk[end] >= '0' && chunk[end] <= '9') ++end;
    const std::size_t digits = end - (at + 16);
    if (digits == 0 || digits > 10 || chunk.compare(end, 2, "\r\n") != 0) return std::nullopt;
    const long long value = std::stoll(chunk.substr(at + 16, digits));
    if (value > kMax) return std::nullopt;
    return static_cast<std::int32_t>(value);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::ScratchMirror scratch;
    scratch.Reset();
    fuzz::FuzzInput input(data, size);
    const int slot = 1 + input.Byte() % kSlotCount;
    const std::uint8_t flags = input.Byte();

    testing::ScriptedDialogs dialogs;
    testing::RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<testing::FakeTimer*> timers;
    CrawlEngine engine(scratch.vars, scratch.fs,
                       {dialogs, shell, PageTextReader(), [] {}, testing::RecordingSockets(sockets),
                        testing::RecordingTimers(timers)});
    CrawlState& state = engine.State();
    state.SetCommand1Enabled(false);  // a crawl is running
    FakeSocket* sock = sockets[static_cast<std::size_t>(slot - 1)];

    ConnectionSlot& s = engine.Slot(slot);
    s.Host = "site.com";
    s.Path = "/dir/page.html";
    if (flags & 4) s.Path = "/" + input.Field().substr(0, 200);
    s.Url = s.Host + s.Path;
    sock->state = kSockConnected;
    if (flags & 1) {
        // Counters near the 32-bit limit, so the skipped add is reached.
        s.BytesReceived = kMax - input.Byte() * 64;
        state.TotalBytes = kMax - input.Byte() * 64;
    }

    std::string fed;
    for (int chunks = 0; chunks < 64 && !input.AtEnd(); ++chunks) {
        const std::size_t high = input.Byte();
        const std::size_t length = high << 8 | input.Byte();
        const std::string chunk = input.Bytes(length);
        const bool closes = (flags & 2) && input.AtEnd();
        const std::int32_t received = s.BytesReceived, total = state.TotalBytes;
        const std::int32_t length0 = s.ContentLength;

        sock->unread = chunk;
        if (closes) sock->state = kSockClosing;
        engine.Sock_DataArrival(slot);
        fed += chunk;

        Check(s.BytesReceived == Added(received, chunk.size()), "the slot counts what it got");
        Check(state.TotalBytes == Added(total, chunk.size()), "the total counts what came");
        if (!Contains(chunk, "Content-Length:")) {
            Check(s.ContentLength == length0, "the expected size changes only when named");
        } else if (auto expected = WellFormedLength(chunk)) {
            Check(s.ContentLength == *expected, "a well-formed expected size is read");
        }
        if (closes) {
            Check(sock->state == kSockClosed, "a finished job frees its slot");
            Check(state.FilesDone == (LowerTrim(fed) == "cancel" ? 0 : 1),
                  "a finished job is saved once");
        } else {
            Check(s.Response == fed, "the response holds every byte until the close");
            Check(state.FilesDone == 0, "nothing is saved before the close");
        }
    }
    scratch.CheckNothingOutside();
    return 0;
}
