#!/bin/sh
# Runs an end-to-end checker (check_e2e.py unless named) with the built
# program inside a private network and mount namespace: as root directly, as
# a normal user in a user namespace of its own. Exits 77 (skipped) when no
# such namespace can be made here.
# Usage: run_e2e.sh PROGRAM [CHECKER]
set -u
here=$(cd "$(dirname "$0")" && pwd)
if [ "$(id -u)" -eq 0 ]; then
    namespace="unshare -n -m"
else
    namespace="unshare -r -n -m"
fi
if ! reason=$($namespace true 2>&1); then
    echo "skipped: $namespace is not permitted here: $reason"
    exit 77
fi
if ! command -v python3 >/dev/null 2>&1; then
    echo "skipped: python3 is missing"
    exit 77
fi
exec $namespace python3 -u "$here/${2:-check_e2e.py}" "$1"
