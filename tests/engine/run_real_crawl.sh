#!/bin/sh
# Runs the real-socket crawl test inside a private network namespace: loopback
# up, a hosts file naming www.testsite.test as 127.0.0.1 bind-mounted over
# /etc/hosts, and an HTTP server on port 80 serving the fixture site.
# Usage: run_real_crawl.sh CRAWL_TEST_PROGRAM FIXTURE_FOLDER
# A normal user maps itself to root in a user namespace of its own.
# Exits 77 (skipped) when a private namespace cannot be made here.
set -u
if [ "$(id -u)" = "0" ]; then enter="unshare -n -m"; else enter="unshare -r -n -m"; fi
$enter true 2>/dev/null || { echo "skipped: no private network namespace here ($enter)"; exit 77; }
exec $enter sh -c '
    ip link set lo up && work=$(mktemp -d) || exit 1
    echo "127.0.0.1 localhost www.testsite.test testsite.test" > "$work/hosts"
    mount --bind "$work/hosts" /etc/hosts || exit 1
    python3 -m http.server 80 --bind 127.0.0.1 --directory "$2" > "$work/server.log" 2>&1 &
    server=$!
    for try in $(seq 100); do
        python3 -c "import socket; socket.create_connection((\"127.0.0.1\", 80), 1)" 2>/dev/null && break
        sleep 0.1
    done
    "$1"; status=$?
    kill "$server"; rm -rf "$work"
    exit "$status"
' sh "$1" "$2"
