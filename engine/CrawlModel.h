// What the crawl shows: its phase, the address and connections boxes, the
// queue, the counters, the status line and one row per connection. The engine
// writes it; the window draws it at its own pace (engine/Captions.h makes the
// texts) and the command line reads its figures. Nothing here is a widget.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "extractor/AddressList.h"

namespace vantorin {

inline constexpr int kConnectionCount = 24;

// A crawl runs from its start until a stop or its completion. The start
// button, the address box and the stop button follow this phase.
enum class CrawlPhase { Idle, Running };

// What the status line under the queue says.
enum class CrawlStatus { NotConnected, Downloading, Downloaded, Cancelled };

// What a connection's row shows. The row follows its job only where the
// crawl's rules write it (a finished job's row keeps "Downloading ..." until
// the connection is used again), so it is kept as its own state rather than
// worked out from the job.
struct ConnectionRow {
    enum class Status { NotConnected, Connecting, Downloading, Blank };
    Status status = Status::NotConnected;
    std::string about;  // the host connected to, or the address downloading
    // The expected size from the header, and the bytes received; nothing
    // after a reset, which the row shows as "0 KB" and "-".
    std::optional<std::int32_t> expected;
    std::optional<std::int32_t> received;

    void Reset() { *this = ConnectionRow{}; }
};

// Counts as the scheduler's tick last showed them: the window's counters
// change only on a tick, so the last file of a crawl is not counted on screen.
struct ShownCounts {
    std::int32_t files = 0;
    std::int32_t bytes = 0;
    std::size_t queued = 0;
};

struct CrawlModel {
    CrawlPhase phase = CrawlPhase::Idle;
    bool Running() const { return phase == CrawlPhase::Running; }
    // The pause menu entry: on from a start until a stop the user asked for.
    bool pauseAllowed = false;

    // The address box as typed, and as the start cleans it.
    std::string address;
    // Asked for by a stop, which gives the address box the focus; the window
    // compares it with the count it has seen.
    int addressFocusRequests = 0;
    // The connections box's text. Kept as text and read as a number afresh
    // each time it is needed, as a typed "2.5" counts as 2 connections to the
    // scheduler and as 2.5 to the rows.
    std::string connectionLimit = "4";

    AddressList queue;     // newest last; the scheduler takes the last
    AddressList notTaken;  // links on the site whose type is not wanted

    std::int32_t filesDone = 0;      // downloads saved (or tried) in this crawl
    std::int32_t bytesReceived = 0;  // over every connection in this crawl
    ShownCounts shown;

    CrawlStatus status = CrawlStatus::NotConnected;
    std::string statusSite;  // the start address, for "Downloading Site [...]"

    std::array<ConnectionRow, kConnectionCount> rows;  // row n at index n - 1
    ConnectionRow& Row(int number) { return rows[static_cast<std::size_t>(number - 1)]; }
    const ConnectionRow& Row(int number) const {
        return rows[static_cast<std::size_t>(number - 1)];
    }
};

}  // namespace vantorin
