// The scheduler: one queued address per tick to the first free slot among the
// first N, newest first; and the connections count N.
#include <algorithm>

#include "engine/CrawlEngine.h"
#include "extractor/AddressRules.h"
#include "platform/Text.h"

namespace vantorin {

void CrawlEngine::tmrMove_Timer() {
    StringList& queue = state_.List1;
    if (queue.ListCount() >= 1) ConnectNext(queue.Item(queue.ListCount() - 1));
    UpdateStats();
}

void CrawlEngine::ConnectNext(std::string address) {
    if (!Running()) return;
    address = Replace(StripHttp(address), ".jpeg", ".jpg");
    const int slot = FindFreeSlot();
    if (slot == 0) return;  // the item stays queued for a later tick
    // Assumes the address came from the end of the queue; the start page
    // arrives with the queue empty and removes nothing.
    StringList& queue = state_.List1;
    if (queue.ListCount() >= 1) queue.RemoveItem(queue.ListCount() - 1);

    ConnectionSlot& s = Slot(slot);
    s.Url = address;
    const std::size_t slash = InStr(address, "/");
    if (slash > 0) {
        s.Path = Mid(address, static_cast<long long>(slash), 999);  // cut at 999, as designed
        s.Host = Left(address, static_cast<long long>(slash) - 1);
    } else {
        s.Host = address;
        s.Path = "/";
    }
    // "/" becomes "//" here; the request collapses it again.
    if (!Contains(s.Path, ".")) s.Path += "/";
    s.Response = "";
    s.BytesReceived = 0;
    s.ContentLength = 0;
    s.Attempts = 1;
    ++AttemptId(slot);

    Sock(slot).Close();
    tmrOut(slot).SetEnabled(false);
    tmrOut(slot).SetEnabled(true);
    SetSlotStatus(slot, "Connecting to " + s.Host);
    Sock(slot).Connect(s.Host, 80);
}

int CrawlEngine::FindFreeSlot() {
    // Slots above N are never handed out, even when their sockets are closed.
    const long long n = std::min<long long>(RoundHalfEven(ConnectionsCount()), kSlotCount);
    for (int i = 1; i <= n; ++i) {
        if (Sock(i).State() <= kSockClosed) return i;
    }
    return 0;
}

void CrawlEngine::CloseAllSockets() {
    for (int i = 1; i <= kSlotCount; ++i) Sock(i).Close();
}

void CrawlEngine::txtMax_Change() {
    const std::string text = state_.txtMax();
    // Typed values from 24 up are refused although the message names 24: the
    // bound of 23 is kept as designed. There is no lower bound.
    if (!IsNumeric(text) || Val(text) > 23) {
        state_.SetTxtMax("4");
        // Told without waiting: typing may be handled inside a save's or a scan's yield.
        dialogs_.Ask("Must be a number of connections from 1 to 24", "Try Again", kCritical, {});
    }
}

void CrawlEngine::txtMax_Click() {
    const std::string text = state_.txtMax();
    if (!IsNumeric(text) || Val(text) > 23) return;
    // A negative count would name rows that do not exist; those are skipped.
    for (long long row = std::max(1LL, RoundHalfEven(Val(text)) + 1); row <= kSlotCount; ++row) {
        ResetSlotRow(static_cast<int>(row));
    }
}

}  // namespace vantorin
