#include "text/CountText.h"

#include <gtest/gtest.h>

#include <utility>

namespace vantorin {

// No comma before the first group; the text is trimmed and lower-cased first.
TEST(FormatThousands, GroupsInThreesFromTheRight) {
    EXPECT_EQ(FormatThousands("123456") + " " + FormatThousands(" ABCD "), "123,456 a,bcd");
}

// Three significant digits, truncated; a negative count is read as unsigned.
TEST(FormatByteSize, KeepsThreeSignificantDigitsTruncated) {
    const std::pair<std::int32_t, const char*> cases[] = {
        {0, "0 bytes"},          {1023, "1023 bytes"},    {1024, "1.00 KB"},
        {10239, "9.99 KB"},      {10240, "10.0 KB"},      {102399, "99.9 KB"},
        {123456, "120 KB"},      {1023999, "999 KB"},     {1024000, "0.97 MB"},
        {1048576, "1.00 MB"},    {104857599, "99.9 MB"},  {104857600, "100 MB"},
        {1073741824, "1.00 GB"}, {2147483647, "1.99 GB"}, {-1, "3.99 GB"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(FormatByteSize(value), text) << value;
}

}  // namespace vantorin
