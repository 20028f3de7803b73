// One HTTP/1.0 GET per slot: the request on connect, every chunk appended to
// the slot's Response, and the finished job saved and scanned once the server
// has closed its side.
#include <limits>

#include "engine/CrawlEngine.h"
#include "extractor/LinkScanner.h"
#include "output/SaveFile.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

namespace vantorin {

namespace {

// A 32-bit counter add that would overflow fails as a statement and is skipped.
void AddSkippingOverflow(std::int32_t& counter, std::size_t amount) {
    const long long sum = static_cast<long long>(counter) + static_cast<long long>(amount);
    if (sum <= std::numeric_limits<std::int32_t>::max()) counter = static_cast<std::int32_t>(sum);
}

// The value read from a chunk holding "Content-Length:" at 1-based `pos`:
// 12 characters from the 16th after its start, trimmed, cut before the first
// CR LF. Without a CR LF in that window the cut fails and the value is empty,
// so a header split across chunks or an over-long value reads as 0.
std::string ContentLengthText(const std::string& chunk, std::size_t pos) {
    const std::string window = Trim(Mid(chunk, static_cast<long long>(pos) + 16, 12));
    const std::size_t crlf = InStr(window, "\r\n");
    if (crlf == 0) return "";
    return Replace(Replace(Left(window, static_cast<long long>(crlf) - 1), "\r", ""), "\n", "");
}

// The page's folder address: Url cut just after its last "/"; an address
// ending in "/" stays whole.
std::string BaseOf(const std::string& url) {
    std::string reversed = ReverseText(url);
    if (!StartsWith(reversed, "/"))
        reversed = Mid(reversed, static_cast<long long>(InStr(reversed, "/")));
    return ReverseText(reversed);
}

}  // namespace

std::string BuildRequestText(const std::string& host, const std::string& path) {
    const std::string h = Trim(Replace(host, "/", ""));
    const std::string p = Replace(path, "//", "/");
    // "Referrer" with a double r and the bare host as its value are kept as designed.
    return "GET " + p + " HTTP/1.0\r\n" + "Host: " + h + "\r\n" + "Referrer: " + h + "\r\n" +
           "User-Agent: Internet Explorer 6.01\r\n" + "\r\n";
}

void CrawlEngine::Sock_Connect(int i) {
    if (!ValidSlot(i)) return;
    ConnectionSlot& s = Slot(i);
    if (s.Url.empty()) {
        Sock(i).Close();
        SetSlotStatus(i, "Not Connected.");
        return;
    }
    ReplaceIn(s.Path, "/index.html", "/");
    const std::string request = BuildRequestText(s.Host, s.Path);
    if (Contains(request, "GET /..") || Contains(request, "GET \\..")) {
        // Never requested; the timeout timer keeps running and ends the job.
        s.Response = "CANCEL";
        Sock(i).Close();
        return;
    }
    Sock(i).Send(request);
}

void CrawlEngine::Sock_DataArrival(int i) {
    if (!ValidSlot(i)) return;
    // The timeout measures silence, not the whole download.
    tmrOut(i).SetEnabled(false);
    tmrOut(i).SetEnabled(true);
    const std::string data = Sock(i).ReadAll();
    AddSkippingOverflow(state_.TotalBytes, data.size());
    AddSkippingOverflow(Slot(i).BytesReceived, data.size());
    ShowMatrixSizes();
    ProcessResponse(data, i);

    const ConnectionSlot& s = Slot(i);
    if (!Trim(s.Url).empty()) {
        if (ConnectionsCount() >= i) {
            SetSlotStatus(i, "Downloading " + s.Url);
        } else {
            ResetSlotRow(i);
        }
    } else {
        Sock(i).Close();
        SetSlotStatus(i, "Not Connected.");
    }
}

void CrawlEngine::ProcessResponse(const std::string& data, int i) {
    if (!ValidSlot(i)) return;
    const unsigned attempt = AttemptId(i);
    // Whether the job this chunk belongs to still owns the slot after events ran.
    auto stillOurs = [&] { return AttemptId(i) == attempt; };

    Slot(i).Response += data;
    LetPendingEventsRun();
    if (!stillOurs()) return;
    ShowChunkOnRow(data, i);
    // Finished only once the server has closed its side; the expected size
    // is never compared, so a server that keeps the line open times out.
    if (Sock(i).State() != kSockClosing) return;

    SaveFinishedJob(i);
    LetPendingEventsRun();
    if (!stillOurs()) return;
    std::string base = FinishedJobBase(i);
    SetSlotStatus(i, "");
    LetPendingEventsRun();
    if (!stillOurs()) return;
    // The scanner rewrites and consumes the slot's Response itself: what a
    // retry started during the scan appends lands behind what is left of it.
    ExtractLinks(Slot(i).Response, state_.List1, base, state_.List2, mirror_);
    // A stop, or a retry after a timeout during the scan, owns the socket now.
    if (!stillOurs()) return;
    Sock(i).Close();
    LetPendingEventsRun();
    if (state_.List1.ListCount() == 0 && AllSocketsClosed()) SiteComplete();
}

// The expected size when this chunk itself holds the header, and the bytes so
// far; a row above the connections count is reset instead.
void CrawlEngine::ShowChunkOnRow(const std::string& data, int i) {
    ConnectionSlot& s = Slot(i);
    if (const std::size_t pos = InStr(data, "Content-Length:"); pos > 0) {
        const long long length = RoundHalfEven(Val(ContentLengthText(data, pos)));
        // A value beyond 32 bits fails to convert and leaves the old one.
        if (length >= std::numeric_limits<std::int32_t>::min() &&
            length <= std::numeric_limits<std::int32_t>::max()) {
            s.ContentLength = static_cast<std::int32_t>(length);
        }
        state_.SetRowSize(i, FormatByteSize(s.ContentLength));
    }
    if (ConnectionsCount() >= i) {
        state_.SetRowReceived(i, Trim(FormatByteSize(s.BytesReceived)));
    } else {
        ResetSlotRow(i);
    }
}

void CrawlEngine::SaveFinishedJob(int i) {
    // SaveFile reads the response before it first yields, so no copy is needed.
    const ConnectionSlot& s = Slot(i);
    std::string name = "\\" + s.Host + s.Path;
    const bool written = SaveFile(s.Response, name, s.Host, mirror_, state_.FilesDone);
    if (onPageSaved) onPageSaved(written);
}

// The page's folder address, for the links found in it. The row is reset only
// for an address holding a "/".
std::string CrawlEngine::FinishedJobBase(int i) {
    std::string base = Slot(i).Url;
    if (Contains(base, "/")) {
        base = BaseOf(base);
        ResetSlotRow(i);
    }
    return base;
}

}  // namespace vantorin
