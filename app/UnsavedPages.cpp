#include "app/UnsavedPages.h"

#include "text/CountText.h"

namespace vantorin {

bool UnsavedPages::Note(bool written) {
    if (written) {
        ++saved_;
        inARow_ = 0;
    } else {
        ++unsaved_;
        ++inARow_;
    }
    return inARow_ >= kMargin || unsaved_ - saved_ >= kMargin;
}

std::string UnsavedPages::GaveUpLine() const {
    return "Gave up after " + CountOf(unsaved_, "page", "pages") + " that could not be saved (" +
           FormatThousands(std::to_string(saved_)) + " saved); the folder refuses writes.";
}

}  // namespace vantorin
