#include "setup/FolderRules.h"

#include "output/LocalPath.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

void EndWithBackslash(std::string& path) {
    if (LastChar(path) != "\\") path += "\\";
}

}  // namespace

std::string NormaliseFolderText(std::string_view text) {
    std::string folder = Replace(CleanLinkName(text), "/", "\\");
    EndWithBackslash(folder);
    return folder;
}

bool TestFolderWritable(std::string& path, FileSystem& fs) {
    ReplaceIn(path, "/", "\\");
    EndWithBackslash(path);
    const std::string probe = path + "test23893.txt";
    if (!fs.WriteWhole(probe, "sdkjlf\r\n")) return false;
    return fs.DeleteFile(probe);
}

}  // namespace vantorin
