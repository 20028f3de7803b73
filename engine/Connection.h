// One of the crawl's 24 connections and the job it runs: its socket, its
// silence timer, the bytes received for the job and the attempts made. A job
// goes connecting -> receiving -> saving -> scanning -> idle; a silence of one
// whole interval saves a timeout note and tries again, three times at most.
// docs/crawl.md draws the phases.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/Socket.h"
#include "platform/Task.h"
#include "platform/Timer.h"

namespace vantorin {

class CrawlEngine;
struct ConnectionRow;

// The silence timer's interval until the wizard sets the timeout.
inline constexpr int kDefaultSilenceMs = 20000;

class Connection {
public:
    // `number` is 1 to 24: the connection's row, and its place in the count
    // the connections box sets.
    Connection(int number, CrawlEngine& crawl, std::unique_ptr<Socket> socket,
               std::unique_ptr<Timer> silence);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    // Starts fetching `address` (host/path form): a fresh job, one attempt.
    void Fetch(const std::string& address);
    // A stop: the job is forgotten, the socket closed and the silence timer
    // off; the row says "Not Connected." but keeps its figures.
    void TearDown();
    void Close() { socket_->Close(); }

    // Free for a new job exactly when its socket is closed; the job's fields
    // stay until the next one, so this is the only test.
    bool IsFree() const { return socket_->State() == SocketState::Closed; }

    // The job: its address, host and path, every byte received so far (header
    // included), the expected size read from the header, and the attempts.
    const std::string& Address() const { return address_; }
    const std::string& Host() const { return host_; }
    const std::string& Path() const { return path_; }
    const std::string& Response() const { return response_; }
    std::int32_t ExpectedSize() const { return expected_; }
    std::int32_t BytesReceived() const { return received_; }
    int Attempts() const { return attempts_; }

    void SetSilenceInterval(int ms) { silence_->SetInterval(ms); }
    int SilenceInterval() const { return silence_->Interval(); }
    // As a freshly loaded window has it: the default interval, not running.
    void ResetSilence();

private:
    void Connected();
    void DataWaiting();
    Task<> TakeChunk();
    Task<> ProcessChunk(std::string chunk);
    void ShowChunk(const std::string& chunk);
    void SilenceElapsed();
    Task<> TimeOut();
    void RestartSilence();
    ConnectionRow& Row();
    // Whether this connection counts among those the connections box allows.
    bool WithinLimit() const;

    const int number_;
    CrawlEngine& crawl_;
    std::unique_ptr<Socket> socket_;
    std::unique_ptr<Timer> silence_;

    std::string address_;
    std::string host_;
    std::string path_;
    std::string response_;
    std::int32_t expected_ = 0;
    std::int32_t received_ = 0;
    int attempts_ = 0;
    // Raised whenever the socket is connected anew or the job torn down, so
    // a job that waited for the event loop can tell, by comparing it with the
    // value it began with, whether the connection is still its own. Not to be
    // confused with attempts_, the tries made for the job (1 to 3).
    unsigned generation_ = 0;
    bool timingOut_ = false;  // a silence that comes meanwhile is let pass
};

}  // namespace vantorin
