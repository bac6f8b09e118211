#!/usr/bin/env bash
# Makes "Docs/Tessaly Conversion.pdf" from manual.md, style.css and pictures/.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/needs.sh
need manual

manual=Docs/manual
target="Docs/Tessaly Conversion.pdf"
version=$(sed -n 's/^project(.*VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

# Chapters get names that the table of contents leads to.
body() {
    cmark-gfm --unsafe -e table -t html "$manual/manual.md" |
        sed -E -e "s/VERSION/$version/" -e 's|<h2>([0-9]+) |<h2 id="chapter-\1">\1 |'
}

contents() {
    echo '<nav><h2>Contents</h2><ol>'
    body | sed -nE 's|<h2 id="(.*)">(.*)</h2>|<li><a href="#\1">\2</a></li>|p'
    echo '</ol></nav>'
}

page() {
    local text mark='<div id="contents"></div>'
    text=$(body)
    echo '<!DOCTYPE html><html lang="en"><head><meta charset="utf-8"><title>Tessaly Conversion</title></head><body>'
    echo "${text%%"$mark"*}"
    contents
    echo "${text#*"$mark"}"
    echo '</body></html>'
}

page | weasyprint --base-url "$manual/" --stylesheet "$manual/style.css" --optimize-size images - "$target"
ls -l "$target"
