// The visible text of hostile markup: it ends, and it is never much longer
// than the markup (code page bytes map to one byte each; only line breaks
// and cell tabs are added, never more than the tags that ask for them).
#include <cstdint>
#include <string>

#include "platform/PageText.h"
#include "tests/fuzz/FuzzInput.h"

using vantorin::fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string html(reinterpret_cast<const char*>(data), size);
    const std::string text = vantorin::VisibleTextOfHtml(html);
    Check(text.size() <= 2 * html.size() + 2, "the text is at most twice the markup");
    return 0;
}
