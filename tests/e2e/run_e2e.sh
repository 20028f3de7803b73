#!/bin/sh
# Runs an end-to-end checker (check_e2e.py unless named) with the built
# program inside a private network and mount namespace: as root directly, as
# a normal user in a user namespace of its own. Exits 77 (skipped) when no
# such namespace can be made here, or a tool it needs is missing.
# Usage: run_e2e.sh PROGRAM [CHECKER]
set -u
namespace="unshare -n -m"
[ "$(id -u)" -eq 0 ] || namespace="unshare -r -n -m"
for tool in python3 /usr/bin/time; do
    command -v $tool >/dev/null || { echo "skipped: $tool is missing"; exit 77; }
done
if ! reason=$($namespace true 2>&1); then
    echo "skipped: $namespace is not permitted here: $reason"
    exit 77
fi
exec $namespace python3 -u "$(dirname "$0")/${2:-check_e2e.py}" "$1"
