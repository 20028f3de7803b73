#!/bin/sh
# Installs the Debian packages the build, the tests, the demo and the package
# (with its validators) need; with the argument "screenshots", those of
# `make screenshots`.
# As root it runs apt-get itself; otherwise it prints the line to run.
set -e

PACKAGES="cmake make g++ pkg-config qt6-base-dev libgl-dev libgumbo-dev libgtest-dev libgmock-dev
 libbenchmark-dev python3 util-linux iproute2 mount xvfb xauth wget time
 dpkg-dev lintian desktop-file-utils appstream man-db"
# `make screenshots` alone needs a window manager and the tools that drive
# and photograph the program; `make test` never asks for them.
if [ "${1:-}" = "screenshots" ]; then
    PACKAGES="xvfb xauth openbox xdotool imagemagick x11-utils python3 util-linux iproute2 mount"
fi

missing=""
for p in $PACKAGES; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing="$missing $p"
    fi
done

[ -z "$missing" ] && exit 0

if [ "$(id -u)" = "0" ]; then
    echo "Installing:$missing"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    # shellcheck disable=SC2086
    apt-get install -y -qq --no-install-recommends $missing
else
    echo "Missing packages. Run:" >&2
    echo "  sudo apt-get install -y$missing" >&2
    exit 1
fi
