#!/bin/sh
# Runs the real-socket crawl test inside a private network namespace: loopback
# up, a hosts file naming www.testsite.test as 127.0.0.1 bind-mounted over
# /etc/hosts, and an HTTP server on port 80 serving the fixture site.
# Usage: run_real_crawl.sh CRAWL_TEST_PROGRAM FIXTURE_FOLDER
# Exits 77 (skipped) when a private namespace cannot be made here.
set -u
program=$1
fixture=$2

if ! reason=$(unshare -n -m true 2>&1); then
    echo "skipped: unshare -n -m is not permitted here: $reason"
    exit 77
fi

exec unshare -n -m sh -c '
    program=$1
    fixture=$2
    ip link set lo up || exit 1
    work=$(mktemp -d) || exit 1
    printf "127.0.0.1 localhost www.testsite.test testsite.test\n" > "$work/hosts"
    mount --bind "$work/hosts" /etc/hosts || exit 1
    python3 -u -m http.server 80 --bind 127.0.0.1 --directory "$fixture" \
        > "$work/server.log" 2>&1 &
    server=$!
    tries=0
    until python3 -c "import socket; socket.create_connection((\"127.0.0.1\", 80), 1).close()" \
            2>/dev/null; do
        tries=$((tries + 1))
        if [ "$tries" -gt 100 ]; then
            echo "the fixture server did not start:"
            cat "$work/server.log"
            kill "$server"
            exit 1
        fi
        sleep 0.1
    done
    VANTORIN_CRAWL_SERVER_LOG="$work/server.log" "$program"
    status=$?
    kill "$server"
    wait "$server" 2>/dev/null
    rm -rf "$work"
    exit "$status"
' sh "$program" "$fixture"
