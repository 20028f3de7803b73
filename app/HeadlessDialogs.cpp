#include "app/HeadlessDialogs.h"

#include <cstdio>

#include "platform/Text.h"

namespace vantorin {

std::string MessageLine(const std::string& text, const std::string& title, bool yesNo) {
    std::string joined;
    if (yesNo) return joined;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = text.find_first_of("\r\n", start);
        if (end == std::string::npos) end = text.size();
        const std::string line = Trim(std::string_view(text).substr(start, end - start));
        if (!line.empty()) joined += (joined.empty() ? "" : " ") + line;
        start = end + 1;
    }
    return joined.empty() ? joined : title + ": " + joined;
}

int HeadlessDialogs::MsgBox(const std::string& text, const std::string& title, int style) {
    const bool yesNo = (style & kYesNo) == kYesNo;
    const std::string line = MessageLine(text, title, yesNo);
    if (!line.empty()) {
        if (beforePrint) beforePrint();
        std::fputs((line + "\n").c_str(), stderr);
        std::fflush(stderr);
    }
    return yesNo ? kAnswerNo : kAnswerOk;
}

std::optional<std::string> HeadlessDialogs::InputBox(const std::string& prompt, const std::string&,
                                                     const std::string&) {
    if (beforePrint) beforePrint();
    std::fputs((prompt + "\n").c_str(), stderr);
    std::fflush(stderr);
    return std::nullopt;
}

}  // namespace vantorin
