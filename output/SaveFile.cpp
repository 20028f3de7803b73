#include "output/SaveFile.h"

#include <algorithm>

#include "output/LocalPath.h"
#include "output/Records.h"
#include "text/Scheme.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

// "cancel" in any case with blanks around it, tested without copying the
// (possibly large) response.
bool IsCancel(const std::string& received) {
    std::size_t b = received.find_first_not_of(' ');
    if (b == std::string::npos) return false;
    std::size_t e = received.find_last_not_of(' ');
    if (e - b + 1 != 6) return false;
    return LCase(std::string_view(received).substr(b, 6)) == "cancel";
}

bool NeedsLineEndRewrite(const std::string& savePath) {
    for (std::string_view ext : {".htm", ".php", ".shtm", ".asp", ".txt"})
        if (Contains(savePath, ext)) return true;
    return false;
}

// The body: what follows the first blank line (CR LF CR LF). Without one, the
// position of the blank line counts as 0 and the body starts at the 4th
// character: the first three characters are lost. The buffer is sized up
// front for the closing CR LF and for the line-end rewrite, which then grows
// the text where it stands.
std::string StripHeader(const std::string& received, bool lineEndsToRewrite) {
    // 1-based position of the blank line, 0 without one; the body starts four
    // characters after it, at the 0-based index position + 3.
    const std::size_t at = InStr(received, "\r\n\r\n");
    const std::size_t from = at + 3;
    std::string body;
    if (from >= received.size()) return body;
    const std::string_view rest = std::string_view(received).substr(from);
    std::size_t growth = 0;
    if (lineEndsToRewrite) {
        // Each LF gains a CR, then every CR (the new ones too) an LF.
        growth = 2 * static_cast<std::size_t>(std::ranges::count(rest, '\n')) +
                 static_cast<std::size_t>(std::ranges::count(rest, '\r'));
    }
    body.reserve(rest.size() + growth + 2);
    body.append(rest);
    return body;
}

void RewriteDynamicLinks(std::string& text) {
    ReplaceIn(text, ".php'", ".php.html'");
    ReplaceIn(text, ".php\"", ".php.html\"");
    ReplaceIn(text, ".php>", ".php.html>");
    ReplaceIn(text, ".asp'", ".asp.html'");
    ReplaceIn(text, ".asp\"", ".asp.html\"");
    ReplaceIn(text, ".asp>", ".asp.html>");
    // After the renames, so "page.php?id=2" matches the cleaned saved name.
    ReplaceIn(text, ".php?", ".php_");
    ReplaceIn(text, ".PHP?", ".PHP_");
}

// One "../" per link is dropped on a page in the host folder, where it would
// climb out of the mirror. The single-quoted rows write a double quote at the
// front and leave the single one at the end, and the last writes "href =" for
// "href= ": browsers read both.
void FlattenTopLevelLinks(std::string& text) {
    ReplaceIn(text, "href=\"../", "href=\"");
    ReplaceIn(text, "href =\"../", "href =\"");
    ReplaceIn(text, "href = \"../", "href = \"");
    ReplaceIn(text, "href= \"../", "href= \"");
    ReplaceIn(text, "href='../", "href=\"");
    ReplaceIn(text, "href ='../", "href =\"");
    ReplaceIn(text, "href = '../", "href = \"");
    ReplaceIn(text, "href= '../", "href =\"");
}

// Absolute links to the connection's own host become relative, with and without
// "www.". An empty host yields "http://", so every "http://" goes.
void RemoveOwnHostLinks(std::string& text, const std::string& slotHost) {
    std::string site = Trim(slotHost);
    if (!StartsWithHttp(site)) site = "http://" + site;
    ReplaceIn(site, "\\", "/");
    ReplaceIn(site, "www.", "");
    if (!site.empty() && site.back() == '/') site.pop_back();
    site += '/';
    ReplaceIn(text, site, "");
    ReplaceIn(site, "http://", "http://www.");
    ReplaceIn(text, site, "");
}

}  // namespace

Task<SavedFile> SaveFile(const std::string& received, std::string address, std::string host,
                         Mirror& m, std::int32_t& filesDone) {
    if (IsCancel(received)) co_return SavedFile{};
    // The timeout's name (" \ host/path") puts its file in a " host" folder
    // that is never made, so that write fails every time: it is no fault of
    // the disk and is not counted as one.
    const bool timeoutName = Left(address, 3) == " \\ ";
    address = CleanFileName(address);
    // The path is made before the header is cut off (nothing between the two
    // could tell), so the body's buffer is sized for its line ends at once.
    std::string savePath = MakeLocalPath(m.targetFolder + Trim(address), m.files, m.madeFolders);
    if (LastChar(savePath) == "\\") savePath += "index.html";
    ReplaceIn(savePath, "\\.html", "\\index.html");
    const bool lineEnds = NeedsLineEndRewrite(savePath);
    std::string text = StripHeader(received, lineEnds);
    if (lineEnds) {
        // The second pass also sees the CRs the first one wrote, so a CR LF
        // already present becomes CR LF CR LF LF.
        ReplaceIn(text, "\n", "\r\n");
        ReplaceIn(text, "\r", "\r\n");
    }
    // The placeholder was queued under the name before the ".html" renaming.
    const std::string placeholder = savePath + ".tmp";
    if (Contains(savePath, ".php") && !Contains(savePath, ".html")) savePath += ".html";
    if (Contains(savePath, ".asp") && !Contains(savePath, ".html")) savePath += ".html";
    ReplaceIn(savePath, "\\\\", "\\");

    RewriteDynamicLinks(text);
    if (IsTopLevelFile(savePath, m.siteHost)) FlattenTopLevelLinks(text);
    RemoveOwnHostLinks(text, host);
    ReplaceIn(text, "applet", "");
    ReplaceIn(text, "script ", " !-- script ");

    text += "\r\n";
    SavedFile saved{savePath, m.files.WriteWhole(savePath, text, !timeoutName)};
    // Released before the waits, so saves running meanwhile do not stack copies.
    std::string().swap(text);
    const std::string lowered = LCase(savePath);
    if (Contains(lowered, ".htm") || Contains(lowered, ".tx")) {
        const std::string pageText = co_await GetPageText(savePath, m);
        RecordSearchText(pageText, host, savePath, m);
    }
    co_await NextTurn{m.loop};
    m.files.DeleteFile(placeholder);
    ++filesDone;
    co_return saved;
}

}  // namespace vantorin
