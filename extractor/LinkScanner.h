// The link scanner: rewrites every known link spelling to "href=", walks from
// one "href" to the next, makes each link absolute against the page's folder
// and hands it to queue admission.
#pragma once

#include <string>

#include "output/Mirror.h"
#include "platform/StringList.h"

namespace vantorin {

// `text` is consumed: on return it holds what followed the last "href"
// visited. `baseUrl` is made to end in "/" and written back. Handlers that run
// in the walk's yields may append to `text` or empty it (it is a slot's
// Response); the walk reads it afresh after each yield.
void ExtractLinks(std::string& text, StringList& queue, std::string& baseUrl, StringList& notTaken,
                  Mirror& m);

}  // namespace vantorin
