// Message boxes and the input box as Qt dialogs, parented to the active window.
#pragma once

#include "platform/Dialogs.h"

namespace vantorin {

class QtDialogs : public Dialogs {
public:
    int MsgBox(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& defaultText) override;
};

}  // namespace vantorin
