#include "output/LocalPath.h"

#include "text/Strings.h"

namespace vantorin {

std::string MakeLocalPath(std::string_view path, FileSystem& fs, std::string& madeFolders) {
    std::string p = Trim(path);
    // Every "www." goes, also inside the target folder's own names: a folder
    // such as "www.mirror" then lies elsewhere, and the guard refuses it.
    ReplaceIn(p, "www.", "");
    // Exact case: after the trim the text starts with the target folder, so
    // this acts only on a bare address.
    if (Left(p, 7) == "http://") p = Trim(Mid(p, 8));
    ReplaceIn(p, "/", "\\");
    ReplaceIn(p, "\\\\", "\\");
    MakeFoldersAlong(p, fs, madeFolders);
    return p;
}

void MakeFoldersAlong(const std::string& path, FileSystem& fs, std::string& madeFolders) {
    std::string made;
    std::string rest = path;
    for (std::size_t cut = rest.find('\\'); cut != std::string::npos; cut = rest.find('\\')) {
        std::string part = rest.substr(0, cut + 1);
        MakeFolder(Trim(made) + Trim(part), fs, madeFolders);
        made += part;
        rest = Trim(std::string_view(rest).substr(cut + 1));
    }
}

void MakeFolder(const std::string& folder, FileSystem& fs, std::string& madeFolders) {
    if (!fs.CreateFolder(folder)) return;
    madeFolders += LCase(folder) + "*";
}

std::string CleanLinkName(std::string_view name) {
    std::string s(name);
    ReplaceIn(s, "*", "");
    ReplaceIn(s, ">", "_");
    ReplaceIn(s, "<", "_");
    ReplaceIn(s, "{", "");
    ReplaceIn(s, "}", "");
    ReplaceIn(s, "?", "_");
    ReplaceIn(s, "!", "_");
    ReplaceIn(s, "&", "_");
    ReplaceIn(s, "|", "");
    // Three passes only: runs of nine or more "_" keep more than one, so the
    // link written into a page and the saved name still agree.
    ReplaceIn(s, "__", "_");
    ReplaceIn(s, "__", "_");
    ReplaceIn(s, "__", "_");
    return s;
}

std::string CleanFileName(std::string_view name) {
    std::string s = CleanLinkName(name);
    if (!Contains(s, ".")) s += ".html";
    return s;
}

bool IsTopLevelFile(std::string_view path, std::string_view siteHost) {
    std::string p = Trim(LCase(Replace(path, "/", "\\")));
    std::string key = LCase(siteHost) + "\\";
    std::size_t at = InStr(p, key);  // 0 when absent, and the rule goes on with it
    std::string rest = Mid(p, static_cast<long long>(at + key.size() + 1));
    return !Contains(rest, "\\");
}

}  // namespace vantorin
