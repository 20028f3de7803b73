// Message boxes and the input box as Qt dialogs: shown with open() and
// answered in a callback, modal to the whole program, standing over the
// dialog they block or else the active window.
#pragma once

#include "platform/Dialogs.h"

namespace vantorin {

class QtDialogs : public Dialogs {
public:
    void Ask(const std::string& text, const std::string& title, int style,
             std::function<void(int answer)> answered) override;
    void AskText(const std::string& prompt, const std::string& title,
                 const std::string& defaultText,
                 std::function<void(std::optional<std::string>)> answered) override;
};

}  // namespace vantorin
