#include "output/Records.h"

#include "output/LocalPath.h"
#include "platform/Text.h"

namespace vantorin {

void AppendToFile(const std::string& text, std::string& path, Mirror& m) {
    MakeLocalPath(path, m.vars, m.fs);
    m.fs.AppendLine(path, text);
}

std::string GetPageText(const std::string& path, Mirror& m) {
    // The page is asked for before the yields; `path` may be SavePath itself,
    // which a handler running inside them can overwrite.
    const std::string file = path;
    // The page is given four turns of the event loop to load, no other wait;
    // kept as designed, so other handlers may run in the middle of a save.
    for (int i = 0; i < 4; ++i) RunPending(m.yield);
    std::string text = m.pageText ? m.pageText(file) : std::string();
    ReplaceIn(text, "\r\n", " ");
    ReplaceIn(text, "\n", " ");
    ReplaceIn(text, "\r", " ");
    // Two passes only: runs of up to four blanks fold to one, longer runs keep more.
    ReplaceIn(text, "  ", " ");
    ReplaceIn(text, "  ", " ");
    return text;
}

void RecordSearchText(const std::string& text, std::string_view slotHost, const std::string& path,
                      Mirror& m) {
    const std::string& target = m.vars.TargetFolder;
    m.fs.CreateFolder(target + "\\_SearchData");
    std::string file = target + "\\_SearchData\\" + Replace(slotHost, "www.", "") + ".txt";
    std::string page = LowerTrim(Mid(path, static_cast<long long>(target.size()) + 1));
    std::string key = ":" + page + ":";
    // Replaced, not appended: only an immediate repeat of a page is suppressed.
    if (Contains(m.vars.LastSearchPage, key)) return;
    m.vars.LastSearchPage = key;
    m.fs.AppendLine(file, "! " + page);
    m.fs.AppendLine(file, text);
}

void RemoveTempFiles(Mirror& m) {
    for (int n = 1;; ++n) {
        std::string folder = Replace(GetToken(m.vars.MadeFolders, n, "*"), "/", "\\");
        // Short fields such as a drive root are never swept.
        if (folder.size() >= 5) {
            if (folder.back() != '\\') folder += '\\';
            m.fs.DeleteMatching(folder + "*.tmp");
        }
        if (GetToken(m.vars.MadeFolders, n, "*").empty()) break;
    }
}

}  // namespace vantorin
