#include "app/HeadlessDialogs.h"

#include <cstdio>

#include "platform/Text.h"

namespace vantorin {

std::string MessageLine(const std::string& text, const std::string& title) {
    return title + ": " + Replace(Replace(text, "\r\n", "\n"), "\r", "\n");
}

int HeadlessDialogs::MsgBox(const std::string& text, const std::string& title, int style) {
    if (beforePrint) beforePrint();
    const std::string line = MessageLine(text, title) + "\n";
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
    return (style & kYesNo) == kYesNo ? kAnswerNo : kAnswerOk;
}

std::optional<std::string> HeadlessDialogs::InputBox(const std::string& prompt, const std::string&,
                                                     const std::string&) {
    if (beforePrint) beforePrint();
    std::fputs((prompt + "\n").c_str(), stderr);
    std::fflush(stderr);
    return std::nullopt;
}

}  // namespace vantorin
