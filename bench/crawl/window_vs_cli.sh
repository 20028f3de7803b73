#!/bin/sh
# The window against the command line on one generated site (see
# window_vs_cli.py), in a private network and mount namespace so that the
# server can use port 80. Usage: window_vs_cli.sh PROGRAM [options]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
for tool in Xvfb openbox xdotool g++ pkg-config /usr/bin/time python3; do
    command -v "$tool" >/dev/null 2>&1 || {
        echo "window against command line: $tool is missing" >&2
        exit 1
    }
done
if [ "$(id -u)" = "0" ]; then enter="unshare -n -m"; else enter="unshare -r -n -m"; fi
exec $enter python3 -u "$here/window_vs_cli.py" "$@"
