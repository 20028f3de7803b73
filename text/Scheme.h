// The one rule for an address's "http://", wherever an address is cleaned:
// the first seven characters compared without regard to case.
#pragma once

#include <string>
#include <string_view>

namespace vantorin {

bool StartsWithHttp(std::string_view address);
// The address from its 8th character when it starts with "http://", else as it is.
std::string DropHttp(std::string_view address);

}  // namespace vantorin
