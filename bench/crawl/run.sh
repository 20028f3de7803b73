#!/bin/sh
# The crawl benchmark (see bench_crawl.py), in a private network namespace so
# that the server can use port 80. Usage: run.sh PROGRAM
set -eu
here=$(cd "$(dirname "$0")" && pwd)
for tool in wget /usr/bin/time python3; do
    command -v "$tool" >/dev/null 2>&1 || { echo "crawl benchmark: $tool is missing" >&2; exit 1; }
done
exec unshare -n -m python3 -u "$here/bench_crawl.py" "$1"
