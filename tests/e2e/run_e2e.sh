#!/bin/sh
# Runs an end-to-end checker (check_e2e.py unless named) with the built
# program inside a private network namespace; a normal user maps itself to
# root in a user namespace of its own. Exits 77 (skipped) when no private
# namespace can be made here.
# Usage: run_e2e.sh PROGRAM [CHECKER]
set -u
here=$(cd "$(dirname "$0")" && pwd)
if [ "$(id -u)" = "0" ]; then enter="unshare -n -m"; else enter="unshare -r -n -m"; fi
if ! reason=$($enter true 2>&1); then
    echo "skipped: $enter is not permitted here: $reason"
    exit 77
fi
if ! command -v python3 >/dev/null 2>&1; then
    echo "skipped: python3 is missing"
    exit 77
fi
exec $enter python3 -u "$here/${2:-check_e2e.py}" "$1"
