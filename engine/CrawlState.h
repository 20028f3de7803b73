// What the design keeps in the main window's controls, without the window:
// the queue List1 and List2, the address Text1, the connections count txtMax,
// the enabled states of the start and stop buttons and the pause menu, the 24
// rows' texts, the counter captions, the counters and Stopping. The crawl's
// rules read and write it here; the window renders it, and the command line
// reads it with no widget at all. Every change is told to onChange after it
// is made.
//
// A crawl is running exactly while the start button Command1 is disabled:
// the flag lives here and the button mirrors it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "platform/StringList.h"

namespace vantorin {

inline constexpr int kSlotCount = 24;

// One connection row: status label l, size label k, received label k2.
struct RowTexts {
    std::string Status = "Not Connected.";
    std::string Size = "0 KB";
    std::string Received = "-";
};

// The part of the state that changed; `slot` names the row for the row texts.
enum class StateChange {
    Text1,
    Text1Enabled,
    Text1Focus,  // asked for, not kept: "give Text1 the focus"
    txtMax,
    Command1,
    Command2,
    mnupause,
    Captions,  // Label3, Label4, Label5, Label6
    Row,
};

class CrawlState {
public:
    // A freshly loaded window: the designed captions, every row "Not
    // Connected.", txtMax "4", the start button enabled, counters at 0.
    void Reset();

    StringList List1;  // the queue, newest last
    StringList List2;  // links on the site whose type is not wanted

    const std::string& Text1() const { return text1_; }
    void SetText1(std::string text);
    bool Text1Enabled() const { return text1Enabled_; }
    void SetText1Enabled(bool enabled);
    void FocusText1() { Tell(StateChange::Text1Focus); }

    // The connections count, read afresh as a number each time it is needed.
    const std::string& txtMax() const { return txtMax_; }
    void SetTxtMax(std::string text);

    bool Command1Enabled() const { return command1_; }
    void SetCommand1Enabled(bool enabled);
    bool Command2Enabled() const { return command2_; }
    void SetCommand2Enabled(bool enabled);
    bool mnupauseEnabled() const { return mnupause_; }
    void SetPauseEnabled(bool enabled);
    bool Running() const { return !command1_; }

    const std::string& Label3() const { return label3_; }  // files downloaded
    const std::string& Label4() const { return label4_; }  // bytes
    const std::string& Label5() const { return label5_; }  // files queued
    const std::string& Label6() const { return label6_; }  // the crawl's status line
    void SetLabel3(std::string caption) { SetCaption(label3_, std::move(caption)); }
    void SetLabel4(std::string caption) { SetCaption(label4_, std::move(caption)); }
    void SetLabel5(std::string caption) { SetCaption(label5_, std::move(caption)); }
    void SetLabel6(std::string caption) { SetCaption(label6_, std::move(caption)); }

    // Row `slot`, 1..24; a number outside that names no row and is ignored.
    const RowTexts& Row(int slot) const;
    void SetRowStatus(int slot, std::string text);
    void SetRowSize(int slot, std::string text);
    void SetRowReceived(int slot, std::string text);

    // Counters shown by the captions. Stopping is set by a stop just before the
    // window reloads, so the reload's unload asks nothing; the reloaded window
    // clears it on its first activation. A reset keeps it.
    std::int32_t TotalBytes = 0;
    std::int32_t FilesDone = 0;
    bool Stopping = false;

    std::function<void(StateChange, int slot)> onChange;

private:
    void Tell(StateChange change, int slot = 0) {
        if (onChange) onChange(change, slot);
    }
    void SetCaption(std::string& caption, std::string text);
    void SetRowText(int slot, std::string RowTexts::*field, std::string text);

    std::string text1_;
    bool text1Enabled_ = true;
    std::string txtMax_ = "4";
    bool command1_ = true;
    bool command2_ = false;
    bool mnupause_ = false;
    std::string label3_ = "0 Files";
    std::string label4_ = "0 Bytes";
    std::string label5_ = "0 Files";
    std::string label6_ = "Not Connected.";
    std::array<RowTexts, kSlotCount> rows_{};
};

}  // namespace vantorin
