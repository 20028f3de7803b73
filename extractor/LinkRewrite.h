// The scanner's text passes: every known link spelling becomes "href=", double
// quotes become single ones, line ends go, and a meta refresh becomes a link.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vantorin {

// The spellings rewritten to "href=", in the order they are applied. The order
// matters: an earlier row can consume a later row's pattern ("href = x"
// becomes "href= x" by the first row), and the blank-led "src" rows consume
// their blank ("img src=a" becomes "imghref=a").
// clang-format off
inline constexpr std::array<std::string_view, 40> kLinkSpellings = {
    "href =", "href = ", "href=", "HREF=",                                  // 1-4
    "HREF = ", "HREF =", "HREF= ", "hRef=",                                 // 5-8
    "hRef = ", "hRef =", "hRef= ", "Href=",                                 // 9-12
    "Href = ", "Href =", "Href= ", "Href= ",                                // 13-16
    "hREF=", "hREF = ", "hREF =", "hREF= ",                                 // 17-20
    "background =", "background=", "background = ", "background= ",        // 21-24
    "BACKGROUND =", "BACKGROUND=", "BACKGROUND = ", "BACKGROUND= ",        // 25-28
    "BackGround =", "BackGround=", "BackGround = ", "BackGround= ",        // 29-32
    " SRC=", " src=", " SRC =", " src =",                                   // 33-36
    " SRC = ", " src = ", " SRC= ", " src= ",                               // 37-40
};
// clang-format on

// The meta refresh spellings, each turned into the start of an absolute link.
inline constexpr std::array<std::string_view, 4> kRefreshSpellings = {
    "; url=", ";url=", "; URL=", ";URL="};
inline constexpr std::string_view kRefreshLink = "a href='http://";

// The page as the scanner walks it: the result of replacing every spelling's
// pattern everywhere, one row after the other, then every double quote with a
// single one, then removing the line ends, then replacing the refresh spellings.
std::string RewriteForScan(std::string_view text);

}  // namespace vantorin
