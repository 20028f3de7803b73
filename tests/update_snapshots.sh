#!/bin/sh
# Writes the windows' snapshot files (tests/*/snapshots/*.txt) anew from the
# built tests; review the change with `git diff` as you would code.
# Usage: tests/update_snapshots.sh [BUILD_FOLDER]
set -eu
build=${1:-build}
for suite in ui setup; do
    VANTORIN_UPDATE_SNAPSHOTS=1 QT_QPA_PLATFORM=offscreen \
        "$build/tests/test_$suite" --gtest_filter='*Snapshot*' >/dev/null
done
git -C "$(dirname "$0")/.." status --short -- tests/ui/snapshots tests/setup/snapshots
