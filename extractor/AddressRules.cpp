#include "extractor/AddressRules.h"

#include "text/Scheme.h"
#include "text/Strings.h"

namespace vantorin {

bool EndsWithSlash(std::string_view s) {
    return LastChar(Replace(s, "\\", "/")) == "/";
}

std::string GetExtension(std::string_view s) {
    std::size_t dot = s.rfind('.');
    return dot == std::string_view::npos ? std::string(s) : std::string(s.substr(dot));
}

namespace {

// The walk that stops at the first delimiter; the characters before it.
template <typename IsDelimiter>
std::string CutAt(std::string_view s, IsDelimiter isDelimiter) {
    for (std::size_t i = 0; i < s.size(); ++i)
        if (isDelimiter(s[i])) return std::string(s.substr(0, i));
    return std::string(s);
}

}  // namespace

std::string StripHttp(std::string_view s) {
    std::string t = DropHttp(Trim(s));
    ReplaceIn(t, "http:\\\\", "");
    ReplaceIn(t, "\\", "/");
    return t;
}

std::string UrlToPathPart(std::string_view s) {
    std::string t = DropHttp(Trim(s));
    ReplaceIn(t, "www.", "");
    t = Trim(t);
    ReplaceIn(t, "/", "\\");
    return Trim(t);
}

std::string CollapseSlashes(std::string_view s) {
    std::string head = Left(s, 7);
    std::string rest = Trim(Mid(s, 8));
    ReplaceIn(rest, "//", "/");
    return head + rest;
}

std::string CutLinkAtDelimiter(std::string_view s) {
    return CutAt(s, [](char c) {
        return c == '#' || c == '\'' || c == '>' || c == '}' || c == ' ' || c == ';';
    });
}

std::string CutHostAtDelimiter(std::string_view s) {
    return CutAt(s, [](char c) {
        return c == '#' || c == '\'' || c == '>' || c == '}' || c == '?' || c == ' ' || c == '/' ||
               c == '\\';
    });
}

std::string CutDotDotOnce(std::string_view s) {
    std::string t = Replace(s, "\\", "/");
    std::size_t p = InStr(t, "/../");
    if (p == 0) return t;
    return Left(t, static_cast<long long>(p)) + Mid(t, static_cast<long long>(p + 4));
}

std::string ResolveDotDot(std::string_view s) {
    std::string t = Replace(s, "\\", "/");
    while (Contains(t, "/../")) {
        std::string current, previous;
        bool started = false;
        for (char c : t) {
            if (c == '/') {
                if (started && current == "/..") break;
                if (started) {
                    previous = current;
                    current.clear();
                }
                started = true;
            }
            if (started) current += c;
        }
        // Every pass shortens the text (the segment goes, or else the "../"
        // does), so the loop ends on any input.
        ReplaceIn(t, previous, "");
        t = CutDotDotOnce(t);
    }
    return t;
}

}  // namespace vantorin
