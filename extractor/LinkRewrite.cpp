#include "extractor/LinkRewrite.h"

#include <algorithm>

#include "text/Strings.h"

// The rows are applied as whole-text replacements one after the other, but the
// text is walked only once. That gives the same result because of the shape of
// the rows: every pattern holds exactly one "=", with at most 11 characters
// before it and one after it, and no pattern can overlap a "href=" that an
// earlier row wrote. So each match lies within a few characters of an "=" of
// the original text, and only the short stretches around such "=" need the rows
// at all; the stretches in between are copied as they stand.

namespace vantorin {

namespace {

constexpr std::string_view kHref = "href=";

struct Spelling {
    std::string_view pattern;
    std::size_t equalsAt;  // index of the pattern's "="
    char key;              // the letter before the "=" or before its blank
};

constexpr Spelling MakeSpelling(std::string_view pattern) {
    std::size_t at = pattern.find('=');
    char before = pattern[at - 1];
    return {pattern, at, before == ' ' ? pattern[at - 2] : before};
}

constexpr std::array<Spelling, kLinkSpellings.size()> MakeSpellings() {
    std::array<Spelling, kLinkSpellings.size()> rows{};
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = MakeSpelling(kLinkSpellings[i]);
    return rows;
}

constexpr auto kSpellings = MakeSpellings();

constexpr std::size_t MaxBefore() {
    std::size_t most = 0;
    for (const Spelling& s : kSpellings) most = std::max(most, s.equalsAt);
    return most;
}

constexpr std::size_t MaxAfter() {
    std::size_t most = 0;
    for (const Spelling& s : kSpellings) most = std::max(most, s.pattern.size() - s.equalsAt - 1);
    return most;
}

constexpr std::size_t kBefore = MaxBefore();
constexpr std::size_t kAfter = MaxAfter();

constexpr std::array<bool, 256> MakeKeyTable() {
    std::array<bool, 256> table{};
    for (const Spelling& s : kSpellings) table[static_cast<unsigned char>(s.key)] = true;
    return table;
}

constexpr auto kKeys = MakeKeyTable();

// Characters the second pass acts on; everything else is copied in runs.
constexpr std::array<bool, 256> MakeSpecialTable() {
    std::array<bool, 256> table{};
    table['"'] = table['\r'] = table['\n'] = table['='] = true;
    return table;
}

constexpr auto kSpecial = MakeSpecialTable();

// True when the "=" at `eq` could be the "=" of some row: the letter before it,
// or before a blank before it, ends one of the spelled words.
bool MayBeSpelling(std::string_view text, std::size_t eq) {
    if (eq == 0) return false;
    std::size_t at = eq - 1;
    if (text[at] == ' ') {
        if (at == 0) return false;
        --at;
    }
    return kKeys[static_cast<unsigned char>(text[at])];
}

std::size_t NextCandidate(std::string_view text, std::size_t from) {
    for (std::size_t eq = text.find('=', from); eq != std::string_view::npos;
         eq = text.find('=', eq + 1))
        if (MayBeSpelling(text, eq)) return eq;
    return std::string_view::npos;
}

// The quote, line-end and refresh passes, applied to the text as it is fed in.
// A refresh spelling ends in "=" and holds no other "=", quote or line end, so
// it is recognised at its "=" from what has been written so far.
class ScanTextWriter {
public:
    explicit ScanTextWriter(std::size_t sizeHint) { out_.reserve(sizeHint); }

    void Write(std::string_view part) {
        std::size_t i = 0;
        const std::size_t n = part.size();
        while (i < n) {
            std::size_t run = i;
            while (run < n && !kSpecial[static_cast<unsigned char>(part[run])]) ++run;
            out_.append(part.data() + i, run - i);
            if (run == n) break;
            switch (part[run]) {
                case '"':
                    out_ += '\'';
                    break;
                case '=':
                    out_ += '=';
                    MendRefresh();
                    break;
                default:
                    break;  // CR and LF: the page becomes one line
            }
            i = run + 1;
        }
    }

    std::string Take() { return std::move(out_); }

private:
    void MendRefresh() {
        std::string_view written(out_);
        for (std::string_view spelling : kRefreshSpellings) {
            if (written.ends_with(spelling)) {
                out_.resize(out_.size() - spelling.size());
                out_ += kRefreshLink;
                return;
            }
        }
    }

    std::string out_;
};

// A stretch around one candidate "=": only a row whose pattern sits on that
// "=" can match, and the first such row in table order takes it.
void RewriteAroundOne(std::string_view stretch, std::size_t eq, ScanTextWriter& out) {
    const char before = stretch[eq - 1];
    const char key = before == ' ' && eq >= 2 ? stretch[eq - 2] : before;
    for (const Spelling& s : kSpellings) {
        if (s.key != key || s.equalsAt > eq) continue;
        const std::size_t start = eq - s.equalsAt;
        if (start + s.pattern.size() > stretch.size()) continue;
        if (stretch.substr(start, s.pattern.size()) != s.pattern) continue;
        out.Write(stretch.substr(0, start));
        out.Write(kHref);
        out.Write(stretch.substr(start + s.pattern.size()));
        return;
    }
    out.Write(stretch);
}

// Several candidates close together: the rows in full, on the short stretch.
void RewriteAroundMany(std::string_view stretch, ScanTextWriter& out) {
    std::string s(stretch);
    for (const Spelling& row : kSpellings) ReplaceIn(s, row.pattern, kHref);
    out.Write(s);
}

}  // namespace

std::string RewriteForScan(std::string_view text) {
    ScanTextWriter out(text.size());
    std::size_t written = 0;
    std::size_t eq = NextCandidate(text, 0);
    while (eq != std::string_view::npos) {
        // Every match through this "=" lies in [eq - kBefore, eq + kAfter].
        const std::size_t begin = eq > kBefore ? eq - kBefore : 0;
        std::size_t end = std::min(eq + kAfter + 1, text.size());
        std::size_t count = 1;
        std::size_t next = NextCandidate(text, eq + 1);
        while (next != std::string_view::npos && next < end + kBefore) {
            end = std::min(next + kAfter + 1, text.size());
            ++count;
            next = NextCandidate(text, next + 1);
        }
        out.Write(text.substr(written, begin - written));
        const std::string_view stretch = text.substr(begin, end - begin);
        if (count == 1)
            RewriteAroundOne(stretch, eq - begin, out);
        else
            RewriteAroundMany(stretch, out);
        written = end;
        eq = next;
    }
    out.Write(text.substr(written));
    return out.Take();
}

}  // namespace vantorin
