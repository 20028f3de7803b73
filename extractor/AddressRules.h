// The small literal routines with which addresses are cut, cleaned and
// resolved. They never parse an address; each follows fixed text rules.
// ReverseText, LowerTrim and LastChar live in text/Strings.h.
#pragma once

#include <string>
#include <string_view>

namespace vantorin {

// Backslashes read as slashes; true when the last character is "/".
bool EndsWithSlash(std::string_view s);
// From the last "." to the end, dot included; all of s when it holds no ".".
std::string GetExtension(std::string_view s);
// Trim, drop a leading "http://" (any case), remove "http:\\", "\" -> "/".
std::string StripHttp(std::string_view s);
// The address part of a local path: scheme and every "www." gone, "/" -> "\".
std::string UrlToPathPart(std::string_view s);
// The first 7 characters kept; in the trimmed rest every "//" becomes "/".
std::string CollapseSlashes(std::string_view s);
// Up to the first "#", "'", ">", "}", blank or ";".
std::string CutLinkAtDelimiter(std::string_view s);
// Up to the first "#", "'", ">", "}", "?", blank, "/" or "\".
std::string CutHostAtDelimiter(std::string_view s);
// One "../" removed after the first "/../", the slash before it kept.
std::string CutDotDotOnce(std::string_view s);
// Every "/../" resolved by removing the segment it climbs out of; the removal
// is a plain replace over the whole address, so "/b" also goes from inside
// "/bar".
std::string ResolveDotDot(std::string_view s);

}  // namespace vantorin
