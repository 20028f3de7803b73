#include "extractor/KeywordFilters.h"

#include "platform/Text.h"

namespace vantorin {

namespace {

// Fills from index 1; false (and nothing kept) past the 100th keyword.
bool FillFilters(const std::vector<std::string>& lines, KeywordFilterArray& filters) {
    ClearKeywordFilters(filters);
    std::size_t counter = 0;
    for (const auto& line : lines) {
        std::string keyword = Trim(line);
        if (keyword.empty()) continue;
        if (++counter >= filters.size()) {
            ClearKeywordFilters(filters);
            return false;
        }
        filters[counter] = keyword;
    }
    return true;
}

}  // namespace

std::string FiltersPath(const FileSystem& fs) {
    return fs.ProgramFolder() + "\\filters.txt";
}

void ClearKeywordFilters(KeywordFilterArray& filters) {
    for (auto& f : filters) f.clear();
}

void LoadKeywordFilters(KeywordFilterArray& filters, const FileSystem& fs) {
    auto lines = fs.ReadLines(FiltersPath(fs));
    if (!lines) {
        ClearKeywordFilters(filters);
        return;
    }
    FillFilters(*lines, filters);
}

std::vector<std::string> KeywordFilterList(const KeywordFilterArray& filters) {
    std::vector<std::string> list;
    for (std::size_t i = 1; i < filters.size(); ++i)
        if (!filters[i].empty()) list.push_back(filters[i]);
    return list;
}

bool FilterExists(std::string_view keyword, const std::vector<std::string>& list) {
    std::string wanted = LowerTrim(keyword);
    for (const auto& item : list)
        if (LowerTrim(item) == wanted) return true;
    return false;
}

void SaveKeywordFilters(const std::vector<std::string>& list, KeywordFilterArray& filters,
                        FileSystem& fs) {
    FillFilters(list, filters);
    std::string text;
    for (const auto& item : list) {
        text += item;
        text += "\r\n";
    }
    fs.WriteWhole(FiltersPath(fs), text);
}

}  // namespace vantorin
