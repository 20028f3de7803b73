#include "extractor/FileTypesList.h"

#include "text/Strings.h"

namespace vantorin {

const std::vector<std::string>& DefaultFileTypes() {
    static const std::vector<std::string> list = {".htm", ".html", ".php", ".asp", ".txt", ".gif",
                                                  ".jpg", ".jpeg", ".png", ".pdf", ".zip", ".css"};
    return list;
}

namespace {
std::string TempFolder(const FileSystem& fs) {
    return fs.ProgramFolder() + "\\temp";
}
}  // namespace

std::string FileTypesPath(const FileSystem& fs) {
    return TempFolder(fs) + "\\filetypes.txt";
}

void SaveFileTypes(const std::vector<std::string>& list, FileSystem& fs) {
    std::string text;
    for (const auto& item : list) {
        text += Trim(item);
        text += "\r\n";
    }
    fs.WriteWhole(FileTypesPath(fs), text);
}

void MakeFileTypesFile(std::vector<std::string>& list, FileSystem& fs) {
    list = DefaultFileTypes();
    SaveFileTypes(list, fs);
}

void FillFileTypesList(std::vector<std::string>& list, FileSystem& fs) {
    fs.CreateFolder(TempFolder(fs));
    if (!fs.FileLength(FileTypesPath(fs))) MakeFileTypesFile(list, fs);
    auto lines = fs.ReadLines(FileTypesPath(fs));
    if (!lines) return;
    for (const auto& line : *lines)
        if (!Trim(line).empty()) list.push_back(line);
}

std::string LoadFileTypes(const FileSystem& fs) {
    std::string set;
    auto lines = fs.ReadLines(FileTypesPath(fs));
    if (!lines) return set;
    for (const auto& line : *lines) {
        if (Trim(line).empty()) continue;
        set += ':';
        set += LowerTrim(line);
        set += ':';
    }
    return set;
}

}  // namespace vantorin
