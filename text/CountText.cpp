#include "text/CountText.h"

#include "text/Strings.h"

#ifdef _WIN32
// windows.h must come first.
#include <windows.h>

#include <shlwapi.h>
#else
#include <cmath>
#include <cstdio>
#endif

namespace vantorin {

std::string FormatThousands(std::string_view s) {
    std::string t = LowerTrim(s);
    if (t.size() < 4) return t;
    std::string reversed = ReverseText(t);
    std::string out;
    out.reserve(t.size() + t.size() / 3);
    for (std::size_t pos = 1; pos <= reversed.size(); ++pos) {
        out += reversed[pos - 1];
        if (pos % 3 == 0 && pos < reversed.size()) out += ',';
    }
    return ReverseText(out);
}

#ifdef _WIN32

std::string FormatByteSize(std::int32_t value) {
    // A buffer of 255 blanks; the text is what stands before the first NUL.
    std::string buffer(255, ' ');
    StrFormatByteSizeA(static_cast<DWORD>(value), buffer.data(), 255);
    const std::size_t nul = buffer.find('\0');
    if (nul == std::string::npos || nul == 0) return "";
    return buffer.substr(0, nul);
}

#else

namespace {

// For counts below `limit`: divide, cut to a whole number, scale back to the
// given number of decimals, so the text keeps three significant digits.
struct SizeStep {
    double limit;
    double divisor;
    double normaliser;
    int decimals;
    const char* unit;
};

constexpr double kKB = 1024.0;
constexpr double kMB = kKB * 1024.0;
constexpr double kGB = kMB * 1024.0;

constexpr SizeStep kSteps[] = {
    {10 * kKB, 10.24, 100.0, 2, "KB"},       {100 * kKB, 102.4, 10.0, 1, "KB"},
    {1000 * kKB, 1024.0, 1.0, 0, "KB"},      {10 * kMB, 10485.76, 100.0, 2, "MB"},
    {100 * kMB, 104857.6, 10.0, 1, "MB"},    {1000 * kMB, 1048576.0, 1.0, 0, "MB"},
    {10 * kGB, 10737418.24, 100.0, 2, "GB"},  // the largest 32-bit count is below 10 GB
};

}  // namespace

std::string FormatByteSize(std::int32_t value) {
    const std::uint32_t bytes = static_cast<std::uint32_t>(value);
    if (bytes < 1024) return std::to_string(bytes) + " bytes";
    const SizeStep* step = &kSteps[0];
    while (bytes >= step->limit) ++step;
    // The tiny addend keeps an exact quotient from falling just below itself.
    const double shown =
        std::floor((static_cast<double>(bytes) + 0.00001) / step->divisor) / step->normaliser;
    char text[32];
    std::snprintf(text, sizeof text, "%.*f %s", step->decimals, shown, step->unit);
    return text;
}

#endif

std::string CountOf(std::int64_t n, std::string_view one, std::string_view many) {
    return FormatThousands(std::to_string(n)) + " " + std::string(n == 1 ? one : many);
}

}  // namespace vantorin
