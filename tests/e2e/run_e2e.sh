#!/bin/sh
# Runs the end-to-end tests: the built program against a real HTTP server on
# port 80 inside a private network namespace. Exits 77 (skipped) when no
# private namespace can be made here.
# Usage: run_e2e.sh PROGRAM
set -u
here=$(cd "$(dirname "$0")" && pwd)
if ! reason=$(unshare -n -m true 2>&1); then
    echo "skipped: unshare -n -m is not permitted here: $reason"
    exit 77
fi
if ! command -v python3 >/dev/null 2>&1; then
    echo "skipped: python3 is missing"
    exit 77
fi
exec unshare -n -m python3 -u "$here/check_e2e.py" "$1"
