#!/usr/bin/env bash
# Draws the icon's sizes from tessaly.svg. Needs rsvg-convert (package librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")"
for size in 16 32 48 256; do
    rsvg-convert --width "$size" --height "$size" --output "tessaly-$size.png" tessaly.svg
done
