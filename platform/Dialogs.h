// Message boxes and the input box, asked without waiting: the caller goes on
// at once and the answer comes to a callback when the user gives it. The real
// ones are Qt dialogs; tests answer from a script and record what was asked.
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
    // `answered` may be empty.
    virtual void Ask(const std::string& text, const std::string& title, int style,
                     std::function<void(int answer)> answered) = 0;
    // The typed text, or nothing when the box is cancelled.
    virtual void AskText(const std::string& prompt, const std::string& title,
                         const std::string& defaultText,
                         std::function<void(std::optional<std::string>)> answered) = 0;
};

}  // namespace vantorin
