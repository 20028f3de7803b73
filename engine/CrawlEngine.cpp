// The crawl as a whole: the program's start, a crawl's start, the counters,
// and the ways a crawl ends (completion, a stop, the exit). What one
// connection does with its job is in Connection.cpp; the tick in Scheduler.cpp.
#include "engine/CrawlEngine.h"

#include <limits>

#include "extractor/AddressRules.h"
#include "extractor/FileTypesList.h"
#include "output/LocalPath.h"
#include "output/Records.h"
#include "text/Scheme.h"
#include "text/Strings.h"

namespace vantorin {

CrawlEngine::CrawlEngine(EngineParts parts)
    : programFiles_(parts.programFiles),
      filters_(parts.filters),
      loop_(parts.loop),
      mirrorFiles_(std::string(), std::string()),
      mirror_{{}, {}, {}, {}, mirrorFiles_, std::move(parts.pageText), parts.loop},
      targetFolder_(std::move(parts.targetFolder)),
      scheduler_(*this, parts.timers()) {
    for (int i = 1; i <= kConnectionCount; ++i)
        connections_[Index(i)] =
            std::make_unique<class Connection>(i, *this, parts.sockets(), parts.timers());
    Load();
}

CrawlEngine::~CrawlEngine() = default;

// --- the program's start, and the window's reload after a stop

void CrawlEngine::Load() {
    filters_.Load(programFiles_);
    const int focusRequests = model_.addressFocusRequests;
    model_ = CrawlModel{};
    model_.addressFocusRequests = focusRequests;
    for (auto& connection : connections_) connection->ResetSilence();
    MakeFolder(programFiles_.ProgramFolder() + "\\dldata", programFiles_, mirror_.madeFolders);
}

void CrawlEngine::Reload() {
    Load();
}

// --- a crawl's start

void CrawlEngine::SetAddress(std::string text) {
    model_.address = std::move(text);
}

void CrawlEngine::SetTargetFolder(std::string folder) {
    targetFolder_ = std::move(folder);
}

void CrawlEngine::Start() {
    CloseAll();
    model_.queue.Clear();
    model_.bytesReceived = 0;
    model_.filesDone = 0;
    mirror_.madeFolders.clear();
    std::string address = DropHttp(Trim(model_.address));
    // Any "www." anywhere, even after the host, counts as already prefixed.
    if (!Contains(LCase(address), "www.")) address = "www." + address;
    model_.address = address;
    model_.pauseAllowed = true;
    mirror_.siteHost = Trim(Replace(CutHostAtDelimiter(address), "www.", ""));
    wantedTypes_ = LoadFileTypes(programFiles_);
    model_.phase = CrawlPhase::Running;
    mirror_.lastSearchPage.clear();
    mirror_.targetFolder = targetFolder_;
    mirrorFiles_.SetTargetFolder(targetFolder_);
    // The start page is fetched directly; it never passes through the queue.
    scheduler_.ConnectNext(address);
    scheduler_.StartTicking();
    model_.status = CrawlStatus::Downloading;
    model_.statusSite = address;
}

// --- the connections box, and the timeout the wizard sets

double CrawlEngine::ConnectionLimit() const {
    return Val(model_.connectionLimit);
}

void CrawlEngine::TypeConnectionLimit(std::string text) {
    // The message says 24, but typed counts from 24 up are refused; chosen
    // from the list, 24 is taken. There is no lower bound.
    const bool refused = !IsNumeric(text) || Val(text) > 23;
    model_.connectionLimit = refused ? std::string("4") : std::move(text);
    if (refused) Tell(CrawlEvent::Kind::LimitRefused);
}

void CrawlEngine::ChooseConnectionLimit(std::string text) {
    model_.connectionLimit = std::move(text);
    if (!IsNumeric(model_.connectionLimit) || ConnectionLimit() > 23) return;
    // A negative count would name rows that do not exist; those are skipped.
    for (long long row = std::max(1LL, RoundHalfEven(ConnectionLimit()) + 1);
         row <= kConnectionCount; ++row)
        model_.Row(static_cast<int>(row)).Reset();
}

bool CrawlEngine::SetSilenceTimeout(long long ms) {
    if (ms < 0 || ms > std::numeric_limits<int>::max()) return false;
    for (auto& connection : connections_) connection->SetSilenceInterval(static_cast<int>(ms));
    return true;
}

// --- the counters, on every tick

void CrawlEngine::ShowCounts() {
    model_.shown = {model_.filesDone, model_.bytesReceived, model_.queue.Count()};
}

// --- what the connections share

Admission CrawlEngine::Admit() {
    return {mirror_, wantedTypes_, filters_, model_.queue, model_.notTaken};
}

void CrawlEngine::Tell(CrawlEvent event) {
    if (onEvent) onEvent(event);
}

void CrawlEngine::Tell(CrawlEvent::Kind kind) {
    Tell(CrawlEvent{kind, 0, {}, {}});
}

bool CrawlEngine::AllClosed() const {
    for (const auto& connection : connections_)
        if (!connection->IsFree()) return false;
    return true;
}

void CrawlEngine::CloseAll() {
    for (auto& connection : connections_) connection->Close();
}

// --- how a crawl ends

Task<> CrawlEngine::CompleteIfDone() {
    if (model_.queue.Empty() && AllClosed()) co_await Complete();
}

Task<> CrawlEngine::Complete() {
    if (!model_.Running()) co_return;  // already over: a second ending tells nothing
    HardStop();
    model_.status = CrawlStatus::Downloaded;
    RemoveTempFiles(mirror_);
    co_await NextTurn{loop_};
    Tell(CrawlEvent::Kind::SiteDownloaded);
}

void CrawlEngine::HardStop() {
    // The tick goes first so that no connection starts while they are torn down.
    scheduler_.StopTicking();
    RemoveTempFiles(mirror_);
    model_.queue.Clear();
    for (auto& connection : connections_) connection->TearDown();
    model_.phase = CrawlPhase::Idle;
    ++model_.addressFocusRequests;
}

void CrawlEngine::Stop() {
    jobs_.Start(StopSteps());
}

Task<> CrawlEngine::StopSteps() {
    HardStop();
    Tell(CrawlEvent::Kind::Stopped);
    co_await NextTurn{loop_};
    model_.status = CrawlStatus::Cancelled;
    model_.pauseAllowed = false;
}

void CrawlEngine::Pause() {
    scheduler_.StopTicking();
}

void CrawlEngine::Resume() {
    // Also when no crawl runs: the tick then finds nothing to start.
    scheduler_.StartTicking();
}

void CrawlEngine::Exit() {
    jobs_.Start(ExitSteps());
}

Task<> CrawlEngine::ExitSteps() {
    if (model_.Running()) HardStop();
    RemoveTempFiles(mirror_);
    co_await NextTurn{loop_};
    scheduler_.StopTicking();
    CloseAll();
    // A scan that went on during that turn may have queued a placeholder; no
    // job runs after the exit, so it is swept now or never.
    RemoveTempFiles(mirror_);
    Tell(CrawlEvent::Kind::Ended);
}

}  // namespace vantorin
