// One job, from the connection to the end: the request, each chunk of the
// answer, and once the server has closed its side the save, the scan for
// links and the test whether the whole site is done; or, when the server
// falls silent, the timeout note and the next attempt.
#include "engine/Connection.h"

#include "engine/CrawlEngine.h"
#include "engine/Request.h"
#include "extractor/LinkScanner.h"
#include "output/SaveFile.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

constexpr int kPort = 80;  // always: a port written in the address is part of the host
constexpr const char* kTimeoutText = "Unable to download this file. (Timeout)";

}  // namespace

Connection::Connection(int number, CrawlEngine& crawl, std::unique_ptr<Socket> socket,
                       std::unique_ptr<Timer> silence)
    : number_(number), crawl_(crawl), socket_(std::move(socket)), silence_(std::move(silence)) {
    socket_->onConnected = [this] { Connected(); };
    socket_->onDataArrival = [this] { DataWaiting(); };
    silence_->onTimer = [this] { SilenceElapsed(); };
    ResetSilence();
}

ConnectionRow& Connection::Row() {
    return crawl_.model_.Row(number_);
}

bool Connection::WithinLimit() const {
    return crawl_.ConnectionLimit() >= number_;
}

void Connection::RestartSilence() {
    silence_->SetEnabled(false);
    silence_->SetEnabled(true);
}

void Connection::ResetSilence() {
    silence_->SetEnabled(false);
    silence_->SetInterval(kDefaultSilenceMs);
}

// --- the start: a fresh job and the connection to its host

void Connection::Fetch(const std::string& address) {
    address_ = address;
    const HostAndPath split = SplitAddress(address);
    host_ = split.host;
    path_ = split.path;
    response_.clear();
    received_ = 0;
    expected_ = 0;
    attempts_ = 1;
    ++generation_;

    socket_->Close();
    RestartSilence();  // the timeout starts now
    Row().status = ConnectionRow::Status::Connecting;
    Row().about = host_;
    socket_->Connect(host_, kPort);
}

// --- the request, once connected

void Connection::Connected() {
    if (address_.empty()) {  // torn down by a stop while it connected
        socket_->Close();
        Row().status = ConnectionRow::Status::NotConnected;
        return;
    }
    ReplaceIn(path_, "/index.html", "/");
    const std::string request = BuildRequestText(host_, path_);
    if (ClimbsAboveRoot(request)) {
        // Never sent. The silence timer keeps running, so the job ends through
        // its timeouts, as a server that never answers does.
        socket_->Close();
        return;
    }
    socket_->Send(request);
}

// --- each chunk of the answer

void Connection::DataWaiting() {
    // The socket delivers nothing more until this chunk is done, so a chunk
    // that comes with the server's close is never taken before the ones ahead.
    socket_->Hold();
    crawl_.jobs_.Start(TakeChunk());
}

Task<> Connection::TakeChunk() {
    RestartSilence();  // the timeout measures silence, not the whole download
    std::string chunk = socket_->ReadAll();
    AddSkippingOverflow(crawl_.model_.bytesReceived, chunk.size());
    AddSkippingOverflow(received_, chunk.size());
    co_await ProcessChunk(std::move(chunk));

    // The row names what the connection works on now, which may already be
    // another job, or nothing after a stop.
    if (!Trim(address_).empty()) {
        if (WithinLimit()) {
            Row().status = ConnectionRow::Status::Downloading;
            Row().about = address_;
        } else {
            Row().Reset();
        }
    } else {
        socket_->Close();
        Row().status = ConnectionRow::Status::NotConnected;
    }
    socket_->Release();
}

