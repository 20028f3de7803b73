#!/bin/sh
# The offline check benchmark: generates mirrors of 100,000 pages with 30 and
# with 10 links each (3,000,000 and 1,000,000 links) and of 10,000 pages with
# 30, in a folder under /tmp removed afterwards, and times `PROGRAM --check`
# on each (wall and CPU time, peak resident memory), the page cache warm.
# Usage: run.sh PROGRAM
set -eu
here=$(cd "$(dirname "$0")" && pwd)
program=$1
for tool in /usr/bin/time python3; do
    command -v "$tool" >/dev/null 2>&1 || { echo "check benchmark: $tool is missing" >&2; exit 1; }
done
work=$(mktemp -d "${TMPDIR:-/tmp}/vantorin-check-bench-XXXXXX")
trap 'rm -rf "$work"' EXIT
echo "| pages | links | wall s | CPU s | peak RSS MB | exit |"
echo "|---|---|---|---|---|---|"
for shape in "100000 30" "100000 10" "10000 30"; do
    set -- $shape
    rm -rf "$work/mirror"
    python3 "$here/gen_mirror.py" "$work/mirror" "$1" "$2"
    "$program" --check "$work/mirror" >/dev/null || true  # warms the page cache
    status=0
    /usr/bin/time -o "$work/time" -f "%e %U %S %M" "$program" --check "$work/mirror" \
        >"$work/report" || status=$?
    # The last line: time puts "Command exited with non-zero status" before it.
    read -r wall user sys rss <<EOF
$(tail -n 1 "$work/time")
EOF
    echo "| $1 | $(($1 * $2)) | $wall | $(awk "BEGIN { print $user + $sys }") | $((rss / 1024)) | $status |"
    head -n 1 "$work/report" >&2
done
