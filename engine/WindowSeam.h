// What the crawl engine reads and writes on the main window. The window (ui/)
// implements it; engine tests use a recording fake. The engine never includes ui/.
#pragma once

#include <string>

#include "platform/StringList.h"

namespace vantorin {

class WindowSeam {
public:
    virtual ~WindowSeam() = default;

    virtual StringList& List1() = 0;  // the queue
    virtual StringList& List2() = 0;  // links on the site whose type is not wanted

    // Text1, the site address box.
    virtual std::string Text1() const = 0;
    virtual void SetText1(const std::string& text) = 0;
    virtual void SetText1Enabled(bool enabled) = 0;
    virtual void FocusText1() = 0;

    // Command1 (start) disabled means a crawl is running.
    virtual bool Command1Enabled() const = 0;
    virtual void SetCommand1Enabled(bool enabled) = 0;
    virtual void SetCommand2Enabled(bool enabled) = 0;  // stop
    virtual void SetPauseEnabled(bool enabled) = 0;     // mnupause

    // txtMax, the connections count, read afresh each time.
    virtual std::string TxtMax() const = 0;
    virtual void SetTxtMax(const std::string& text) = 0;

    virtual void SetLabel6(const std::string& caption) = 0;  // crawl status line
    virtual void SetLabel3(const std::string& caption) = 0;  // files downloaded
    virtual void SetLabel4(const std::string& caption) = 0;  // bytes
    virtual void SetLabel5(const std::string& caption) = 0;  // files queued

    // Row `slot` (1..24): status label l, size label k, received label k2.
    virtual void SetRowStatus(int slot, const std::string& caption) = 0;
    virtual void SetRowSize(int slot, const std::string& caption) = 0;
    virtual void SetRowReceived(int slot, const std::string& caption) = 0;

    // AskStop: unload the main window and show it again, reloaded from scratch.
    virtual void ReloadWindow() = 0;
    // Exit: end the program once the window has unloaded.
    virtual void EndProgram() = 0;
};

}  // namespace vantorin
