// The message and input boxes of the headless run: every message is printed
// to stderr, every Yes/No question is answered No without a word (the command
// line says its own closing lines), OK boxes OK, input boxes cancelled.
#pragma once

#include <functional>
#include <string>

#include "platform/Dialogs.h"

namespace vantorin {

class HeadlessDialogs : public Dialogs {
public:
    int MsgBox(const std::string& text, const std::string& title, int style) override;
    std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                        const std::string& defaultText) override;

    // Called before anything is printed (to end a redrawn progress line).
    std::function<void()> beforePrint;
};

// "Title: text" on one line, the box's lines joined by blanks; "" for a
// Yes/No box, which the command line answers itself.
std::string MessageLine(const std::string& text, const std::string& title, bool yesNo);

}  // namespace vantorin
