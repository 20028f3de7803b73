// The engine's construction, the window's load, the start of a crawl and the
// row helpers.
#include "engine/CrawlEngine.h"

#include <limits>

#include "extractor/AddressRules.h"
#include "extractor/FileTypesList.h"
#include "extractor/KeywordFilters.h"
#include "output/LocalPath.h"
#include "platform/Text.h"

namespace vantorin {

CrawlEngine::CrawlEngine(CrawlVariables& vars, FileSystem& fs, EngineSeams seams)
    : vars_(vars),
      fs_(fs),
      dialogs_(seams.dialogs),
      shell_(seams.shell),
      mirrorFs_(vars.TargetFolder, std::string()),
      mirror_{vars, mirrorFs_, std::move(seams.pageText), std::move(seams.yield)} {
    for (int i = 1; i <= kSlotCount; ++i) {
        sockets_[Index(i)] = seams.sockets();
        sockets_[Index(i)]->onConnected = [this, i] { Sock_Connect(i); };
        sockets_[Index(i)]->onDataArrival = [this, i] { Sock_DataArrival(i); };
        timeouts_[Index(i)] = seams.timers();
        timeouts_[Index(i)]->SetEnabled(false);
        timeouts_[Index(i)]->SetInterval(kDefaultTimeoutMs);
        timeouts_[Index(i)]->onTimer = [this, i] { tmrOut_Timer(i); };
    }
    tmrMove_ = seams.timers();
    tmrMove_->SetEnabled(false);
    tmrMove_->SetInterval(kSchedulerTickMs);
    tmrMove_->onTimer = [this] { tmrMove_Timer(); };
}

CrawlEngine::~CrawlEngine() {
    // No event may reach a handler of an engine being taken down.
    for (auto& socket : sockets_) {
        socket->onConnected = nullptr;
        socket->onDataArrival = nullptr;
    }
    for (auto& timer : timeouts_) timer->onTimer = nullptr;
    tmrMove_->onTimer = nullptr;
}

void CrawlEngine::ResetForReload() {
    LoadKeywordFilters(vars_.KeywordFilters, fs_);
    state_.Reset();
    // The reloaded window's timeout timers are new ones, as designed.
    for (int i = 1; i <= kSlotCount; ++i) {
        tmrOut(i).SetEnabled(false);
        tmrOut(i).SetInterval(kDefaultTimeoutMs);
    }
    MakeFolder(fs_.ProgramFolder() + "\\dldata", vars_, fs_);
}

void CrawlEngine::ConnectNowNow() {
    CloseAllSockets();
    state_.List1.Clear();
    state_.TotalBytes = 0;
    state_.FilesDone = 0;
    vars_.MadeFolders = "";
    std::string text = Trim(state_.Text1());
    if (Left(LCase(text), 7) == "http://") text = Mid(text, 8);
    // Any "www." anywhere, even after the host, counts as already prefixed.
    if (!Contains(LCase(text), "www.")) text = "www." + text;
    state_.SetText1(text);
    state_.SetPauseEnabled(true);
    vars_.SiteHost = Trim(Replace(CutHostAtDelimiter(text), "www.", ""));
    vars_.FileTypeSet = LoadFileTypes(fs_);
    state_.SetCommand1Enabled(false);
    state_.SetCommand2Enabled(true);
    vars_.LastSearchPage = "";
    // The start page is fetched directly; it never passes through the queue.
    ConnectNext(state_.Text1());
    state_.SetPauseEnabled(true);
    tmrMove_->SetEnabled(true);
    state_.SetText1Enabled(false);
    state_.SetLabel6("Downloading Site [" + state_.Text1() + "]");
}

void CrawlEngine::Text1_KeyDown(int keyCode) {
    if (keyCode == 13) ConnectNowNow();
}

void CrawlEngine::SetSlotStatus(int i, const std::string& text) {
    state_.SetRowStatus(i, text);
}

void CrawlEngine::ResetSlotRow(int i) {
    state_.SetRowStatus(i, "Not Connected.");
    state_.SetRowSize(i, "0 KB");
    state_.SetRowReceived(i, "-");
}

double CrawlEngine::ConnectionsCount() const {
    return Val(state_.txtMax());
}

bool CrawlEngine::SetTimeoutInterval(int slot, long long ms) {
    if (!ValidSlot(slot) || ms < 0 || ms > std::numeric_limits<int>::max()) return false;
    tmrOut(slot).SetInterval(static_cast<int>(ms));
    return true;
}

int CrawlEngine::TimeoutInterval(int slot) const {
    return ValidSlot(slot) ? timeouts_[Index(slot)]->Interval() : 0;
}

}  // namespace vantorin
