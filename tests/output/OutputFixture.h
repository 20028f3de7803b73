// A mirror in a fresh temporary folder for the saver's and the records'
// tests. The target folder sits two levels down, so anything climbing out of
// it lands in the folders around it, where the tests look for it.
#pragma once

#include <filesystem>
#include <set>
#include <string>

#include "output/CrawlVariables.h"
#include "output/Mirror.h"
#include "platform/FileSystem.h"
#include "platform/PageText.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

struct OutputFixture {
    TempDir tmp;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, tmp.Backslashed() + "program"};
    Mirror m{vars,
             fs,
             [](const std::string& path) {
                 return VisiblePageText(FileSystem::ToNative(path).string());
             },
             {}};

    OutputFixture() {
        vars.TargetFolder = tmp.Backslashed() + "up\\mirror\\";
        vars.SiteHost = "site.com";
        std::filesystem::create_directories(tmp.NativePath("up/mirror"));
    }

    // A native path below the target folder, from a relative path with "/".
    std::string Target(const std::string& relative) const {
        return tmp.NativePath("up/mirror/" + relative);
    }

    // Every file and folder below the temporary folder but outside the target.
    std::set<std::string> OutsideTarget() const {
        namespace fs = std::filesystem;
        std::set<std::string> seen;
        const fs::path target(tmp.NativePath("up/mirror"));
        std::error_code ec;
        for (auto it = fs::recursive_directory_iterator(tmp.Native(), ec);
             it != fs::recursive_directory_iterator(); it.increment(ec)) {
            if (it->path() == target) {
                it.disable_recursion_pending();
                continue;
            }
            seen.insert(it->path().string());
        }
        return seen;
    }
};

}  // namespace vantorin::testing
