#include "text/Scheme.h"

#include "text/Strings.h"

namespace vantorin {

bool StartsWithHttp(std::string_view address) {
    return LCase(Left(address, 7)) == "http://";
}

std::string DropHttp(std::string_view address) {
    return StartsWithHttp(address) ? Mid(address, 8) : std::string(address);
}

}  // namespace vantorin
