#!/bin/sh
# Runs the fault tests: the built program against misbehaving servers and
# hostile pages on port 80 inside a private network namespace. Exits 77
# (skipped) when no private namespace can be made here.
# Usage: run_faults.sh PROGRAM
set -u
here=$(cd "$(dirname "$0")" && pwd)
if ! reason=$(unshare -n -m true 2>&1); then
    echo "skipped: unshare -n -m is not permitted here: $reason"
    exit 77
fi
for tool in python3 /usr/bin/time; do
    if ! command -v "$tool" >/dev/null 2>&1; then
        echo "skipped: $tool is missing"
        exit 77
    fi
done
exec unshare -n -m python3 -u "$here/check_faults.py" "$1"
