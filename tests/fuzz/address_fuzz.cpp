// Address and path rules: they must end on any input and keep their promises.
#include <string>

#include "extractor/AddressRules.h"
#include "output/LocalPath.h"
#include "platform/NumberText.h"
#include "platform/Text.h"
#include "tests/fuzz/FuzzInput.h"

using namespace vantorin;
using vantorin::fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input(data, size);
    std::uint8_t choice = input.Byte();
    std::string s = input.Rest();
    if (s.size() > 4096) s.resize(4096);

    std::string resolved = ResolveDotDot(s);
    Check(resolved.find("/../") == std::string::npos, "ResolveDotDot leaves no /../");
    Check(resolved.size() <= s.size(), "ResolveDotDot never grows the text");

    std::string stripped = StripHttp(s);
    Check(stripped.find('\\') == std::string::npos, "StripHttp leaves no backslash");

    std::string pathPart = UrlToPathPart(s);
    Check(pathPart.find('/') == std::string::npos, "UrlToPathPart leaves no slash");

    std::string collapsed = CollapseSlashes(s);
    Check(collapsed.substr(0, 7) == s.substr(0, 7), "CollapseSlashes keeps its head");
    Check(collapsed.size() <= s.size(), "CollapseSlashes never grows the text");

    std::string cleaned = CleanLinkName(s);
    Check(cleaned.find_first_of("*{}|<>?!&") == std::string::npos, "CleanLinkName table");
    Check(CleanFileName(s).find('.') != std::string::npos, "CleanFileName has a dot");

    std::string lowered = LowerTrim(s);
    std::string grouped = FormatThousands(s);
    if (lowered.size() < 4) {
        Check(grouped == lowered, "FormatThousands leaves short texts");
    } else {
        Check(Replace(grouped, ",", "") == Replace(lowered, ",", ""),
              "FormatThousands only adds commas");
        Check(grouped.size() == lowered.size() + (lowered.size() - 1) / 3,
              "FormatThousands adds one comma per three characters");
    }

    // Fields joined by the separator rebuild the trimmed text.
    std::string sep(1, static_cast<char>(choice % 4 == 0 ? '*' : choice));
    std::string trimmed = Trim(s);
    int fields = 1;
    for (char c : trimmed) fields += c == sep[0];
    if (fields <= 32767) {
        std::string joined;
        for (int i = 1; i <= fields; ++i) joined += (i > 1 ? sep : "") + GetToken(s, i, sep);
        Check(joined == trimmed, "GetToken fields rebuild the text");
        Check(GetToken(s, fields + 1, sep).empty(), "GetToken past the last field is empty");
    }

    Check(CutLinkAtDelimiter(s).size() <= s.size(), "CutLinkAtDelimiter is a prefix");
    Check(s.rfind(CutHostAtDelimiter(s), 0) == 0, "CutHostAtDelimiter is a prefix");
    IsTopLevelFile(s, Left(s, choice % 16));
    return 0;
}
