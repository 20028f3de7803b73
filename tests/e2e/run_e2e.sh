#!/bin/sh
# Runs an end-to-end checker (check_e2e.py unless named) with the built
# program inside a private network, mount and pid namespace: as root directly,
# as a normal user in a user namespace of its own. The pid namespace (with a
# /proc of its own, which the leak checker reads) ends every program the
# checker started when the checker ends, also when a time limit kills it.
# Exits 77 (skipped) when no such namespace can be made here, or a tool it
# needs is missing; 1 instead where VANTORIN_E2E_REQUIRED is set (CI), so a
# machine that cannot run them fails rather than passes unseen.
# Usage: run_e2e.sh PROGRAM [CHECKER]
set -u
skipped=77
[ -n "${VANTORIN_E2E_REQUIRED:-}" ] && skipped=1
namespace="unshare -n -m -p --mount-proc --kill-child"
[ "$(id -u)" -eq 0 ] || namespace="unshare -r -n -m -p --mount-proc --kill-child"
for tool in python3 /usr/bin/time; do
    command -v $tool >/dev/null || { echo "skipped: $tool is missing"; exit $skipped; }
done
if ! reason=$($namespace true 2>&1); then
    echo "skipped: $namespace is not permitted here: $reason"
    exit $skipped
fi
exec $namespace python3 -u "$(dirname "$0")/${2:-check_e2e.py}" "$1"
