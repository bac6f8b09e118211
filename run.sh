#!/usr/bin/env bash
# Builds Tessaly and converts a board into out/.
set -euo pipefail
started_in=$PWD
cd "$(dirname "$0")"
. scripts/needs.sh

usage() {
    cat <<'END'
./run.sh [--forms] [folder of a board]

Builds Tessaly and converts the board into out/, which is deleted and built anew. Without a folder it takes
the sample board. The folder is the one that holds discus/ and discus_admin_<number>/.

With --forms the window opens on the board, its fields filled in; Convert is yours to press.

The addresses come from the environment:
  WEBSITE   address of the old board; else read from its board-topics.html
  FORUM     address of the new forum
  ADMIN     name of the new forum's administrator
END
}

build() {
    need run
    mkdir -p build
    echo "Building ..."
    cmake --preset release -DTESSALY_FORMS=OFF -DTESSALY_TESTS=OFF -DTESSALY_WERROR="${TESSALY_WERROR:-OFF}" \
        >build/run.log || { cat build/run.log >&2; return 1; }
    cmake --build build/release --target tessaly-cli
}

# Links between topics and attachments are known by the address at their head.
website_of() {
    local address
    address=$(grep -aoiEm1 'https?://[^" <>]+/messages/' "$1/discus/messages/board-topics.html" 2>/dev/null |
        head -n 1) || true
    echo "${address%/*/}"
}

choose_board() {
    if [ $# -eq 0 ]; then
        board=samples/board
        : "${WEBSITE:=http://www.radio-club.example/discus/}" "${FORUM:=http://forum.radio-club.example/}"
    else
        board=$(cd "$started_in" && realpath -- "$1")
        : "${WEBSITE:=$(website_of "$board")}"
    fi
    : "${WEBSITE:=http://www.old-board.example/discus/}" "${FORUM:=http://www.new-forum.example/}"
    : "${ADMIN:=Admin}"
}

convert() {
    echo
    printf '%-8s %s\n' Board "$board" WEBSITE "$WEBSITE" FORUM "$FORUM" ADMIN "$ADMIN"
    echo
    # Settings of an earlier run must not get in.
    rm -f build/run.ini
    build/release/bin/tessaly-cli convert --root "$board" --output out --program-folder . --ini build/run.ini \
        --website "$WEBSITE" --forum "$FORUM" --admin "$ADMIN"
}

# The fields, as a settings file of the window holds them.
forms_settings() {
    local root admin
    root=$(realpath -- "$board")
    admin=$(find "$root" -maxdepth 1 -type d -name 'discus_admin_[0-9]*' | head -n 1)
    cat <<END
[Settings]
DiscusWebsite=$WEBSITE
mybbForumAddr=$FORUM
mybb_Admin=$ADMIN
DiscusRootFolder=$root
DiscusMessageFolder=$root/discus/messages
DiscusSecureMessageFolder=$admin/secure
DiscusMainFolder=$admin
mybb_OutputFolder=$PWD/out
END
}

open_forms() {
    if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}${QT_QPA_PLATFORM:-}" ]; then
        echo "There is no screen here to open a window on. Without --forms the board is converted without one." >&2
        return 1
    fi
    need run forms
    mkdir -p build
    echo "Building ..."
    cmake --preset release -B build/forms -DTESSALY_TESTS=OFF -DTESSALY_WERROR="${TESSALY_WERROR:-OFF}" \
        >build/run.log || { cat build/run.log >&2; return 1; }
    cmake --build build/forms --target tessaly
    forms_settings >build/forms.ini
    exec build/forms/bin/tessaly --program-folder . --ini build/forms.ini
}

show_table() {
    local family files
    printf '%-22s %5s %9s\n' Family Files Rows
    for family in mybb_{forums,threads,posts,announcements,attachments,users,usergroups} InternalLinks \
        InternalLinksUpdate; do
        files=(out/"$family"[0-9]*.txt)
        # A line break within a value never gets into a row, so a row is what ends in CR LF.
        printf '%-22s %5d %9d\n' "$family" ${#files[@]} "$(cat /dev/null "${files[@]}" | grep -ac $'\r$')"
    done
    echo
    echo "Attachments copied: $(find out/attachments -type f 2>/dev/null | wc -l)"
    echo "Redirection pages:  $(find out/redirect -type f 2>/dev/null | wc -l)"
}

# The first line is UTF-16 and empty, ten bytes with its mark; all others are UTF-8. Control characters of a
# board's texts must not reach the terminal.
trouble() {
    tail -c +11 out/LogError.txt | tr -d '\000-\010\013-\037\177' |
        LC_ALL=C sed -e 's/\xC2[\x80-\x9F]//g' -e '/^$/d' -e '/^Conversion Start Time: /d'
}

show_trouble() {
    local lines
    echo
    lines=$(trouble | wc -l)
    if [ "$lines" -eq 0 ]; then
        echo "Trouble met: none"
        return
    fi
    echo "Trouble met:"
    trouble | sed -n '1,20s/^/  /p'
    if [ "$lines" -gt 20 ]; then echo "  ... and $((lines - 20)) more lines in out/LogError.txt"; fi
}

show_next() {
    cat <<END

What to do next:
  - Read out/LogError.txt, and out/Discus Special Characters.txt if it is there: it lists the sequences
    that no character file knows. Docs/README.md tells how to add them.
  - Load out/Discus Conversion Import SQL.sql into a copy of the new forum's database; README.md tells how.
  - Convert a copy of your own board: FORUM=http://your.forum/ ADMIN=YourName ./run.sh /folder/of/the/board
  - All options: build/release/bin/tessaly-cli convert --help
END
}

show_outcome() {
    shopt -s nullglob
    echo
    show_table
    show_trouble
    show_next
}

case ${1:-} in
-h | --help)
    usage
    exit
    ;;
--forms)
    shift
    choose_board "$@"
    open_forms
    ;;
-*)
    usage >&2
    exit 2
    ;;
esac
choose_board "$@"
build
status=0
convert || status=$?
# A run that a check stopped leaves the output of an earlier one alone.
if [ out/LogError.txt -nt build/run.log ]; then
    show_outcome
else
    echo "Nothing was converted."
fi
exit "$status"
