// Ending jobs and crawls: the timeout with its retries, completion, stop,
// pause, exit, and the counters.
#include "engine/CrawlEngine.h"
#include "output/Records.h"
#include "output/SaveFile.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

namespace vantorin {

void CrawlEngine::tmrOut_Timer(int i) {
    if (!ValidSlot(i)) return;
    const unsigned attempt = AttemptId(i);
    {
        const ConnectionSlot& s = Slot(i);
        // The blank-backslash-blank name differs from a finished download's
        // on purpose; the save step treats it as the timeout's own name.
        std::string name = " \\ " + s.Host + s.Path;
        const std::string host = s.Host;
        SaveFile("Unable to download this file. (Timeout)", name, host, mirror_, state_.FilesDone);
    }
    LetPendingEventsRun();
    // A stop or a new job on this slot while events ran leaves nothing to retry.
    if (AttemptId(i) != attempt) return;
    Sock(i).Close();
    ResetSlotRow(i);

    ConnectionSlot& s = Slot(i);
    if (s.Attempts == 1 || s.Attempts == 2) {
        // Response, BytesReceived and ContentLength are kept: the failed
        // attempt's data stays in front of the new one, as designed.
        ++s.Attempts;
        ++AttemptId(i);
        SetSlotStatus(i, "Connecting to " + s.Host);
        Sock(i).Connect(s.Host, 80);
    } else if (state_.List1.ListCount() == 0 && AllSocketsClosed()) {
        SiteComplete();
    }
}

bool CrawlEngine::AllSocketsClosed() const {
    for (int i = 1; i <= kSlotCount; ++i) {
        if (Sock(i).State() != kSockClosed) return false;
    }
    return true;
}

void CrawlEngine::SiteComplete() {
    if (!Running()) return;
    StopNOW();
    state_.SetLabel6("Website Downloaded!");
    RemoveTempFiles(mirror_);
    LetPendingEventsRun();
    const int answer =
        dialogs_.MsgBox(std::string(kSiteDownloadedText) +
                            "\r\n\r\nWould you like to browse the download directory?",
                        "Done.", kYesNo + kInformation);
    if (answer == kAnswerYes) shell_.OpenFolder(vars_.TargetFolder);
    Report(CrawlOutcome::SiteComplete);
}

void CrawlEngine::StopNOW() {
    // The tick goes first so that no connection starts while the slots are torn down.
    tmrMove_->SetEnabled(false);
    RemoveTempFiles(mirror_);
    state_.List1.Clear();
    CloseAllSockets();
    for (int i = 1; i <= kSlotCount; ++i) {
        SetSlotStatus(i, "Not Connected.");
        ConnectionSlot& s = Slot(i);
        s.Path = "";
        s.Url = "";
        s.Host = "";
        s.Response = "";
        ++AttemptId(i);
        Sock(i).Close();
        tmrOut(i).SetEnabled(false);
    }
    state_.SetCommand2Enabled(false);
    state_.SetCommand1Enabled(true);
    state_.SetText1Enabled(true);
    state_.FocusText1();
}

void CrawlEngine::AskStop(std::function<void()> afterAnswer) {
    // Asked without waiting in the question: the save or scan that the click
    // interrupted goes on, and a crawl that completes meanwhile ends as
    // designed ("Done." asked) before the answer's own steps run.
    dialogs_.Ask("Are you sure you want to cancel downloading the current website?",
                 "Stop Download", kYesNo + kInformation,
                 [this, afterAnswer = std::move(afterAnswer)](int answer) {
                     if (answer == kAnswerYes) StopConfirmed();
                     if (afterAnswer) afterAnswer();
                 });
}

void CrawlEngine::StopConfirmed() {
    StopNOW();
    // The reloaded window's unload must not ask the exit question.
    state_.Stopping = true;
    Report(CrawlOutcome::Stopped);
    LetPendingEventsRun();
    state_.SetLabel6("Operation Cancelled.");
    state_.SetPauseEnabled(false);
}

void CrawlEngine::PauseBegin() {
    tmrMove_->SetEnabled(false);
}

void CrawlEngine::PauseEnd() {
    tmrMove_->SetEnabled(true);
}

void CrawlEngine::AskExit(std::function<void(bool unload)> answered) {
    if (state_.Stopping) {
        answered(true);
        return;
    }
    dialogs_.Ask("Are you sure you want to exit?", "Exit Vantorin", kYesNo + kInformation,
                 [this, answered = std::move(answered)](int answer) {
                     if (answer == kAnswerNo) {
                         answered(false);
                         return;
                     }
                     if (Running()) StopNOW();
                     RemoveTempFiles(mirror_);
                     LetPendingEventsRun();
                     tmrMove_->SetEnabled(false);
                     CloseAllSockets();
                     if (onEndProgram) onEndProgram();
                     answered(true);
                 });
}

void CrawlEngine::UpdateStats() {
    state_.SetLabel5(std::to_string(state_.List1.ListCount()) + " Files");
    state_.SetLabel3(Trim(FormatThousands(std::to_string(state_.FilesDone))) + " Files");
    state_.SetLabel4(Trim(FormatThousands(std::to_string(state_.TotalBytes))) + " Bytes");
}

}  // namespace vantorin
