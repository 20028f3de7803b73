#!/bin/sh
# Checks the Debian package as a user meets it: the package and its files pass
# their validators, and the program, unpacked into a scratch root whose bin
# folder is read-only (as /usr/bin is), mirrors the demo site as an
# unprivileged user, keeping its own files in that user's data folder.
# As root it runs the user's part as a user made for it (created when missing).
# Usage: check_package.sh PACKAGE.deb
# Exits 77 (skipped) when the user cannot make a private network namespace.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
scratch=$(mktemp -d "${TMPDIR:-/tmp}/vantorin-package-XXXXXX")
trap 'chmod -R u+w "$scratch"; rm -rf "$scratch"' EXIT
chmod 755 "$scratch"

# The user's part reads only what lies in the scratch folder: the checkout may
# sit where that user cannot look (root's home).
cp "$1" "$scratch/vantorin.deb"
cp -r "$here/../e2e/demo-site" "$here/as_user.sh" "$scratch/"
mkdir "$scratch/root" "$scratch/home" "$scratch/out"
dpkg-deb -x "$scratch/vantorin.deb" "$scratch/root"
chmod a-w "$scratch/root/usr/bin"

if [ "$(id -u)" = "0" ]; then
    user=vantorin-check
    id -u "$user" >/dev/null 2>&1 || useradd --no-create-home --shell /usr/sbin/nologin "$user"
    chown "$user:" "$scratch/home" "$scratch/out"
    chmod -R a+rX "$scratch/demo-site"
    run_as_user="setpriv --reuid=$(id -u "$user") --regid=$(id -g "$user") --clear-groups"
else
    run_as_user=""
fi
# A clean environment: the checks must not pick up the caller's XDG folders.
# shellcheck disable=SC2086
$run_as_user env -i HOME="$scratch/home" PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
    sh "$scratch/as_user.sh" "$scratch"
