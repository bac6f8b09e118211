#!/usr/bin/env bash
# Draws the icon's sizes from tessaly.svg and puts them together for Windows. Needs rsvg-convert (package
# librsvg2-bin) and icotool (icoutils).
set -euo pipefail
cd "$(dirname "$0")"
for size in 16 32 48 256; do
    rsvg-convert --width "$size" --height "$size" --output "tessaly-$size.png" tessaly.svg
done
# The largest stays a picture of its own kind, as Windows wants it.
icotool --create --output tessaly.ico tessaly-16.png tessaly-32.png tessaly-48.png --raw=tessaly-256.png
