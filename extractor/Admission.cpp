#include "extractor/Admission.h"

#include <array>
#include <string_view>

#include "extractor/AddressRules.h"
#include "output/LocalPath.h"
#include "output/Records.h"
#include "text/Scheme.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

constexpr std::string_view kPlaceholderText =
    "This file is queued to be downloaded, or did not download correctly.";

// A ".." right after a host name would climb above the site's root.
constexpr std::array<std::string_view, 10> kClimbsAboveHost = {
    ".info/..", ".tk/..",  ".uk/..",  ".au/..",  ".mil/..",
    ".gov/..",  ".edu/..", ".org/..", ".net/..", ".com/..",
};

// The scheme is tested on the trimmed link and cut from the link as it is.
void DropScheme(std::string& link) {
    if (StartsWithHttp(Trim(link))) link = Mid(link, 8);
}

bool ClimbsAboveHost(const std::string& link) {
    for (std::string_view tail : kClimbsAboveHost)
        if (Contains(link, tail)) return true;
    return false;
}

}  // namespace

Admitted AdmitLink(std::string link, Admission& to) {
    Mirror& m = to.mirror;

    DropScheme(link);
    // Deliberately loose: any address holding the site's host counts as on the site.
    if (!Contains(LCase(link), LCase(m.siteHost))) return Admitted::Dropped;
    DropScheme(link);

    ReplaceIn(link, "http:\\", "http://");
    link = Trim(link);
    ReplaceIn(link, "\\", "/");
    link = Trim(link);

    if (LastChar(link) == "/") link += "index.html";

    // The placeholder keeps this name even when the steps below change the
    // link, so a resolved or "?"-less link is saved under another name than
    // its placeholder's; the end-of-crawl sweep removes those.
    const std::string localPath = m.targetFolder + CleanLinkName(Trim(UrlToPathPart(link)));
    const std::string tmpPath = localPath + ".tmp";
    const std::string htmlPath = localPath + ".html";

    // Known when downloaded (also under an added ".html") or already queued.
    if (FileExists(htmlPath, m.files) || FileExists(localPath, m.files) ||
        FileExists(tmpPath, m.files))
        return Admitted::Dropped;

    if (!IsQueryPage(link) && LastChar(link) != "/" && !IsListedFileType(link, to.wantedTypes)) {
        to.notTaken.Add(link);
        return Admitted::NotTaken;
    }

    if (LastChar(link) == "?") link.pop_back();
    if (ClimbsAboveHost(link)) return Admitted::Dropped;
    ReplaceIn(link, "\\", "/");

    if (Contains(link, "/../")) {
        const std::string transdd = m.targetFolder + "transdd.txt";
        AppendToFile(link, transdd, m);
        link = ResolveDotDot(link);
        AppendToFile(link + "\r\n", transdd, m);
    }

    ReplaceIn(link, "/./", "/");
    // Together: a lone "http:/" gains its second slash, "http://" stays.
    ReplaceIn(link, "http://", "http:/");
    ReplaceIn(link, "http:/", "http://");

    if (to.filters.Matches(link)) return Admitted::Dropped;
    to.queue.Add(link);
    AppendToFile(std::string(kPlaceholderText), tmpPath, m);
    AppendToFile(link, m.targetFolder + "log.txt", m);
    return Admitted::Queued;
}

bool IsQueryPage(const std::string& link) {
    return Contains(LowerTrim(link), ".php?");
}

bool IsListedFileType(const std::string& link, const std::string& wantedTypes) {
    const std::string extension = Trim(GetExtension(LCase(link)));
    return Contains(wantedTypes, ":" + extension + ":");
}

bool FileExists(const std::string& path, const FileSystem& fs) {
    if (fs.FileLength(path)) return true;
    // One more identical try: a file being written may not answer the first time.
    return fs.FileLength(path).has_value();
}

}  // namespace vantorin
