#!/usr/bin/env bash
# Photographs the real window: at the start, with the options open, during a run, at its summary, after it, and
# at larger scales. For looking at; nothing is compared.
#   tests/forms/pictures.sh PROGRAM FOLDER
set -euo pipefail
started_in=$PWD
cd "$(dirname "$0")/../.."
. scripts/needs.sh

# Below the working folder lies a folder "C:", so that the paths of a Windows operator lead somewhere here.
lay_out() {
    local place=$1 board=$2 admin
    mkdir -p "$place/C:" "$place/program"
    ln -s "$PWD/Docs" "$place/program/Docs"
    cp -r "$board" "$place/C:/Discusware"
    admin=$(basename "$place"/C:/Discusware/discus_admin_*)
    cat >"$place/program/tessaly.ini" <<END
[Settings]
DiscusWebsite=http://www.radio-club.example/discus
mybbForumAddr=http://forum.radio-club.example
mybb_Admin=Admin
mybb_Users=1
DiscusRootFolder=C:\\Discusware\\
DiscusMessageFolder=C:\\Discusware\\discus\\messages\\
DiscusSecureMessageFolder=C:\\Discusware\\$admin\\secure\\
DiscusMainFolder=C:\\Discusware\\$admin\\
mybb_OutputFolder=C:\\mybb import\\
END
}

on_screen() {
    export XDG_RUNTIME_DIR=$work QT_QPA_PLATFORM=xcb
    openbox >/dev/null 2>&1 &
    until_true xdotool get_num_desktops
    "$@"
    kill %1
}

until_true() {
    local tries=0
    until "$@" >/dev/null 2>&1; do
        tries=$((tries + 1))
        if [ "$tries" -gt 300 ]; then
            echo "In vain: $*" >&2
            return 1
        fi
        sleep 0.2
    done
}

# Until the window of that name has come up and has the focus.
wait_for() {
    until_true xdotool search --onlyvisible --name "$1" windowactivate --sync
    sleep 1
}

photograph() {
    import -window root png:- | convert - -trim +repage -strip +dither -colors 256 "$pictures/$1.png"
    echo "$pictures/$1.png"
}

open_window() {
    (cd "$1" && exec "$program" --program-folder program) &
    window=$!
    wait_for '^Tessaly - Version'
}

close_window() {
    kill "$window"
    wait "$window" || true
}

sample_run() {
    open_window "$work/sample"
    photograph start
    xdotool key alt+o
    wait_for '^Options$'
    photograph options
    xdotool key Escape
    sleep 1
    xdotool key alt+c
    wait_for '^Tessaly$'
    photograph summary
    xdotool key Return
    sleep 1
    photograph after
    close_window
}

# Settings that cannot be read end the program with status 3.
failing_start() {
    local status=0
    mkdir "$work/failing"
    printf '[Settings]\nSplitMBSize=abc\n' >"$work/failing/tessaly.ini"
    "$program" --program-folder "$work/failing" &
    window=$!
    wait_for '^Tessaly$'
    photograph failure
    xdotool key Return
    wait "$window" || status=$?
    if [ "$status" -ne 3 ]; then
        echo "The failure ended with status $status." >&2
        return 1
    fi
}

large_run() {
    open_window "$work/large"
    xdotool key alt+c
    sleep 2
    photograph run
    xdotool key alt+l
    wait_for '^Tessaly$'
    photograph cancelled
    close_window
}

enlarged() {
    open_window "$work/sample"
    xdotool key alt+o
    wait_for '^Options$'
    photograph "$1-options"
    xdotool key Escape
    sleep 1
    xdotool key alt+c
    wait_for '^Tessaly$'
    xdotool key Return
    sleep 1
    photograph "$1"
    close_window
}

at_scale() {
    export QT_SCALE_FACTOR=$1
    enlarged "$2"
}

# A desktop's settings are the only way to another system font.
with_font() {
    export XDG_CURRENT_DESKTOP=KDE KDE_SESSION_VERSION=5 XDG_CONFIG_HOME=$work
    printf '[General]\nfont=DejaVu Sans,%s,-1,5,50,0,0,0,0,0\n' "$1" >"$work/kdeglobals"
    enlarged "$2"
}

# A screen of its own, on which this script runs a function.
screen() {
    local size=$1
    shift
    xvfb-run -a -s "-screen 0 ${size}x24" "$script" on-screen "$@"
}

take_pictures() {
    need pictures
    lay_out "$work/sample" samples/board
    python3 -B bench/generate_board.py --pages 16000 --posts 160000 --members 500 "$work/board" >/dev/null
    lay_out "$work/large" "$work/board"
    screen 1280x860 sample_run
    screen 1280x860 large_run
    screen 1280x860 failing_start
    screen 2560x1600 at_scale 1.25 scale-125
    screen 2560x1600 at_scale 1.5 scale-150
    screen 2560x1600 at_scale 2 scale-200
    screen 2560x1600 with_font 16 font-16
    # A screen on which the form does not fit.
    screen 1366x768 at_scale 2 scale-200-small-screen
}

if [ "${1:-}" = on-screen ]; then
    shift
    on_screen "$@"
    exit
fi
if [ $# -ne 2 ]; then
    echo "usage: $0 PROGRAM FOLDER" >&2
    exit 2
fi
program=$(cd "$started_in" && realpath -- "$1")
pictures=$(cd "$started_in" && mkdir -p -- "$2" && realpath -- "$2")
script=$PWD/tests/forms/pictures.sh
work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
export program pictures script work
take_pictures
