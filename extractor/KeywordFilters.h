// The keyword filters: KeywordFilters 1..100 and the file
// program folder + "\filters.txt".
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "output/CrawlVariables.h"
#include "platform/FileSystem.h"

namespace vantorin {

std::string FiltersPath(const FileSystem& fs);

void ClearKeywordFilters(KeywordFilterArray& filters);
// Every non-blank line, trimmed, from index 1 upwards. A missing file, or a
// 101st keyword, leaves all 100 entries empty: the limit is all-or-nothing.
void LoadKeywordFilters(KeywordFilterArray& filters, const FileSystem& fs);
// The non-empty entries in index order (what the filter dialog shows).
std::vector<std::string> KeywordFilterList(const KeywordFilterArray& filters);
// True when an item equals the keyword, both lower-cased and trimmed.
bool FilterExists(std::string_view keyword, const std::vector<std::string>& list);
// The list becomes the new KeywordFilters (with the loader's limit, so the
// running program holds what the next start will load) and is written to the
// file, one keyword per line.
void SaveKeywordFilters(const std::vector<std::string>& list, KeywordFilterArray& filters,
                        FileSystem& fs);

}  // namespace vantorin
