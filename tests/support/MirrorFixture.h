// A crawl mirror in a fresh temporary folder for the mirror's and the
// extractor's tests, the target folder two levels down.
#pragma once

#include <filesystem>
#include <string>

#include "extractor/Admission.h"
#include "output/Mirror.h"
#include "platform/FileSystem.h"
#include "platform/PageTextFile.h"
#include "tests/support/HandTurnedLoop.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

struct MirrorFixture {
    TempDir tmp;
    FileSystem files{tmp.Backslashed() + "up\\mirror\\", tmp.Backslashed() + "program"};
    HandTurnedLoop loop;
    Mirror m{tmp.Backslashed() + "up\\mirror\\", "site.com", {}, {}, files, VisiblePageText, loop};
    std::string wantedTypes = ":.html::.htm::.gif::.jpg:";
    KeywordFilters filters;
    AddressList queue, notTaken;
    Admission admission{m, wantedTypes, filters, queue, notTaken};

    MirrorFixture() { std::filesystem::create_directories(tmp.NativePath("up/mirror")); }

    // A native path below the target folder, from a relative path with "/".
    std::string Target(const std::string& rel) const { return tmp.NativePath("up/mirror/" + rel); }
};

}  // namespace vantorin::testing
