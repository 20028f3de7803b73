// The literal string toolkit every rule of the crawl is written in.
// Text is bytes: one character per byte, positions counted from 1, no Unicode.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantorin {

// Every occurrence of `find` replaced by `with`, left to right in one pass: the
// output is never rescanned, so "///" with "//" -> "/" gives "//". An empty
// pattern changes nothing.
std::string Replace(std::string_view s, std::string_view find, std::string_view with);
// The same, in place. Leaves `s` untouched (no copy) when the pattern does
// not occur.
void ReplaceIn(std::string& s, std::string_view find, std::string_view with);

// 1-based position of `find` in `s` at or after `start`; 0 when absent. An empty
// pattern is found at `start` when start is within the text (or just past it).
std::size_t InStr(std::string_view s, std::string_view find, std::size_t start = 1);
inline bool Contains(std::string_view s, std::string_view find) {
    return s.find(find) != std::string_view::npos;
}

// Substrings that never throw: a start before 1 or past the end, or a negative
// length, gives "". Where a rule says such a step fails, the caller checks first.
std::string Mid(std::string_view s, long long start, long long length = -1);
std::string Left(std::string_view s, long long n);
std::string Right(std::string_view s, long long n);
inline bool StartsWith(std::string_view s, std::string_view p) {
    return s.substr(0, p.size()) == p;
}

// Trim removes blanks (code 32) only, never tabs or line ends.
std::string Trim(std::string_view s);

// Case mapping in the single-byte code page (Windows-1252 letters included).
char LowerChar(char c);
char UpperChar(char c);
std::string LCase(std::string_view s);
std::string UCase(std::string_view s);

// The characters in reverse order.
std::string ReverseText(std::string_view s);
// Lower-case, then Trim.
std::string LowerTrim(std::string_view s);
// "" when Trim(s) is empty; otherwise the last character of s as given.
std::string LastChar(std::string_view s);

// Field `index` (from 1) of the trimmed text split at `separator`; empty
// fields count. "" when there is no such field, and when the field counter
// would pass the 16-bit limit of 32767.
std::string GetToken(std::string_view text, int index, std::string_view separator);

// The leading number of a text as a decimal (blanks skipped, "12 sec" -> 12,
// "abc" -> 0); the value of a text read as a number.
double Val(std::string_view s);
// True when the whole text, blanks around it allowed, reads as one number.
bool IsNumeric(std::string_view s);
// Nearest whole number, an exact half to the even neighbour (2.5 -> 2, 3.5 -> 4).
long long RoundHalfEven(double v);

}  // namespace vantorin
