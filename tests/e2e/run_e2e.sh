#!/bin/sh
# Runs an end-to-end checker (check_e2e.py unless named) with the built
# program inside a private network namespace. Exits 77 (skipped) when no
# private namespace can be made here.
# Usage: run_e2e.sh PROGRAM [CHECKER]
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
exec unshare -n -m python3 -u "$here/${2:-check_e2e.py}" "$1"
