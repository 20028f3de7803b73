#include "text/Strings.h"

#include <cctype>
#include <cmath>
#include <string>
#include <vector>

namespace vantorin {

std::string Replace(std::string_view s, std::string_view find, std::string_view with) {
    std::string out(s);
    ReplaceIn(out, find, with);
    return out;
}

void ReplaceIn(std::string& s, std::string_view find, std::string_view with) {
    if (find.empty()) return;
    std::size_t pos = s.find(find);
    if (pos == std::string::npos) return;
    if (with.size() <= find.size()) {
        // Never longer: the text is rewritten where it stands, front to back;
        // the search goes on in the part not yet written over.
        char* text = s.data();
        std::size_t read = pos;
        std::size_t write = pos;
        while (pos != std::string::npos) {
            std::char_traits<char>::move(text + write, text + read, pos - read);
            write += pos - read;
            std::char_traits<char>::copy(text + write, with.data(), with.size());
            write += with.size();
            read = pos + find.size();
            pos = s.find(find, read);
        }
        std::char_traits<char>::move(text + write, text + read, s.size() - read);
        s.resize(write + s.size() - read);
        return;
    }
    // Longer: the matches are found first, so the text grows once, in place
    // when its buffer has the room (a page's save reserves it) and into one
    // buffer of the exact size otherwise.
    std::vector<std::size_t> at;
    for (; pos != std::string::npos; pos = s.find(find, pos + find.size())) at.push_back(pos);
    const std::size_t grown = s.size() + at.size() * (with.size() - find.size());
    if (grown <= s.capacity()) {
        std::size_t end = s.size();
        s.resize(grown);
        std::size_t write = grown;
        for (auto match = at.rbegin(); match != at.rend(); ++match) {
            const std::size_t tail = end - (*match + find.size());
            write -= tail;
            std::char_traits<char>::move(&s[write], &s[*match + find.size()], tail);
            write -= with.size();
            std::char_traits<char>::copy(&s[write], with.data(), with.size());
            end = *match;
        }
        return;
    }
    std::string out;
    out.reserve(grown);
    std::size_t from = 0;
    for (std::size_t match : at) {
        out.append(s, from, match - from);
        out.append(with);
        from = match + find.size();
    }
    out.append(s, from, std::string::npos);
    s.swap(out);
}

std::size_t InStr(std::string_view s, std::string_view find, std::size_t start) {
    if (start < 1 || start > s.size() + 1) return 0;
    std::size_t pos = s.find(find, start - 1);
    return pos == std::string_view::npos ? 0 : pos + 1;
}

std::string Mid(std::string_view s, long long start, long long length) {
    if (start < 1 || static_cast<unsigned long long>(start) > s.size()) return {};
    std::size_t from = static_cast<std::size_t>(start - 1);
    if (length < 0) return std::string(s.substr(from));
    return std::string(s.substr(from, static_cast<std::size_t>(length)));
}

std::string Left(std::string_view s, long long n) {
    if (n <= 0) return {};
    return std::string(s.substr(0, static_cast<std::size_t>(n)));
}

std::string Right(std::string_view s, long long n) {
    if (n <= 0) return {};
    std::size_t k = static_cast<std::size_t>(n);
    return k >= s.size() ? std::string(s) : std::string(s.substr(s.size() - k));
}

std::string Trim(std::string_view s) {
    std::size_t b = s.find_first_not_of(' ');
    if (b == std::string_view::npos) return {};
    std::size_t e = s.find_last_not_of(' ');
    return std::string(s.substr(b, e - b + 1));
}

char LowerChar(char c) {
    auto u = static_cast<unsigned char>(c);
    if (u >= 'A' && u <= 'Z') return static_cast<char>(u + 32);
    if (u >= 0xC0 && u <= 0xDE && u != 0xD7) return static_cast<char>(u + 32);
    switch (u) {
        case 0x8A:
            return static_cast<char>(0x9A);
        case 0x8C:
            return static_cast<char>(0x9C);
        case 0x8E:
            return static_cast<char>(0x9E);
        case 0x9F:
            return static_cast<char>(0xFF);
        default:
            return c;
    }
}

char UpperChar(char c) {
    auto u = static_cast<unsigned char>(c);
    if (u >= 'a' && u <= 'z') return static_cast<char>(u - 32);
    if (u >= 0xE0 && u <= 0xFE && u != 0xF7) return static_cast<char>(u - 32);
    switch (u) {
        case 0x9A:
            return static_cast<char>(0x8A);
        case 0x9C:
            return static_cast<char>(0x8C);
        case 0x9E:
            return static_cast<char>(0x8E);
        case 0xFF:
            return static_cast<char>(0x9F);
        default:
            return c;
    }
}

std::string LCase(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = LowerChar(c);
    return out;
}

std::string UCase(std::string_view s) {
    std::string out(s);
    for (char& c : out) c = UpperChar(c);
    return out;
}

std::string ReverseText(std::string_view s) {
    return std::string(s.rbegin(), s.rend());
}

std::string LowerTrim(std::string_view s) {
    return Trim(LCase(s));
}

std::string LastChar(std::string_view s) {
    if (Trim(s).empty()) return {};
    return std::string(1, s.back());
}

namespace {

bool IsSkippedBlank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Reads sign, digits, fraction and exponent from `i`, skipping blanks between
// them as a leading-number reader does. Returns the number of digits read.
int ReadNumber(std::string_view s, std::size_t& i, double& value) {
    while (i < s.size() && IsSkippedBlank(s[i])) ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == '+' || s[i] == '-')) {
        negative = s[i] == '-';
        ++i;  // blanks after the sign are skipped with the digits'
    }
    int digits = 0;
    std::string text;
    while (i < s.size() &&
           (std::isdigit(static_cast<unsigned char>(s[i])) || IsSkippedBlank(s[i]))) {
        if (!IsSkippedBlank(s[i])) {
            text += s[i];
            ++digits;
        }
        ++i;
    }
    if (i < s.size() && s[i] == '.') {
        text += '.';
        ++i;
        while (i < s.size() &&
               (std::isdigit(static_cast<unsigned char>(s[i])) || IsSkippedBlank(s[i]))) {
            if (!IsSkippedBlank(s[i])) {
                text += s[i];
                ++digits;
            }
            ++i;
        }
    }
    if (digits > 0 && i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exp = "e";
        if (j < s.size() && (s[j] == '+' || s[j] == '-')) exp += s[j++];
        bool any = false;
        while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) {
            exp += s[j++];
            any = true;
        }
        if (any) {
            text += exp;
            i = j;
        }
    }
    value = digits > 0 ? std::strtod(text.c_str(), nullptr) : 0.0;
    if (negative) value = -value;
    return digits;
}

}  // namespace

