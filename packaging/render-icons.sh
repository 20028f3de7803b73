#!/bin/sh
# Renders the hand-drawn SVG icon to the PNG sizes the package ships. The PNGs
# are committed, so only someone who changes the SVG needs rsvg-convert
# (Debian librsvg2-bin).
set -eu
icons=$(cd "$(dirname "$0")/icons/hicolor" && pwd)
for size in 48 128 256; do
    rsvg-convert -w "$size" -h "$size" "$icons/scalable/apps/org.vantorin.Vantorin.svg" \
        -o "$icons/${size}x${size}/apps/org.vantorin.Vantorin.png"
done
