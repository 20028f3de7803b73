#include "extractor/Admission.h"

#include <array>
#include <string_view>

#include "extractor/AddressRules.h"
#include "output/LocalPath.h"
#include "output/Records.h"
#include "platform/Text.h"

namespace vantorin {

namespace {

constexpr std::string_view kPlaceholderText =
    "This file is queued to be downloaded, or did not download correctly.";

// A ".." right after a host name would climb above the site's root.
constexpr std::array<std::string_view, 10> kClimbsAboveHost = {
    ".info/..", ".tk/..",  ".uk/..",  ".au/..",  ".mil/..",
    ".gov/..",  ".edu/..", ".org/..", ".net/..", ".com/..",
};

void DropScheme(std::string& link) {
    if (Left(LowerTrim(link), 7) == "http://") link = Mid(link, 8);
}

bool ClimbsAboveHost(const std::string& link) {
    for (std::string_view tail : kClimbsAboveHost)
        if (Contains(link, tail)) return true;
    return false;
}

// AppendToFile rewrites the path it is given; every record gets a fresh copy.
void AppendRecord(const std::string& text, std::string path, Mirror& m) {
    AppendToFile(text, path, m);
}

}  // namespace

void AdmitLink(std::string link, StringList& queue, StringList& notTaken, Mirror& m) {
    CrawlVariables& vars = m.vars;

    DropScheme(link);
    // Deliberately loose: any address holding the site's host counts as on the site.
    if (!Contains(LCase(link), LCase(vars.SiteHost))) return;
    DropScheme(link);

    ReplaceIn(link, "http:\\", "http://");
    link = Trim(link);
    ReplaceIn(link, "\\", "/");
    link = Trim(link);

    if (LastChar(link) == "/") link += "index.html";

    // The placeholder keeps this name even when the steps below change the link.
    const std::string localPath = vars.TargetFolder + CleanLinkName(Trim(UrlToPathPart(link)));
    const std::string tmpPath = localPath + ".tmp";
    const std::string htmlPath = localPath + ".html";

    // Known when downloaded (also under an added ".html") or already queued.
    if (FileExists(htmlPath, m.fs) || FileExists(localPath, m.fs) || FileExists(tmpPath, m.fs))
        return;

    if (!IsQueryPage(link) && LastChar(link) != "/" && !IsListedFileType(link, vars.FileTypeSet)) {
        notTaken.AddItem(link);
        return;
    }

    if (LastChar(link) == "?") link.pop_back();
    if (ClimbsAboveHost(link)) return;
    ReplaceIn(link, "\\", "/");

    if (Contains(link, "/../")) {
        const std::string transdd = vars.TargetFolder + "transdd.txt";
        AppendRecord(link, transdd, m);
        link = ResolveDotDot(link);
        AppendRecord(link + "\r\n", transdd, m);
    }

    ReplaceIn(link, "/./", "/");
    // Together: a lone "http:/" gains its second slash, "http://" stays.
    ReplaceIn(link, "http://", "http:/");
    ReplaceIn(link, "http:/", "http://");

    if (IsFiltered(link, vars.KeywordFilters)) return;
    queue.AddItem(link);
    AppendRecord(std::string(kPlaceholderText), tmpPath, m);
    AppendRecord(link, vars.TargetFolder + "log.txt", m);
    RunPending(m.yield);
}

bool IsFiltered(const std::string& link, const KeywordFilterArray& filters) {
    const std::string lowered = LowerTrim(link);
    for (std::size_t i = 1; i <= 100; ++i) {
        const std::string word = LowerTrim(filters[i]);
        if (!word.empty() && Contains(lowered, word)) return true;
    }
    return false;
}

bool IsQueryPage(const std::string& link) {
    return Contains(LowerTrim(link), ".php?");
}

bool IsListedFileType(const std::string& link, const std::string& fileTypeSet) {
    const std::string extension = Trim(GetExtension(LCase(link)));
    return Contains(fileTypeSet, ":" + extension + ":");
}

bool FileExists(const std::string& path, const FileSystem& fs) {
    if (fs.FileLength(path)) return true;
    // One more identical try: a file being written may not answer the first time.
    return fs.FileLength(path).has_value();
}

}  // namespace vantorin
