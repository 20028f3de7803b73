#include "tests/fuzz/ScratchMirror.h"

#include <filesystem>

#include "tests/fuzz/FuzzInput.h"

namespace vantorin::fuzz {

namespace fs = std::filesystem;

ScratchMirror::ScratchMirror()
    : fs(vars.TargetFolder, tmp.Backslashed() + "program"),
      mirrorFs(vars.TargetFolder, std::string()),
      m{vars, mirrorFs, {}, {}} {
    targetNative_ = tmp.NativePath("up/mirror");
    fs::create_directories(targetNative_);
    fs::create_directories(tmp.NativePath("program/temp"));
    // Files a climbing write could overwrite or append to.
    testing::WriteNativeFile(tmp.NativePath("up/log.txt"), "outside\r\n");
    testing::WriteNativeFile(tmp.NativePath("program/filters.txt"), "ads\r\n");
    Reset();
    outside_ = OutsideTarget();
}

void ScratchMirror::Reset() {
    std::error_code ec;
    for (const auto& entry : fs::directory_iterator(targetNative_, ec)) fs::remove_all(entry, ec);
    vars = CrawlVariables{};
    vars.TargetFolder = tmp.Backslashed() + "up\\mirror\\";
    vars.SiteHost = "site.com";
    vars.FileTypeSet = ":.html::.htm::.gif::.jpg::.php:";
}

std::set<std::string> ScratchMirror::OutsideTarget() const {
    return testing::ListTreeExcept(tmp.Native(), targetNative_);
}

void ScratchMirror::CheckNothingOutside() const {
    Check(OutsideTarget() == outside_, "nothing outside the target folder changes");
}

bool ScratchMirror::TargetEmpty() const {
    std::error_code ec;
    return fs::is_empty(targetNative_, ec);
}

}  // namespace vantorin::fuzz
