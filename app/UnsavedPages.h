// When the command line gives up on a folder that refuses writes. Such a
// crawl would never end: a link whose placeholder cannot be written is not
// known, so it is queued again each time a page links it. The window keeps
// crawling, as it always has; the command line, which exists to finish and
// report, stops once 200 downloads in a row could not be saved, or 200 more
// could not be saved than could. The second rule ends a full disk on which a
// deleted placeholder now and then frees room for one more page: each such
// page would start a count in a row anew, but it can happen once per page.
#pragma once

#include <cstdint>
#include <string>

namespace vantorin {

class UnsavedPages {
public:
    static constexpr std::int64_t kMargin = 200;

    // Notes one finished download; true once it is time to give up.
    bool Note(bool written);
    // The reason, for the one line the command line prints.
    std::string GaveUpLine() const;

private:
    std::int64_t saved_ = 0;
    std::int64_t unsaved_ = 0;
    std::int64_t inARow_ = 0;
};

}  // namespace vantorin
