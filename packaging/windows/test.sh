#!/usr/bin/env bash
# Tries the Windows build on Linux with Wine: runs the unit tests, then converts the sample board with both
# builds and compares what they write.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/needs.sh
need run test windows windows_test

# What cannot pass here, by the names of the tests, each with its reason.
skipped=(
    "WriteFileData.BringsAStatefulCharsetBackToItsStartAtTheEnd: Wine has no iso-2022-jp"
    "OnOffer/EachCharset.IsReadFromThePagesAndWrittenToAllFiles/iso2022jp: Wine has no iso-2022-jp"
    "OnOffer/EachCharset.IsReadFromThePagesAndWrittenToAllFiles/iso2022kr: Wine has no iso-2022-kr"
    "Charset.ABackslashStaysABackslashInTheRomanSetOfJapaneseMail: Wine has no iso-2022-jp"
    "Charset.ControlBytesStayThemselvesInTheRomanSetOfJapaneseMail: Wine has no iso-2022-jp"
    "Charset.AnOverlineOfTheRomanSetIsWrittenBackToIt: Wine has no iso-2022-jp"
    "Charset.YenAndWonSignsAreMissingInMail: Wine has neither iso-2022-jp nor iso-2022-kr"
    "Charset.MailHasNoBytesWithAnEighthBit: Wine has neither iso-2022-jp nor iso-2022-kr"
    "Charset.AStatefulTextEndsInTheStartState: Wine has neither iso-2022-jp nor iso-2022-kr"
    "TopicWalk.ASymbolicLinkOutOfTheSourceIsAMissingPage: the standard library of MinGW makes no links"
    "TopicWalk.APageThatCannotBeReadIsAForumWithoutANameAndStopsTheRun: the standard library of MinGW makes no links"
    "MemberFile.AFileThatCannotBeReadStopsTheRunAndTheAdministratorIsThereYet: the standard library of MinGW makes no links"
    "BadInput.OfFolderNamesWithBlanksAndLettersBeyondAsciiIsNoTrouble: looks for UTF-8 in the script"
    "Folders.MayHoldBlanksAndLettersBeyondAscii: looks for UTF-8 in the script"
    "GetFileDataCharset.AFileThatCannotBeReadIsAFailureThatStopsTheRun: the file is one of Linux"
)
# The tests of all charsets leave these out.
export TESSALY_MISSING_CHARSETS="iso-2022-jp iso-2022-kr"

wine=/usr/lib/wine/wine64
work=$(mktemp -d)
export WINEPREFIX=$work/prefix WINEDEBUG=-all
# No display: nothing of this opens a window.
unset DISPLAY

end() {
    /usr/lib/wine/wineserver -k || true
    rm -rf "$work"
}
trap end EXIT

build() {
    # The tests' lists are asked for when they are run, not while they are built.
    cmake --preset windows -B build/windows-tests -DTESSALY_TESTS=ON \
        -DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST
    cmake --build build/windows-tests
    cmake --preset release -B build/windows-compared -DTESSALY_FORMS=OFF -DTESSALY_TESTS=OFF
    cmake --build build/windows-compared --target tessaly-cli
}

# The filter of the tests that run: all but the skipped ones.
filter() {
    local entry names=()
    for entry in "${skipped[@]}"; do names+=("${entry%%:*}"); done
    local IFS=:
    echo "*${names:+-${names[*]}}"
}

unit_tests() {
    local program failed=()
    for program in build/windows-tests/bin/*_tests.exe; do
        echo "--- $(basename "$program")"
        # Wine waits for what reads its output, so the output goes through a file.
        "$wine" "$program" --gtest_brief=1 --gtest_filter="$(filter)" >"$work/output" 2>&1 </dev/null ||
            failed+=("$(basename "$program")")
        tr -d '\r' <"$work/output"
    done
    [ ${#skipped[@]} -eq 0 ] || printf 'Skipped: %s\n' "${skipped[@]}"
    [ ${#failed[@]} -eq 0 ] && return
    echo "Failed: ${failed[*]}" >&2
    return 1
}

windows_path() { echo "Z:${1//\//\\}"; }

convert() {
    local kind=$1 path_of=$2 status=0
    shift 2
    "$@" convert --root "$("$path_of" "$PWD/samples/board")" --output "$("$path_of" "$work/$kind")" \
        --ini "$("$path_of" "$work/$kind.ini")" --program-folder "$("$path_of" "$PWD")" \
        --report "$("$path_of" "$work/$kind.json")" --website http://www.radio-club.example/discus/ \
        --forum http://forum.radio-club.example/ --admin admin --quiet </dev/null || status=$?
    echo "$kind: exit status $status"
    echo "$status" >"$work/$kind.status"
}

# The texts of the Windows output as Linux writes them: paths begin at no drive and lead to another folder.
as_on_linux() { sed -e 's/Z:\\/\\/g' -e 's/\\by-windows\\/\\by-linux\\/g' "$1"; }

# The script names the files with native separators, the backslashes doubled.
script_as_on_linux() { sed -e '/INFILE/s/Z:\\\\/\//; /INFILE/s/\\\\/\//g; /INFILE/s/by-windows/by-linux/' "$1"; }

compare() {
    local file differing=()
    cmp "$work/by-linux.status" "$work/by-windows.status"
    diff <(cd "$work/by-linux" && find . -type f | sort) <(cd "$work/by-windows" && find . -type f | sort)
    while read -r file; do
        case $file in
        ./Log*.txt) continue ;;
        *.sql) cmp "$work/by-linux/$file" <(script_as_on_linux "$work/by-windows/$file") || differing+=("$file") ;;
        ./mybb_attachments*) cmp "$work/by-linux/$file" <(as_on_linux "$work/by-windows/$file") || differing+=("$file") ;;
        *) cmp "$work/by-linux/$file" "$work/by-windows/$file" || differing+=("$file") ;;
        esac
    done < <(cd "$work/by-linux" && find . -type f)
    grep -qF "'$(windows_path "$work/by-windows/mybb_posts1.txt" | sed 's/\\/\\\\/g')'" "$work/by-windows/"*.sql
    [ ${#differing[@]} -eq 0 ] || return 1
    echo "The same: $(cd "$work/by-linux" && find . -type f ! -name 'Log*' | wc -l) files of the sample board"
}

build
unit_tests
convert by-linux echo build/windows-compared/bin/tessaly-cli
convert by-windows windows_path "$wine" build/windows-tests/bin/tessaly-cli.exe
compare
