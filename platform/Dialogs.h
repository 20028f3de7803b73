// Message box and input box. The real ones are Qt dialogs; tests and the
// headless run answer from a script and record what was asked.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace vantorin {

// Message box styles and answers, as the system's own numbers.
enum MsgStyle : int {
    kOkOnly = 0,
    kYesNo = 4,
    kCritical = 16,
    kInformation = 64,
};
enum MsgAnswer : int { kAnswerOk = 1, kAnswerYes = 6, kAnswerNo = 7 };

class Dialogs {
public:
    virtual ~Dialogs() = default;
    // style: kOkOnly or kYesNo plus kCritical or kInformation (16, 20, 64, 68).
    virtual int MsgBox(const std::string& text, const std::string& title, int style) = 0;
    // nothing on cancel.
    virtual std::optional<std::string> InputBox(const std::string& prompt, const std::string& title,
                                                const std::string& defaultText) = 0;
    // The same question as MsgBox, but the caller does not wait in it: the
    // handler that asked (often one that runs inside a yield of a save or a
    // scan) returns at once and what it interrupted goes on; `answered` gets
    // the answer when it comes, and may be empty. Boxes that answer at once
    // need nothing more than this default.
    virtual void Ask(const std::string& text, const std::string& title, int style,
                     std::function<void(int answer)> answered) {
        const int answer = MsgBox(text, title, style);
        if (answered) answered(answer);
    }
};

}  // namespace vantorin
