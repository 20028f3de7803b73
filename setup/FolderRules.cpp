#include "setup/FolderRules.h"

#include "output/LocalPath.h"
#include "text/Strings.h"

namespace vantorin {

std::string NormaliseFolderText(std::string_view text) {
    std::string folder = Replace(CleanLinkName(text), "/", "\\");
    if (LastChar(folder) != "\\") folder += "\\";
    return folder;
}

bool TestFolderWritable(const std::string& folder, FileSystem& fs) {
    const std::string probe = folder + "test23893.txt";
    if (!fs.WriteWhole(probe, "sdkjlf\r\n")) return false;
    return fs.DeleteFile(probe);
}

}  // namespace vantorin
