#!/bin/sh
# Checks the Debian package as a user meets it: the package and its files pass
# their validators, and the program, unpacked into a scratch root whose bin
# folder is read-only (as /usr/bin is), mirrors the demo site as an
# unprivileged user, keeping its own files in that user's data folder. As root
# the user's part runs as a user made for it, reading only the scratch folder
# (the checkout may sit where that user cannot look), in a clean environment.
# (That root, who may write to a bin folder, keeps the files in the data folder
# all the same is checked by the end-to-end run of the installed layout.)
# Usage: check_package.sh PACKAGE.deb
# Exits 77 (skipped) when the user cannot make a private network namespace.
set -u
if [ "$1" != --as-user ]; then
    set -e
    scratch=$(mktemp -d "${TMPDIR:-/tmp}/vantorin-package-XXXXXX")
    trap 'chmod -R u+w "$scratch"; rm -rf "$scratch"' EXIT
    chmod 755 "$scratch"
    cp "$1" "$scratch/vantorin.deb"
    cp -r "$(dirname "$0")/../e2e/demo-site" "$0" "$scratch/"
    mkdir "$scratch/root" "$scratch/home" "$scratch/out"
    dpkg-deb -x "$scratch/vantorin.deb" "$scratch/root"
    chmod a-w "$scratch/root/usr/bin"
    as_user=""
    if [ "$(id -u)" = 0 ]; then
        user=vantorin-check
        id -u $user >/dev/null 2>&1 || useradd --no-create-home --shell /usr/sbin/nologin $user
        chown $user: "$scratch/home" "$scratch/out"
        chmod -R a+rX "$scratch/demo-site" "$scratch/check_package.sh"
        as_user="setpriv --reuid=$(id -u $user) --regid=$(id -g $user) --clear-groups"
    fi
    $as_user env -i HOME="$scratch/home" PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
        sh "$scratch/check_package.sh" --as-user "$scratch" || exit $?
    exit 0
fi

root=$2/root out=$2/out app=org.vantorin.Vantorin passed=0 failed=0
check() { # check NAME COMMAND...: counts the result, naming a failure.
    name=$1
    shift
    if "$@"; then passed=$((passed + 1)); else echo "FAILED: $name"; failed=$((failed + 1)); fi
}
says_nothing() { said=$("$@" 2>&1) && [ -z "$said" ] || { echo "$said"; return 1; }; }
for file in bin/vantorin libexec/vantorin/vantorin-window.so share/applications/$app.desktop \
    share/metainfo/$app.metainfo.xml share/man/man1/vantorin.1.gz share/doc/vantorin/copyright \
    share/doc/vantorin/changelog.gz share/bash-completion/completions/vantorin \
    share/icons/hicolor/scalable/apps/$app.svg \
    share/icons/hicolor/48x48/apps/$app.png share/icons/hicolor/128x128/apps/$app.png \
    share/icons/hicolor/256x256/apps/$app.png; do
    check "package holds /usr/$file" test -s "$root/usr/$file"
done
# The window opens offscreen and runs until stopped: its module is found.
check "the window opens" sh -c 'XDG_RUNTIME_DIR=$1 QT_QPA_PLATFORM=offscreen \
    timeout 3 "$2/usr/bin/vantorin" >/dev/null 2>&1; [ $? = 124 ]' sh "$2" "$root"
check "lintian" lintian --fail-on error,warning "$2/vantorin.deb"
check "desktop-file-validate" says_nothing desktop-file-validate "$root/usr/share/applications/$app.desktop"
check "appstreamcli validate" appstreamcli validate --no-net "$root/usr/share/metainfo/$app.metainfo.xml"
check "man --warnings" says_nothing sh -c 'man --warnings -l "$1" >/dev/null' sh "$root/usr/share/man/man1/vantorin.1.gz"
# completes "WORDS" OFFERED: what bash offers for the last word, in the scratch root.
completes() {
    [ "$(cd "$root" && bash -c '. "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
        _vantorin; echo "${COMPREPLY[*]}"' bash "$root/usr/share/bash-completion/completions/vantorin" $1)" = "$2" ]
}
check "bash completes --check" completes "vantorin --che" --check
check "bash completes a folder after --check" completes "vantorin --check us" usr

if ! reason=$(unshare -r -n -m true 2>&1); then
    echo "package: $passed passed, $failed failed; skipped: the mirror (no private network namespace: $reason)"
    [ "$failed" = 0 ] && exit 77
    exit 1
fi
# The demo site on port 80 of a private namespace, as make demo serves it. With
# no capabilities the program is refused there what the user is refused
# outside: writing to the read-only bin folder.
unshare -r -n -m sh -u -c '
    ip link set lo up
    printf "127.0.0.1 localhost www.demo.test demo.test\n" > "$3/hosts"
    mount --bind "$3/hosts" /etc/hosts
    python3 -m http.server 80 --bind 127.0.0.1 --directory "$2" >"$3/server.log" 2>&1 &
    for try in $(seq 100); do
        python3 -c "import socket; socket.create_connection((\"127.0.0.1\", 80), 1)" 2>/dev/null && break
        sleep 0.1
    done
    mkdir -m 700 "$3/runtime"
    XDG_RUNTIME_DIR="$3/runtime" setpriv --inh-caps=-all --bounding-set=-all -- "$1/usr/bin/vantorin" \
        --url www.demo.test --dir "$3/mirror" --timeout 5 >"$3/stdout" 2>"$3/stderr"
    echo $? > "$3/status"
    kill $!
' sh "$root" "$2/demo-site" "$out"

check "the program exits 0" test "$(cat "$out/status" 2>/dev/null)" = 0
data=$HOME/.local/share/Vantorin
check "temp/filetypes.txt in ~/.local/share/Vantorin" test -s "$data/temp/filetypes.txt"
check "dldata/ in ~/.local/share/Vantorin" test -d "$data/dldata"
# The window's run above showed its wizard, which stored what it showed; the
# crawl stored nothing.
check "the window's settings stored, none by the command line" \
    sh -c 'grep -q LastURL "$1" && ! grep -q demo.test "$1"' sh "$HOME/.config/Vantorin/Vantorin.conf"
check "nothing written beside the program" test "$(ls -A "$root/usr/bin")" = vantorin
check "the mirror holds the demo site's 9 files" test "$(cd "$out/mirror/demo.test" && find . -type f | sort)" = \
    "$(cd "$2/demo-site" && find . -type f | sort)"
[ "$failed" -gt 0 ] && cat "$out/stderr" 2>/dev/null
echo "package: $passed passed, $failed failed"
[ "$failed" = 0 ]
