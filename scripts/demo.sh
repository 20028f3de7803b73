#!/bin/sh
# `make demo`: serves the bundled sample site on port 80 of a private network
# namespace (loopback only), mirrors it with the command line into a fresh
# folder, and shows what was saved. Needs no display.
# Usage: demo.sh PROGRAM
set -eu
program=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
site=$(cd "$(dirname "$0")/../tests/e2e/demo-site" && pwd)
out=$(mktemp -d "${TMPDIR:-/tmp}/vantorin-demo-XXXXXX")

if [ "$(id -u)" = "0" ]; then
    enter="unshare -n -m"
else
    # A normal user maps itself to root in a user namespace of its own.
    enter="unshare -r -n -m"
fi
if ! reason=$($enter true 2>&1); then
    echo "make demo: cannot make a private network namespace here ($enter): $reason" >&2
    exit 1
fi

echo "Mirroring the sample site http://www.demo.test/ into $out"
$enter sh -eu -c '
    program=$1; site=$2; out=$3
    ip link set lo up
    printf "127.0.0.1 localhost www.demo.test demo.test\n" > "$out/.hosts"
    mount --bind "$out/.hosts" /etc/hosts
    python3 -m http.server 80 --bind 127.0.0.1 --directory "$site" >"$out/.server.log" 2>&1 &
    server=$!
    tries=0
    until python3 -c "import socket; socket.create_connection((\"127.0.0.1\", 80), 1).close()" 2>/dev/null; do
        tries=$((tries + 1)); [ "$tries" -lt 100 ] || { echo "the demo server did not start"; exit 1; }
        sleep 0.1
    done
    export XDG_CONFIG_HOME="$out/.config" XDG_RUNTIME_DIR="$out/.runtime"
    mkdir -p -m 700 "$XDG_RUNTIME_DIR"
    status=0
    "$program" --url www.demo.test --dir "$out/mirror" --timeout 5 || status=$?
    kill "$server"; wait "$server" 2>/dev/null || true
    exit "$status"
' sh "$program" "$site" "$out"
rm -rf "$out/.hosts" "$out/.config" "$out/.runtime"

echo
echo "Saved under $out/mirror:"
(cd "$out/mirror" && find . -type f | sort | sed 's|^\./|  |')
echo
echo "Files in the mirror: $(find "$out/mirror/demo.test" -type f | wc -l)"
echo "Addresses queued (log.txt): $(grep -c . "$out/mirror/log.txt")"
echo "Requests the server answered: $(grep -c '"GET ' "$out/.server.log")"
