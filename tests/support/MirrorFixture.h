// A crawl mirror in a fresh temporary folder for the mirror's and the
// extractor's tests, the target folder two levels down.
#pragma once

#include <filesystem>
#include <string>

#include "output/CrawlVariables.h"
#include "output/Mirror.h"
#include "platform/FileSystem.h"
#include "text/PageText.h"
#include "platform/StringList.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

struct MirrorFixture {
    TempDir tmp;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, tmp.Backslashed() + "program"};
    Mirror m{vars,
             fs,
             [](const std::string& path) {
                 return VisiblePageText(FileSystem::ToNative(path).string());
             },
             {}};
    StringList queue;
    StringList notTaken;

    MirrorFixture() {
        vars.TargetFolder = tmp.Backslashed() + "up\\mirror\\";
        vars.SiteHost = "site.com";
        vars.FileTypeSet = ":.html::.htm::.gif::.jpg:";
        std::filesystem::create_directories(tmp.NativePath("up/mirror"));
    }

    // A native path below the target folder, from a relative path with "/".
    std::string Target(const std::string& relative) const {
        return tmp.NativePath("up/mirror/" + relative);
    }
};

}  // namespace vantorin::testing
