#include "text/CountText.h"

#include <gtest/gtest.h>

#include <utility>

namespace vantorin {

TEST(FormatThousands, GroupsInThreesFromTheRight) {
    const std::pair<const char*, const char*> cases[] = {
        {"123", "123"},           {"1234", "1,234"},   {"123456", "123,456"},
        {"1234567", "1,234,567"}, {" ABCD ", "a,bcd"},
    };
    for (const auto& [count, text] : cases) EXPECT_EQ(FormatThousands(count), text) << count;
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
