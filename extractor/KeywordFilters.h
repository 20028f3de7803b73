// The keyword filters: up to 100 keywords, loaded from program folder +
// "\filters.txt" when the program starts; a link holding any of them is not
// fetched.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/FileSystem.h"

namespace vantorin {

std::string FiltersPath(const FileSystem& fs);

class KeywordFilters {
public:
    // Every non-blank line, trimmed, in file order. A missing file, or a
    // 101st keyword, leaves no keyword at all: the limit is all-or-nothing.
    void Load(const FileSystem& fs);
    // The keywords in order (what the filter dialog shows).
    std::vector<std::string> List() const;
    // The list becomes the keywords (with the loader's limit, so the running
    // program holds what the next start will load) and is written to the
    // file, one keyword per line.
    void Save(const std::vector<std::string>& list, FileSystem& fs);
    // True when a keyword, lower-cased and trimmed, occurs in the link,
    // lower-cased and trimmed.
    bool Matches(std::string_view link) const;

private:
    // Fills from the first entry; false (and nothing kept) past the 100th.
    bool Fill(const std::vector<std::string>& lines);

    std::array<std::string, 100> keywords_{};  // empty entries are unused
};

// True when an item equals the keyword, both lower-cased and trimmed.
bool FilterExists(std::string_view keyword, const std::vector<std::string>& list);

}  // namespace vantorin
