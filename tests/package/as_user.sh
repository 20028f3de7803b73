#!/bin/sh
# The unprivileged part of check_package.sh, run with HOME set to a fresh
# folder of the user's own and nothing else from the caller's environment.
# Usage: as_user.sh SCRATCH
set -u
scratch=$1
root=$scratch/root
passed=0
failed=0
check() {
    # check NAME COMMAND...: counts the result, naming a failure.
    name=$1
    shift
    if "$@"; then
        passed=$((passed + 1))
    else
        echo "FAILED: $name"
        failed=$((failed + 1))
    fi
}
silent() {
    # Runs a validator that must print nothing (its output is shown otherwise).
    if said=$("$@" 2>&1) && [ -z "$said" ]; then return 0; fi
    echo "$said"
    return 1
}
quiet() {
    # Runs a validator whose output matters only when it fails.
    said=$("$@" 2>&1) || { echo "$said"; return 1; }
}

for file in usr/bin/vantorin usr/libexec/vantorin/vantorin-window.so \
    usr/share/applications/org.vantorin.Vantorin.desktop \
    usr/share/metainfo/org.vantorin.Vantorin.metainfo.xml usr/share/man/man1/vantorin.1.gz \
    usr/share/doc/vantorin/copyright usr/share/doc/vantorin/changelog.gz \
    usr/share/icons/hicolor/scalable/apps/org.vantorin.Vantorin.svg \
    usr/share/icons/hicolor/48x48/apps/org.vantorin.Vantorin.png \
    usr/share/icons/hicolor/128x128/apps/org.vantorin.Vantorin.png \
    usr/share/icons/hicolor/256x256/apps/org.vantorin.Vantorin.png; do
    check "package holds /$file" test -s "$root/$file"
done
# The window opens (here on the offscreen platform) and runs until stopped:
# its module is found where the program looks for it.
check "the window opens" sh -c 'XDG_RUNTIME_DIR=$1 QT_QPA_PLATFORM=offscreen \
    timeout 3 "$2/usr/bin/vantorin" >/dev/null 2>&1; [ $? = 124 ]' sh "$scratch" "$root"
check "lintian" lintian --fail-on error,warning "$scratch/vantorin.deb"
check "desktop-file-validate" silent desktop-file-validate \
    "$root/usr/share/applications/org.vantorin.Vantorin.desktop"
check "appstreamcli validate" quiet appstreamcli validate --no-net \
    "$root/usr/share/metainfo/org.vantorin.Vantorin.metainfo.xml"
check "man --warnings" silent sh -c 'man --warnings -l "$1" >/dev/null' sh \
    "$root/usr/share/man/man1/vantorin.1.gz"

if ! reason=$(unshare -r -n -m true 2>&1); then
    echo "package: $passed passed, $failed failed"
    echo "skipped: the mirror, as this user cannot make a private network namespace: $reason"
    [ "$failed" = 0 ] && exit 77
    exit 1
fi

# The demo site on port 80 of a private namespace, as make demo serves it. The
# program runs with no capabilities, so inside the namespace it is refused
# what the user is refused outside: writing to the read-only bin folder.
out=$scratch/out
unshare -r -n -m sh -eu -c '
    root=$1; site=$2; out=$3
    ip link set lo up
    printf "127.0.0.1 localhost www.demo.test demo.test\n" > "$out/hosts"
    mount --bind "$out/hosts" /etc/hosts
    python3 -m http.server 80 --bind 127.0.0.1 --directory "$site" >"$out/server.log" 2>&1 &
    server=$!
    tries=0
    until python3 -c "import socket; socket.create_connection((\"127.0.0.1\", 80), 1).close()" 2>/dev/null; do
        tries=$((tries + 1)); [ "$tries" -lt 100 ] || { echo "the demo server did not start"; exit 1; }
        sleep 0.1
    done
    export XDG_RUNTIME_DIR="$out/runtime"
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    status=0
    setpriv --inh-caps=-all --bounding-set=-all -- "$root/usr/bin/vantorin" \
        --url www.demo.test --dir "$out/mirror" --timeout 5 >"$out/stdout" 2>"$out/stderr" || status=$?
    kill "$server"; wait "$server" 2>/dev/null || true
    echo "$status" > "$out/status"
' sh "$root" "$scratch/demo-site" "$out"

check "the program exits 0" test "$(cat "$out/status" 2>/dev/null)" = 0
data=$HOME/.local/share/Vantorin
check "temp/filetypes.txt in ~/.local/share/Vantorin" test -s "$data/temp/filetypes.txt"
check "dldata/ in ~/.local/share/Vantorin" test -d "$data/dldata"
check "settings in ~/.config/Vantorin/Vantorin.conf" grep -q "^LastURL=www.demo.test" \
    "$HOME/.config/Vantorin/Vantorin.conf"
check "nothing written beside the program" test "$(ls -A "$root/usr/bin")" = vantorin
mirrored=$(cd "$out/mirror/demo.test" 2>/dev/null && find . -type f | sort)
check "the mirror holds the demo site's 9 files" test "$mirrored" = "./about/index.html
./about/team.html
./css/site.css
./gallery.html
./img/loaf.gif
./img/oven.gif
./index.html
./menu.html
./prices.txt"
if [ "$failed" -gt 0 ]; then
    echo "The program said:"
    cat "$out/stderr" 2>/dev/null
fi
echo "package: $passed passed, $failed failed"
[ "$failed" = 0 ]
