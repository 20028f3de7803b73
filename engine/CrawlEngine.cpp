// The engine's construction, the start of a crawl and the row helpers.
#include "engine/CrawlEngine.h"

#include "extractor/AddressRules.h"
#include "extractor/FileTypesList.h"
#include "platform/Text.h"

namespace vantorin {

CrawlEngine::CrawlEngine(WindowSeam& window, Dialogs& dialogs, ShellOpen& shell,
                         CrawlVariables& vars, FileSystem& fs, PageTextReader pageText, Yield yield,
                         SocketFactory sockets, TimerFactory timers)
    : window_(window),
      dialogs_(dialogs),
      shell_(shell),
      vars_(vars),
      fs_(fs),
      mirrorFs_(vars.TargetFolder, std::string()),
      mirror_{vars, mirrorFs_, std::move(pageText), std::move(yield)} {
    for (int i = 1; i <= kSlotCount; ++i) {
        const auto n = static_cast<std::size_t>(i - 1);
        sockets_[n] = sockets();
        sockets_[n]->onConnected = [this, i] { Sock_Connect(i); };
        sockets_[n]->onDataArrival = [this, i] { Sock_DataArrival(i); };
        timeouts_[n] = timers();
        timeouts_[n]->SetEnabled(false);
        timeouts_[n]->SetInterval(kDefaultTimeoutMs);
        timeouts_[n]->onTimer = [this, i] { tmrOut_Timer(i); };
    }
    tmrMove_ = timers();
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

void CrawlEngine::ConnectNowNow() {
    CloseAllSockets();
    window_.List1().Clear();
    TotalBytes = 0;
    FilesDone = 0;
    vars_.MadeFolders = "";
    window_.SetText1(Trim(window_.Text1()));
    if (Left(LCase(window_.Text1()), 7) == "http://") window_.SetText1(Mid(window_.Text1(), 8));
    // Any "www." anywhere, even after the host, counts as already prefixed.
    if (!Contains(LCase(window_.Text1()), "www.")) window_.SetText1("www." + window_.Text1());
    window_.SetPauseEnabled(true);
    vars_.SiteHost = Trim(Replace(CutHostAtDelimiter(window_.Text1()), "www.", ""));
    vars_.FileTypeSet = LoadFileTypes(fs_);
    window_.SetCommand1Enabled(false);
    window_.SetCommand2Enabled(true);
    vars_.LastSearchPage = "";
    // The start page is fetched directly; it never passes through the queue.
    ConnectNext(window_.Text1());
    window_.SetPauseEnabled(true);
    tmrMove_->SetEnabled(true);
    window_.SetText1Enabled(false);
    window_.SetLabel6("Downloading Site [" + window_.Text1() + "]");
}

void CrawlEngine::Text1_KeyDown(int keyCode) {
    if (keyCode == 13) ConnectNowNow();
}

void CrawlEngine::SetSlotStatus(int i, const std::string& text) {
    if (ValidSlot(i)) window_.SetRowStatus(i, text);
}

void CrawlEngine::ResetSlotRow(int i) {
    if (!ValidSlot(i)) return;
    window_.SetRowStatus(i, "Not Connected.");
    window_.SetRowSize(i, "0 KB");
    window_.SetRowReceived(i, "-");
}

double CrawlEngine::ConnectionsCount() const {
    return Val(window_.TxtMax());
}

void CrawlEngine::SetTimeoutInterval(int slot, int ms) {
    if (ValidSlot(slot)) tmrOut(slot).SetInterval(ms);
}

int CrawlEngine::TimeoutInterval(int slot) const {
    return ValidSlot(slot) ? timeouts_[static_cast<std::size_t>(slot - 1)]->Interval() : 0;
}

}  // namespace vantorin
