#include "output/Records.h"

#include "output/LocalPath.h"
#include "text/Strings.h"

namespace vantorin {

bool AppendToFile(const std::string& text, std::string_view path, Mirror& m) {
    return m.files.AppendLine(MakeLocalPath(path, m.files, m.madeFolders), text);
}

Task<std::string> GetPageText(std::string path, Mirror& m) {
    // No other wait: whatever has loaded after four turns is read.
    for (int i = 0; i < 4; ++i) co_await NextTurn{m.loop};
    std::string text = m.pageText ? m.pageText(path) : std::string();
    ReplaceIn(text, "\r\n", " ");
    ReplaceIn(text, "\n", " ");
    ReplaceIn(text, "\r", " ");
    // Two passes only: runs of up to four blanks fold to one, longer runs keep more.
    ReplaceIn(text, "  ", " ");
    ReplaceIn(text, "  ", " ");
    co_return text;
}

void RecordSearchText(const std::string& text, std::string_view host, const std::string& path,
                      Mirror& m) {
    const std::string& target = m.targetFolder;
    m.files.CreateFolder(target + "\\_SearchData");
    const std::string file = target + "\\_SearchData\\" + Replace(host, "www.", "") + ".txt";
    const std::string page = LowerTrim(Mid(path, static_cast<long long>(target.size()) + 1));
    const std::string key = ":" + page + ":";
    // Replaced, not appended: only an immediate repeat of a page is suppressed.
    if (Contains(m.lastSearchPage, key)) return;
    m.lastSearchPage = key;
    m.files.AppendLine(file, "! " + page);
    m.files.AppendLine(file, text);
}

void RemoveTempFiles(Mirror& m) {
    for (int n = 1;; ++n) {
        std::string folder = Replace(GetToken(m.madeFolders, n, "*"), "/", "\\");
        // Short fields such as a drive root are never swept.
        if (folder.size() >= 5) {
            if (folder.back() != '\\') folder += '\\';
            m.files.DeleteMatching(folder + "*.tmp");
        }
        if (GetToken(m.madeFolders, n, "*").empty()) break;
    }
}

}  // namespace vantorin
