// The link scanner: rewrites every known link spelling to "href=", walks from
// one "href" to the next, makes each link absolute against the page's folder
// and hands it to queue admission.
#pragma once

#include <string>

#include "extractor/Admission.h"
#include "platform/Task.h"

namespace vantorin {

// `text` is consumed: at the end it holds what followed the last "href"
// visited. The walk lets pending events run five times at each "href" and
// once more after each queued link; handlers that run then may append to
// `text` or empty it (it is a connection's response), so the walk reads it
// afresh after every wait. `base` is the page's folder address.
Task<> ExtractLinks(std::string& text, std::string base, Admission to);

}  // namespace vantorin
