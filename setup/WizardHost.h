// What the New Site Wizard needs from the main window. The window (ui/)
// implements it; setup tests use a recording fake.
#pragma once

#include <string>

namespace vantorin {

class WizardHost {
public:
    virtual ~WizardHost() = default;

    // The main window's address box Text1.
    virtual void SetText1(const std::string& text) = 0;
    // Starts the crawl of the address in Text1; returns once the start is done.
    virtual void ConnectNowNow() = 0;

    // Timeout timer tmrOut(slot), slot 1..24, interval in ms. Returns false when
    // the timer cannot take the interval (negative, or more than it can hold);
    // the wizard then stops at that slot, so later slots keep the old interval.
    virtual bool SetTmrOutInterval(int slot, long long ms) = 0;
    virtual long long TmrOutInterval(int slot) const = 0;

    // Shows the keyword filter dialog (zFilter) modelessly: the caller goes on
    // at once and the dialog outlives the wizard.
    virtual void ShowKeywordFilterDialog() = 0;
};

}  // namespace vantorin