double Val(std::string_view s) {
    std::size_t i = 0;
    double v = 0;
    ReadNumber(s, i, v);
    return std::isfinite(v) ? v : 0.0;
}

bool IsNumeric(std::string_view s) {
    std::size_t i = 0;
    double v = 0;
    if (ReadNumber(s, i, v) == 0) return false;
    while (i < s.size() && IsSkippedBlank(s[i])) ++i;
    return i == s.size() && std::isfinite(v);
}

long long RoundHalfEven(double v) {
    if (!std::isfinite(v)) return 0;
    double r = std::nearbyint(v);  // default rounding mode: to nearest, ties to even
    if (r >= 9.2e18) return 9200000000000000000LL;
    if (r <= -9.2e18) return -9200000000000000000LL;
    return static_cast<long long>(r);
}

std::string GetToken(std::string_view text, int index, std::string_view separator) {
    std::string t = Trim(text);
    if (separator.empty() || !Contains(t, separator)) return index == 1 ? t : std::string();
    // The walk compares one character with the separator, so a separator of
    // more than one character never ends a field.
    bool single = separator.size() == 1;
    int counter = 1;
    std::string field;
    for (char c : t) {
        if (single && c == separator.front()) {
            if (counter == index) return field;
            if (counter == 32767) return {};  // 16-bit overflow ends the routine
            ++counter;
            field.clear();
        } else {
            field += c;
        }
    }
    return counter == index ? field : std::string();
}

}  // namespace vantorin
