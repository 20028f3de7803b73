#include "engine/Request.h"

#include <gtest/gtest.h>

#include <tuple>

namespace vantorin {
namespace {

// Where an address splits, and the request line it gives: a path is cut at
// 999 characters, and a climbing path is never asked for. (A folder getting
// its "/", and "/index.html" asked as "/", show in the end-to-end requests.)
TEST(Request, SplitsTheAddressAndShapesTheRequestLine) {
    const std::string tail(1200, 'p');
    // Address, host, request line.
    const std::tuple<std::string, std::string, std::string> cases[] = {
        {"www.e.com/v.1/" + tail, "www.e.com",
         "GET " + ("/v.1/" + tail).substr(0, 999) + " HTTP/1.0"},
        {"www.e.com//a.htm", "www.e.com", "GET /a.htm HTTP/1.0"},
        {"www.e.com\\..\\x.htm", "www.e.com\\..\\x.htm", "GET / HTTP/1.0"}};
    for (const auto& [address, host, line] : cases) {
        const HostAndPath split = SplitAddress(address);
        const std::string asked = BuildRequestText(split.host, split.path);
        EXPECT_EQ(split.host, host) << address;
        EXPECT_EQ(asked.substr(0, asked.find("\r\n")), line) << address;
    }
    EXPECT_TRUE(ClimbsAboveRoot("GET /../x HTTP/1.0") && ClimbsAboveRoot("GET \\..\\x HTTP/1.0"));
    EXPECT_EQ(BuildRequestText(" www.e.com/ ", "//"),
              "GET / HTTP/1.0\r\nHost: www.e.com\r\nReferrer: www.e.com\r\n"
              "User-Agent: Internet Explorer 6.01\r\n\r\n");
}

// The size is read from the chunk that holds the header, in a window of 12
// characters from the 16th after "Content-Length:", and kept to 32 bits.
TEST(Request, ReadsTheExpectedSizeFromItsWindowAndCountsWithin32Bits) {
    // Chunk, present, size (-1: none, the earlier one stays).
    const std::tuple<const char*, bool, int> cases[] = {
        {"HTTP/1.0 200 OK\r\nContent-Length: 2048\r\n\r\n", true, 2048},
        {"Content-Length:2048\r\n", true, 48},  // the 16th character is skipped
        {"Content-Length: 2147483647\r\n", true, 2147483647},
        {"Content-Length: 2147483648\r\n", true, -1},
        {"Content-Length:    123456789012", true, 0},  // no line end in the window
        {"Content-Length: abc\r\n", true, 0},
        {"Content-Length: 12\r3\r\n", true, 123},  // a lone CR in the number is dropped
        {"content-length: 5\r\n", false, -1}};
    for (const auto& [chunk, present, size] : cases) {
        const SizeHeader header = ExpectedSizeIn(chunk);
        EXPECT_EQ(std::pair(header.present, header.size.value_or(-1)), std::pair(present, size))
            << chunk;
    }
    // The byte counters keep to 32 bits the same way: a chunk that would pass
    // the largest value is not counted.
    std::int32_t counter = 2147483647 - 4;
    AddSkippingOverflow(counter, 4);  // reaching the largest value is fine
    AddSkippingOverflow(counter, 1);  // passing it is skipped
    EXPECT_EQ(counter, 2147483647);
}

}  // namespace
}  // namespace vantorin
