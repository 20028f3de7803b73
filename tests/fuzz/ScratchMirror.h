// A mirror in a fresh temporary folder for one fuzzing process: the target
// folder sits at "up/mirror" and the program folder beside "up", so a write
// that climbs out of the target folder shows in the listing around it.
#pragma once

#include <set>
#include <string>

#include "output/CrawlVariables.h"
#include "output/Mirror.h"
#include "platform/FileSystem.h"
#include "tests/support/TempDir.h"

namespace vantorin::fuzz {

class ScratchMirror {
public:
    ScratchMirror();

    // Empties the target folder and the crawl's variables that a run changes,
    // so every input starts from the same state.
    void Reset();
    // Every file and folder below the temporary folder but outside the target
    // folder, with its size.
    std::set<std::string> OutsideTarget() const;
    // Aborts when anything outside the target folder changed since construction.
    void CheckNothingOutside() const;
    // Whether the target folder holds no file or folder at all.
    bool TargetEmpty() const;

    testing::TempDir tmp;
    CrawlVariables vars;
    FileSystem fs;        // target and program folder, as the program makes it
    FileSystem mirrorFs;  // target folder alone, as the engine hands it to the mirror
    Mirror m;

private:
    std::string targetNative_;
    std::set<std::string> outside_;
};

}  // namespace vantorin::fuzz
