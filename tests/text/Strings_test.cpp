#include "text/Strings.h"

#include <gtest/gtest.h>

#include <limits>
#include <tuple>
#include <utility>

namespace vantorin {

TEST(Replace, OnePassLeftToRightNeverRescansItsOutput) {
    // text, find, with, expected; the line ends' row grows past a short text's room
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"///", "//", "/", "//"},
        {"aaa", "a", "aa", "aaaaaa"},
        {"abc", "", "x", "abc"},
        {"", "a", "b", ""},
        {"xyx", "x", "", "y"},
        {"abab", "ab", "ba", "baba"},
        {"one\ntwo\nthree\n", "\n", "\r\n", "one\r\ntwo\r\nthree\r\n"},
        {"aaaa", "aa", "a.a", "a.aa.a"},
    };
    for (const auto& [text, find, with, expected] : cases) {
        // A copy of just the text's size grows into a new buffer once past its room;
        // with room reserved the text grows in place.
        std::string inPlace = text;
        inPlace.reserve(64);
        ReplaceIn(inPlace, find, with);
        EXPECT_EQ(std::tuple(Replace(text, find, with), inPlace), std::tuple(expected, expected))
            << text << " / " << find;
    }
}

// Positions count from 1 and a position or length out of range gives 0 or ""
// instead of throwing; Mid without a length (or a negative one) runs to the end.
// Trim removes blanks only, never tabs or line ends; LastChar is of the text as
// given, not trimmed.
TEST(Positions, InStrMidLeftRightTrimNeverThrow) {
    EXPECT_EQ(std::make_tuple(InStr("abcabc", "c"), InStr("abcabc", "c", 4), InStr("abc", "x"),
                              InStr("abc", "a", 0), InStr("abc", "a", 9), InStr("", "")),
              std::make_tuple(3u, 6u, 0u, 0u, 0u, 1u));
    const std::pair<std::string, const char*> cases[] = {
        {Trim("     "), ""},        {Right("abc", 2), "bc"},  {Mid("abcdef", 3, 2), "cd"},
        {Left("abc", -1), ""},      {Right("abc", 9), "abc"}, {Mid("abcdef", 1, 2), "ab"},
        {Right("abc", 0), ""},      {Trim("  a b  "), "a b"}, {Mid("abcdef", 6, 10), "f"},
        {LastChar("   "), ""},      {Trim("\ta\t"), "\ta\t"}, {ReverseText("abc/"), "/cba"},
        {LastChar("a/"), "/"},      {Trim(" \r\n "), "\r\n"}, {LowerTrim("  .GIF "), ".gif"},
        {Mid("abcdef", 7), ""},     {LastChar("abc/ "), " "}, {Mid("abcdef", 0), ""},
        {Mid("abcdef", 3), "cdef"}, {Left("abc", 7), "abc"},  {Mid("abcdef", 3, 0), ""},
    };
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(cases[i].first, cases[i].second) << "row " << i;
}

TEST(CaseMapping, CoversTheSingleByteCodePage) {
    // ASCII and Windows-1252 letters map both ways at their bounds; the characters
    // beside them stay.
    const std::string upper = "AZ@[`{\xF7\xC0\xC9\xDE\x8A\x8C\x8E\x9F\xD7\xDF";
    const std::string lower = "az@[`{\xF7\xE0\xE9\xFE\x9A\x9C\x9E\xFF\xD7\xDF";
    EXPECT_EQ(std::tuple(LCase(upper), UCase(lower), LCase(std::string("A\0B", 3))),
              std::tuple(lower, upper, std::string("a\0b", 3)));
}

TEST(Numbers, LeadingValueNumericTestAndEvenRounding) {
    // text, leading value, whether it is a number and nothing else
    const std::tuple<const char*, double, bool> cases[] = {
        {"12", 12, true},   {" 12 ", 12, true},  {"12 sec", 12, false},  {"abc", 0, false},
        {"", 0, false},     {"-3", -3, true},    {"2.5", 2.5, true},     {"1e3", 1000, true},
        {"0", 0, true},     {"+7", 7, true},     {".5", 0.5, true},      {"1 2", 12, true},
        {"4x", 4, false},   {"-", 0, false},     {"  ", 0, false},       {"1E3", 1000, true},
        {"2d2", 200, true}, {"1e+2", 100, true}, {"5D-1", 0.5, true},    {"1e", 1, false},
        {"e5", 0, false},   {"- 3", -3, true},   {"\t12\r\n", 12, true}, {"1e400", 0, false},
    };
    for (auto [text, value, numeric] : cases) {
        EXPECT_DOUBLE_EQ(Val(text), value) << text;
        EXPECT_EQ(IsNumeric(text), numeric) << text;
    }
    EXPECT_DOUBLE_EQ(Val(std::string_view("255", 2)), 25);    // a view ends where it ends
    EXPECT_DOUBLE_EQ(Val(std::string_view("2.55", 3)), 2.5);  // in its fraction too
    EXPECT_DOUBLE_EQ(Val(std::string_view("2e55", 3)), 2e5);  // its exponent too
    const double huge = 1e300, infinity = std::numeric_limits<double>::infinity();
    const long long most = 9200000000000000000LL;
    const std::pair<double, long long> rounded[] = {{2.5, 2},     {3.5, 4},         {-2.5, -2},
                                                    {2.4999, 2},  {12500.5, 12500}, {infinity, 0},
                                                    {huge, most}, {-huge, -most}};
    for (auto [value, expected] : rounded) EXPECT_EQ(RoundHalfEven(value), expected) << value;
}

TEST(GetToken, IndexZeroWideSeparatorAndCounterLimit) {
    EXPECT_EQ(GetToken("a*b", 0, "*") + "|" + GetToken(" a*b ", 2, "*"), "|b");
    EXPECT_EQ(GetToken("ab", 1, "*") + GetToken("ab", 2, "*") + GetToken("ab", 1, ""), "abab");
    EXPECT_EQ(GetToken("a*b", 1, "**"), "a*b");  // a wide separator never ends a field
    const std::string many = Replace(std::string(40000, 'x'), "x", "x*");
    // Past field 32767 the counter would overflow.
    EXPECT_EQ(GetToken(many, 32767, "*") + "|" + GetToken(many, 32768, "*"), "x|");
}

}  // namespace vantorin
