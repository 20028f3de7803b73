// When the command line gives up on a folder that refuses writes. Such a
// crawl would never end: a link whose placeholder cannot be written is not
// known, so it is queued again each time a page links it. The window keeps
// crawling, as it always has; the command line, which exists to finish and
// report, stops once almost none of the last downloads could be saved. A
// streak of failures alone would not do: on a full disk a deleted placeholder
// frees room for the odd page, and each such page would start the count again.
#pragma once

#include <array>
#include <string>

namespace vantorin {

class UnsavedPages {
public:
    static constexpr int kLooked = 200;  // the last downloads looked at
    static constexpr int kFewest = 10;   // saved files among them, or it gives up

    // Notes one finished download; true once the last kLooked of them saved
    // fewer than kFewest files.
    bool Note(bool written);
    // The reason, for the one line the command line prints.
    std::string GaveUpLine() const;

private:
    std::array<bool, kLooked> written_{};  // a ring of the last downloads
    int next_ = 0;
    int noted_ = 0;  // up to kLooked
    int saved_ = 0;  // among them
};

}  // namespace vantorin
