#include "app/UnsavedPages.h"

namespace vantorin {

bool UnsavedPages::Note(bool written) {
    bool& slot = written_[static_cast<std::size_t>(next_)];
    if (noted_ == kLooked) saved_ -= slot;
    slot = written;
    saved_ += written;
    next_ = (next_ + 1) % kLooked;
    if (noted_ < kLooked) ++noted_;
    return noted_ == kLooked && saved_ < kFewest;
}

std::string UnsavedPages::GaveUpLine() const {
    return "Gave up: " + std::to_string(kLooked - saved_) + " of the last " +
           std::to_string(kLooked) + " pages could not be saved; the folder refuses writes.";
}

}  // namespace vantorin
