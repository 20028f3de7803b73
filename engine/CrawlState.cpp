#include "engine/CrawlState.h"

namespace vantorin {

namespace {

// Row texts asked of a slot outside 1..24.
const RowTexts kNoRow{"", "", ""};

bool ValidRow(int slot) {
    return slot >= 1 && slot <= kSlotCount;
}

}  // namespace

void CrawlState::Reset() {
    List1.Clear();
    List2.Clear();
    SetText1("");
    SetText1Enabled(true);
    SetTxtMax("4");
    SetCommand1Enabled(true);
    SetCommand2Enabled(false);
    SetPauseEnabled(false);
    SetLabel3("0 Files");
    SetLabel4("0 Bytes");
    SetLabel5("0 Files");
    SetLabel6("Not Connected.");
    for (int slot = 1; slot <= kSlotCount; ++slot) {
        SetRowStatus(slot, "Not Connected.");
        SetRowSize(slot, "0 KB");
        SetRowReceived(slot, "-");
    }
    TotalBytes = 0;
    FilesDone = 0;
}

void CrawlState::SetText1(std::string text) {
    if (text == text1_) return;
    text1_ = std::move(text);
    Tell(StateChange::Text1);
}

void CrawlState::SetText1Enabled(bool enabled) {
    if (enabled == text1Enabled_) return;
    text1Enabled_ = enabled;
    Tell(StateChange::Text1Enabled);
}

void CrawlState::SetTxtMax(std::string text) {
    if (text == txtMax_) return;
    txtMax_ = std::move(text);
    Tell(StateChange::txtMax);
}

void CrawlState::SetCommand1Enabled(bool enabled) {
    if (enabled == command1_) return;
    command1_ = enabled;
    Tell(StateChange::Command1);
}

void CrawlState::SetCommand2Enabled(bool enabled) {
    if (enabled == command2_) return;
    command2_ = enabled;
    Tell(StateChange::Command2);
}

void CrawlState::SetPauseEnabled(bool enabled) {
    if (enabled == mnupause_) return;
    mnupause_ = enabled;
    Tell(StateChange::mnupause);
}

void CrawlState::SetCaption(std::string& caption, std::string text) {
    if (text == caption) return;
    caption = std::move(text);
    Tell(StateChange::Captions);
}

const RowTexts& CrawlState::Row(int slot) const {
    return ValidRow(slot) ? rows_[static_cast<std::size_t>(slot - 1)] : kNoRow;
}

void CrawlState::SetRowText(int slot, std::string RowTexts::*field, std::string text) {
    if (!ValidRow(slot)) return;
    std::string& current = rows_[static_cast<std::size_t>(slot - 1)].*field;
    if (text == current) return;
    current = std::move(text);
    Tell(StateChange::Row, slot);
}

void CrawlState::SetRowStatus(int slot, std::string text) {
    SetRowText(slot, &RowTexts::Status, std::move(text));
}

void CrawlState::SetRowSize(int slot, std::string text) {
    SetRowText(slot, &RowTexts::Size, std::move(text));
}

void CrawlState::SetRowReceived(int slot, std::string text) {
    SetRowText(slot, &RowTexts::Received, std::move(text));
}

}  // namespace vantorin
