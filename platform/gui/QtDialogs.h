// Message boxes and the input box as Qt dialogs, application-modal, standing
// over the dialog they block or else the active window.
#pragma once

#include "platform/Dialogs.h"

namespace vantorin {

class QtDialogs : public Dialogs {
public:
    int MsgBox(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& defaultText) override;
    // Shows the box and returns at once; no event loop is nested.
    void Ask(const std::string& text, const std::string& title, int style,
             std::function<void(int answer)> answered) override;
};

}  // namespace vantorin
