#include "platform/Text.h"

#include <gtest/gtest.h>

#include <limits>

namespace vantorin {
namespace {

TEST(Replace, OnePassLeftToRightNeverRescansItsOutput) {
    struct Case {
        const char* text;
        const char* find;
        const char* with;
        const char* expected;
    } cases[] = {
        {"///", "//", "/", "//"},
        {"____", "__", "_", "__"},
        {"aaa", "a", "aa", "aaaaaa"},
        {"abc", "", "x", "abc"},
        {"", "a", "b", ""},
        {"http://http://x", "http://http://", "http://", "http://x"},
        {"a\r\nb", "\r\n", "", "ab"},
        {"xyx", "x", "", "y"},
        {"abab", "ab", "ba", "baba"},
        {"x\ny\nz\n", "\n", "\r\n", "x\r\ny\r\nz\r\n"},
        {"aaaa", "aa", "a.a", "a.aa.a"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Replace(c.text, c.find, c.with), c.expected) << c.text << " / " << c.find;
        // Growing in place (room reserved) and into a new buffer.
        for (const std::size_t room : {std::size_t{0}, std::size_t{64}}) {
            std::string inPlace = c.text;
            inPlace.reserve(room);
            ReplaceIn(inPlace, c.find, c.with);
            EXPECT_EQ(inPlace, c.expected) << c.text << " / " << c.find << " room " << room;
        }
    }
}

TEST(Positions, InStrMidLeftRightNeverThrow) {
    EXPECT_EQ(InStr("abcabc", "c"), 3u);
    EXPECT_EQ(InStr("abcabc", "c", 4), 6u);
    EXPECT_EQ(InStr("abc", "x"), 0u);
    EXPECT_EQ(InStr("abc", "a", 0), 0u);
    EXPECT_EQ(InStr("abc", "a", 9), 0u);
    EXPECT_EQ(InStr("", ""), 1u);

    EXPECT_EQ(Mid("abcdef", 3), "cdef");
    EXPECT_EQ(Mid("abcdef", 3, 2), "cd");
    EXPECT_EQ(Mid("abcdef", 1, 2), "ab");
    EXPECT_EQ(Mid("abcdef", 6, 10), "f");
    EXPECT_EQ(Mid("abcdef", 7), "");
    EXPECT_EQ(Mid("abcdef", 0), "");
    EXPECT_EQ(Mid("abcdef", -5, 2), "");
    EXPECT_EQ(Mid("abcdef", 2, -1), "bcdef");  // no length: to the end
    EXPECT_EQ(Left("abc", 7), "abc");
    EXPECT_EQ(Left("abc", -1), "");
    EXPECT_EQ(Right("abc", 2), "bc");
    EXPECT_EQ(Right("abc", 9), "abc");
    EXPECT_EQ(Right("abc", 0), "");
}

TEST(Trim, RemovesBlanksOnlyNeverTabsOrLineEnds) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_EQ(Trim(" \r\n "), "\r\n");
    EXPECT_EQ(Trim("     "), "");
    EXPECT_EQ(Trim(""), "");
}

TEST(CaseMapping, CoversTheSingleByteCodePage) {
    EXPECT_EQ(LCase("HTTP://Site.COM/X"), "http://site.com/x");
    // The same in Windows-1252 bytes: letters above 127 map too, others stay.
    std::string upper = "\xC0\xC9\xDE\x8A\x8C\x8E\x9F\xD7\xDF";
    std::string lower = "\xE0\xE9\xFE\x9A\x9C\x9E\xFF\xD7\xDF";
    EXPECT_EQ(LCase(upper), lower);
    EXPECT_EQ(UCase(lower), std::string("\xC0\xC9\xDE\x8A\x8C\x8E\x9F\xD7\xDF"));
    EXPECT_EQ(UCase("az@[`{\xF7"), "AZ@[`{\xF7");
    EXPECT_EQ(LCase("AZ@[`{\xF7"), "az@[`{\xF7");
    EXPECT_EQ(LCase(std::string("A\0B", 3)), std::string("a\0b", 3));
}

TEST(SmallHelpers, ReverseLowerTrimAndLastChar) {
    EXPECT_EQ(ReverseText("abc/"), "/cba");
    EXPECT_EQ(ReverseText(""), "");
    EXPECT_EQ(LowerTrim("  .GIF "), ".gif");
    EXPECT_EQ(LastChar("   "), "");
    EXPECT_EQ(LastChar(""), "");
    EXPECT_EQ(LastChar("abc/ "), " ");  // of the text as given, not trimmed
    EXPECT_EQ(LastChar("a/"), "/");
}

TEST(Numbers, LeadingValueNumericTestAndEvenRounding) {
    struct Case {
        const char* text;
        double value;
        bool numeric;
    } cases[] = {
        {"12", 12, true},    {" 12 ", 12, true}, {"12 sec", 12, false}, {"abc", 0, false},
        {"", 0, false},      {"-3", -3, true},   {"2.5", 2.5, true},    {"1e3", 1000, true},
        {"0", 0, true},      {"24", 24, true},   {"+7", 7, true},       {".5", 0.5, true},
        {"1 2", 12, true},   {"4x", 4, false},   {"-", 0, false},       {"  ", 0, false},
        {"1E3", 1000, true}, {"2d2", 200, true}, {"1e+2", 100, true},   {"5D-1", 0.5, true},
        {"1e", 1, false},    {"e5", 0, false},   {"- 3", -3, true},     {"\t12\r\n", 12, true},
        {"1e400", 0, false},
    };
    for (const auto& c : cases) {
        EXPECT_DOUBLE_EQ(Val(c.text), c.value) << c.text;
        EXPECT_EQ(IsNumeric(c.text), c.numeric) << c.text;
    }
    EXPECT_DOUBLE_EQ(Val(std::string_view("2.55", 3)), 2.5);  // a view ends where it ends
    EXPECT_DOUBLE_EQ(Val(std::string_view("2e55", 3)), 2e5);  // its exponent too
    EXPECT_EQ(RoundHalfEven(2.5), 2);
    EXPECT_EQ(RoundHalfEven(3.5), 4);
    EXPECT_EQ(RoundHalfEven(-2.5), -2);
    EXPECT_EQ(RoundHalfEven(2.4999), 2);
    EXPECT_EQ(RoundHalfEven(12500.5), 12500);
    EXPECT_EQ(RoundHalfEven(1e300), 9200000000000000000LL);
    EXPECT_EQ(RoundHalfEven(-1e300), -9200000000000000000LL);
    EXPECT_EQ(RoundHalfEven(std::numeric_limits<double>::infinity()), 0);
}

TEST(GetToken, IndexZeroWideSeparatorAndCounterLimit) {
    // Joined fields rebuilding the text are checked by the address fuzz target.
    EXPECT_EQ(GetToken("a*b", 0, "*"), "");
    EXPECT_EQ(GetToken(" a*b ", 2, "*"), "b");
    EXPECT_EQ(GetToken("ab", 1, "*") + GetToken("ab", 2, "*") + GetToken("ab", 1, ""), "abab");
    EXPECT_EQ(GetToken("a*b", 1, "**"), "a*b");  // a wide separator never ends a field
    std::string many;
    for (int i = 0; i < 40000; ++i) many += "x*";
    EXPECT_EQ(GetToken(many, 32767, "*"), "x");
    EXPECT_EQ(GetToken(many, 32768, "*"), "");  // the counter would pass 32767
}

}  // namespace
}  // namespace vantorin
