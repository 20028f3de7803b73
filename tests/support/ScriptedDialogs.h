#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Dialogs.h"

namespace vantorin::testing {

// Dialogs that answer from a script and record each message box as one line,
// "title style: text", so a test compares what was asked in one expression.
class ScriptedDialogs : public Dialogs {
public:
    int MsgBox(const std::string& text, const std::string& title, int style) override {
        asked.push_back(title + " " + std::to_string(style) + ": " + text);
        if (answers.empty()) return kAnswerOk;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    // A question asked without waiting is answered at once from the script,
    // unless answers are held: then it is recorded and its answer waits in
    // `held` until the test gives it.
    void Ask(const std::string& text, const std::string& title, int style,
             std::function<void(int answer)> answered) override {
        if (!holdAnswers) return Dialogs::Ask(text, title, style, std::move(answered));
        asked.push_back(title + " " + std::to_string(style) + ": " + text);
        held.push_back(std::move(answered));
    }
    std::optional<std::string> InputBox(const std::string&, const std::string&,
                                        const std::string&) override {
        if (inputs.empty()) return std::nullopt;
        auto input = inputs.front();
        inputs.pop_front();
        return input;
    }
    std::vector<std::string> asked;  // "title style: text"
    std::deque<int> answers;
    std::deque<std::optional<std::string>> inputs;
    bool holdAnswers = false;
    std::vector<std::function<void(int answer)>> held;
};

}  // namespace vantorin::testing
