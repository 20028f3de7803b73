#include "extractor/KeywordFilters.h"

#include "text/Strings.h"

namespace vantorin {

std::string FiltersPath(const FileSystem& fs) {
    return fs.ProgramFolder() + "\\filters.txt";
}

bool KeywordFilters::Fill(const std::vector<std::string>& lines) {
    keywords_.fill({});
    std::size_t count = 0;
    for (const auto& line : lines) {
        std::string keyword = Trim(line);
        if (keyword.empty()) continue;
        if (count == keywords_.size()) {
            keywords_.fill({});
            return false;
        }
        keywords_[count++] = std::move(keyword);
    }
    return true;
}

void KeywordFilters::Load(const FileSystem& fs) {
    const auto lines = fs.ReadLines(FiltersPath(fs));
    if (!lines) {
        keywords_.fill({});
        return;
    }
    Fill(*lines);
}

std::vector<std::string> KeywordFilters::List() const {
    std::vector<std::string> list;
    for (const auto& keyword : keywords_)
        if (!keyword.empty()) list.push_back(keyword);
    return list;
}

void KeywordFilters::Save(const std::vector<std::string>& list, FileSystem& fs) {
    Fill(list);
    std::string text;
    for (const auto& item : list) {
        text += item;
        text += "\r\n";
    }
    fs.WriteWhole(FiltersPath(fs), text);
}

bool KeywordFilters::Matches(std::string_view link) const {
    const std::string lowered = LowerTrim(link);
    for (const auto& keyword : keywords_) {
        const std::string word = LowerTrim(keyword);
        if (!word.empty() && Contains(lowered, word)) return true;
    }
    return false;
}

bool FilterExists(std::string_view keyword, const std::vector<std::string>& list) {
    const std::string wanted = LowerTrim(keyword);
    for (const auto& item : list)
        if (LowerTrim(item) == wanted) return true;
    return false;
}

}  // namespace vantorin