Task<> Connection::ProcessChunk(std::string chunk) {
    const unsigned generation = generation_;
    // Whether the job this chunk belongs to still owns the connection after
    // the event loop ran: a stop or a timeout's retry meanwhile takes it over.
    const auto stillOurs = [this, generation] { return generation_ == generation; };

    response_ += chunk;
    co_await NextTurn{crawl_.loop_};
    if (!stillOurs()) co_return;
    ShowChunk(chunk);
    // Finished only once the server has closed its side. The expected size is
    // never compared, so a server that keeps the line open ends in a timeout.
    if (socket_->State() != SocketState::Closing) co_return;

    const SavedFile saved = co_await SaveFile(response_, "\\" + host_ + path_, host_,
                                              crawl_.mirror_, crawl_.model_.filesDone);
    crawl_.Tell({CrawlEvent::Kind::PageSaved, number_, address_, saved});
    co_await NextTurn{crawl_.loop_};
    if (!stillOurs()) co_return;

    // The page's folder, for its links. Only an address with a "/" resets the
    // row here; the status goes blank while the page is scanned.
    std::string base = address_;
    if (Contains(base, "/")) {
        base = FolderOf(base);
        Row().Reset();
    }
    Row().status = ConnectionRow::Status::Blank;
    co_await NextTurn{crawl_.loop_};
    if (!stillOurs()) co_return;

    // The scanner rewrites and consumes the response itself: what a retry
    // that starts during the scan appends lands behind what is left of it.
    co_await ExtractLinks(response_, base, crawl_.Admit());
    if (!stillOurs()) co_return;  // a stop, or a retry, owns the socket now
    socket_->Close();
    co_await NextTurn{crawl_.loop_};
    co_await crawl_.CompleteIfDone();
}

// The expected size when this chunk holds the header, and the bytes so far;
// a connection above the count the box allows has its row reset instead.
void Connection::ShowChunk(const std::string& chunk) {
    if (const SizeHeader header = ExpectedSizeIn(chunk); header.present) {
        if (header.size) expected_ = *header.size;
        Row().expected = expected_;
    }
    if (WithinLimit()) {
        Row().received = received_;
    } else {
        Row().Reset();
    }
}

// --- a whole interval of silence

void Connection::SilenceElapsed() {
    // The timer is never stopped by a finished job, so a connection that stays
    // idle for a whole interval times out its last address too.
    if (timingOut_) return;  // the last one still runs: this tick is let pass
    timingOut_ = true;
    crawl_.jobs_.Start(TimeOut());
}

Task<> Connection::TimeOut() {
    // Over once this job ends, however it ends.
    struct Over {
        bool& timingOut;
        ~Over() { timingOut = false; }
    } over{timingOut_};
    const unsigned generation = generation_;
    // The note is saved in place of the file, under a name that starts with a
    // blank: it lands in a " host" folder that is never made, so the write
    // fails and a file received earlier is kept.
    co_await SaveFile(kTimeoutText, " \\ " + host_ + path_, host_, crawl_.mirror_,
                      crawl_.model_.filesDone);
    co_await NextTurn{crawl_.loop_};
    // A stop, or a new job here, while the loop ran leaves nothing to retry.
    if (generation_ != generation) co_return;
    socket_->Close();
    Row().Reset();

    if (attempts_ == 1 || attempts_ == 2) {
        // The failed attempt's bytes stay: the next attempt's answer is
        // appended behind them, so the saved file holds everything that came.
        ++attempts_;
        ++generation_;
        crawl_.Tell({CrawlEvent::Kind::TimedOut, number_, address_, {}});
        Row().status = ConnectionRow::Status::Connecting;
        Row().about = host_;
        socket_->Connect(host_, kPort);
    } else {
        crawl_.Tell({CrawlEvent::Kind::GivenUp, number_, address_, {}});
        co_await crawl_.CompleteIfDone();
    }
}

// --- a stop

void Connection::TearDown() {
    Row().status = ConnectionRow::Status::NotConnected;
    path_.clear();
    address_.clear();
    host_.clear();
    response_.clear();
    ++generation_;
    socket_->Close();
    silence_->SetEnabled(false);
}

}  // namespace vantorin
