#include "platform/PageTextFile.h"

#include "platform/FileSystem.h"
#include "platform/FolderTree.h"
#include "text/HtmlDocument.h"
#include "text/PageText.h"

namespace vantorin {

std::string VisiblePageText(const std::string& path) {
    std::string unread;
    return VisibleTextOfHtml(
        ReadFileStart(FileSystem::ToNative(path).string(), kMaxPageBytes, unread).value_or(""));
}

}  // namespace vantorin
