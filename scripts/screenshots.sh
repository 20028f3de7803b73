#!/bin/sh
# `make screenshots`: starts the real program under a virtual X server with a
# window manager, drives it with xdotool to each state that the README and
# docs/ show, and rewrites those pictures, so the documentation shows the
# program as it is. The demo site is served slowly on port 80 of a private
# network namespace, so a crawl can be caught midway.
# Usage: screenshots.sh PROGRAM OUTDIR
set -eu
program=$(cd "$(dirname "$1")" && pwd)/$(basename "$1")
mkdir -p "$2"
out=$(cd "$2" && pwd)
site=$(cd "$(dirname "$0")/../tests/e2e/demo-site" && pwd)

if [ -z "${VANTORIN_SHOTS_INSIDE:-}" ]; then
    for tool in Xvfb openbox xdotool import; do
        command -v "$tool" >/dev/null || {
            echo "make screenshots: $tool is missing (sh scripts/install-deps.sh screenshots)" >&2
            exit 1
        }
    done
    if [ "$(id -u)" = "0" ]; then enter="unshare -n -m"; else enter="unshare -r -n -m"; fi
    VANTORIN_SHOTS_INSIDE=1 exec $enter sh "$0" "$program" "$out"
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/vantorin-shots-XXXXXX")
pids=""
finish() {
    # Only what this script started: a stray X server or window manager
    # would spoil the next run.
    for pid in $pids; do kill "$pid" 2>/dev/null || true; done
    for pid in $pids; do wait "$pid" 2>/dev/null || true; done
    rm -rf "$work"
}
trap finish EXIT

# The network: loopback only, the demo host names on it.
ip link set lo up
printf '127.0.0.1 localhost www.demo.test demo.test\n' >"$work/hosts"
mount --bind "$work/hosts" /etc/hosts
# A tidy home folder for the pictures: the default folder shows under it, and
# the folder chooser opens on it.
mount -t tmpfs tmpfs /home
mkdir -p /home/user/Websites
export HOME=/home/user XDG_CONFIG_HOME="$work/config" XDG_RUNTIME_DIR="$work/runtime"
mkdir -p -m 700 "$XDG_RUNTIME_DIR" "$XDG_CONFIG_HOME/Vantorin"
printf '[Settings]\nLastURL=http://www.demo.test/\nTimeout=15\n' >"$XDG_CONFIG_HOME/Vantorin/Vantorin.conf"

# Each request waits two seconds before its answer, so the crawl takes a while.
python3 - "$site" >"$work/server.log" 2>&1 <<'PY' &
import functools, http.server, sys, time
class Slow(http.server.SimpleHTTPRequestHandler):
    protocol_version = "HTTP/1.0"
    def do_GET(self):
        time.sleep(2)
        super().do_GET()
http.server.ThreadingHTTPServer(("127.0.0.1", 80),
    functools.partial(Slow, directory=sys.argv[1])).serve_forever()
PY
pids="$pids $!"

# A display number of its own, so runs beside other X servers do not collide.
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$work/display" 2>/dev/null &
pids="$pids $!"
tries=0
until [ -s "$work/display" ]; do
    tries=$((tries + 1)); [ "$tries" -lt 100 ] || { echo "Xvfb did not start" >&2; exit 1; }
    sleep 0.1
done
export DISPLAY=":$(cat "$work/display")"
openbox >/dev/null 2>&1 &
pids="$pids $!"
sleep 1

# A copy of the program, so its files (filters.txt, temp/) stay out of the build.
mkdir "$work/prog"
cp "$program" "$(dirname "$program")/vantorin-window.so" "$work/prog/"
QT_QPA_PLATFORM=xcb "$work/prog/vantorin" >"$work/program.log" 2>&1 &
pids="$pids $!"

window() {  # the id of the window titled $1, waiting for it
    timeout 20 xdotool search --sync --onlyvisible --name "^$1\$" | head -1
}
click() {  # click inside window $1 at its pixels $2 $3
    xdotool mousemove --window "$1" "$2" "$3" click 1
    sleep 1
}
grab() {  # the client area of window $1 into $2
    import -window "$1" "$out/$2"
}
frame() {  # "left top right bottom" of window $1 on the screen, frame included
    xwininfo -id "$1" | awk '/Absolute upper-left X/ {x = $NF} /Absolute upper-left Y/ {y = $NF}
        /^ *Width:/ {w = $NF} /^ *Height:/ {h = $NF} END {print x, y, x + w, y + h}' | {
        read -r x y r b
        # _NET_FRAME_EXTENTS(CARDINAL) = left, right, top, bottom
        set -- $(xprop -id "$1" _NET_FRAME_EXTENTS | sed 's/.*= //; s/,//g')
        echo "$((x - ${1:-0})) $((y - ${3:-0})) $((r + ${2:-0})) $((b + ${4:-0}))"
    }
}
grab_over() {  # windows $2.. with their frames, in one picture $1
    name=$1; shift
    left=100000; top=100000; right=0; bottom=0
    for id in "$@"; do
        frame "$id" >"$work/frame"
        read -r l t r b <"$work/frame"
        [ "$l" -lt "$left" ] && left=$l
        [ "$t" -lt "$top" ] && top=$t
        [ "$r" -gt "$right" ] && right=$r
        [ "$b" -gt "$bottom" ] && bottom=$b
    done
    import -window root -crop "$((right - left))x$((bottom - top))+$left+$top" +repage "$out/$name"
}

# The wizard opens by itself, over the main window. Its buttons, in pixels at
# 96 dpi: Options >> (392, 52), Filters (392, 84), the folder button (56, 180).
wizard=$(window "New Site Wizard")
sleep 1
grab "$wizard" wizard-collapsed.png
click "$wizard" 392 52
grab "$wizard" wizard-expanded.png

click "$wizard" 392 84
filters=$(window "Keyword Filters")
xdotool type --delay 50 "banner"
xdotool key Return
xdotool type --delay 50 "/cgi-bin/"
xdotool key Return
sleep 1
grab_over filters.png "$wizard" "$filters"
xdotool key Escape
sleep 1

click "$wizard" 56 180
chooser=$(window "Select Directory to Save the Website")
sleep 1
import -frame -window "$chooser" "$out/folder-chooser.png"
xdotool key Escape
sleep 1

# Download Website Now! is the wizard's default button.
xdotool windowactivate --sync "$wizard" key Return
main=$(window "Vantorin Website Downloader 1.9")
# Two connections, typed into the connections box (575, 434), so the queue
# of the small demo site fills while the start page's links wait their turn.
xdotool mousemove --window "$main" 575 434 click 1 key ctrl+a type 2
sleep 3.2
grab "$main" main-window-crawl.png

# Sites > Pause Download, its first item.
xdotool windowactivate --sync "$main" key alt+s
sleep 0.5
xdotool key Return
pause=$(window "Paused")
sleep 1
grab_over pause.png "$main" "$pause"
xdotool windowactivate --sync "$pause" key Return

# The crawl ends with its question; No leaves the finished window.
done_box=$(timeout 60 xdotool search --sync --onlyvisible --name "^Done\.\$" | head -1)
xdotool windowactivate --sync "$done_box" key Escape
sleep 1
grab "$main" main-window.png

# Ctrl+Q asks the exit question; Yes is its default.
xdotool windowactivate --sync "$main" key ctrl+q
exit_box=$(window "Exit Vantorin")
xdotool windowactivate --sync "$exit_box" key Return
sleep 1
echo "Pictures written to $out:"
ls "$out"/*.png | sed 's|^|  |'
