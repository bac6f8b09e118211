#!/usr/bin/env bash
# Builds the packages for Linux and tries them: the .deb in a fresh Debian made for it, where it is installed,
# run and removed again, and the .tar.gz where it was unpacked. Needs root.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/needs.sh
need run forms package

work=$(mktemp -d)
root=$work/root
build=$PWD/build/packages

end() {
    umount "$root/proc" 2>/dev/null || true
    rm -rf --one-file-system "$work"
}
trap end EXIT

fail() {
    echo "Failed: $*" >&2
    exit 1
}

make_packages() {
    cmake --preset release -B "$build" -DTESSALY_TESTS=OFF
    cmake --build "$build"
    rm -f "$build"/*.deb "$build"/*.tar.gz
    (cd "$build" && cpack)
    deb=$(echo "$build"/*.deb)
    archive=$(echo "$build"/*.tar.gz)
}

inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"; }
as_user() { chroot --userspec=1000:1000 "$root" env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 HOME=/home/user "$@"; }

make_root() {
    local system
    system=$(. /etc/os-release && echo "$VERSION_CODENAME")
    debootstrap --variant=minbase "$system" "$root" >"$work/debootstrap.log" ||
        { tail "$work/debootstrap.log" >&2; fail "no fresh Debian"; }
    # The programs learn from it where they lie.
    mount -t proc proc "$root/proc"
    cp /etc/resolv.conf "$root/etc/resolv.conf"
    mkdir -p "$root/home/user" "$root/board"
    cp -r samples/board/. "$root/board"
    cp "$deb" "$root/tessaly.deb"
    chown -R 1000:1000 "$root/home/user"
    inside apt-get -qq update
}

# The package manager's own records and the users' homes are no leftovers.
all_files() {
    (cd "$root" && find . -xdev \( -path ./proc -o -path ./sys -o -path ./dev -o -path ./tmp -o -path ./home \
        -o -path ./var/lib -o -path ./var/cache -o -path ./var/log -o -path ./root \) -prune -o -print | sort)
}

options=(--website http://www.radio-club.example/discus/ --forum http://forum.radio-club.example/ --admin admin)

run_as_user() {
    local settings=/home/user/.config/tessaly/tessaly-cli.ini
    as_user tessaly-cli convert --root /board --output /home/user/out "${options[@]}" \
        >"$work/output" 2>"$work/errors" || fail "exit status $? of tessaly-cli: $(cat "$work/errors")"
    grep -qxF "Settings are kept in $settings" "$work/errors" || fail "it is not told where the settings are"
    [ -s "$root$settings" ] || fail "no settings in $settings"
    [ "$(wc -l <"$root/home/user/out/mybb_posts1.txt")" -eq 49 ] || fail "not the 49 posts of the sample board"
    [ -n "$(ls "$root/home/user/out/redirect")" ] || fail "no redirection pages: Docs was not found"
}

# Ends by the clock alone: a window stays open.
run_window_as_user() {
    local status=0
    as_user tessaly --version
    as_user env QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=/home/user timeout 5 tessaly >"$work/output" 2>&1 ||
        status=$?
    [ "$status" -eq 124 ] || fail "exit status $status of tessaly: $(cat "$work/output")"
}

# Root can write beside the programs; that is to go away with them.
run_as_root() {
    inside tessaly-cli convert --root /board --output /tmp/out "${options[@]}" --quiet || fail "as root"
    [ -s "$root/usr/lib/tessaly/tessaly-cli.ini" ] || fail "root's settings are not beside the program"
}

try_deb() {
    make_root
    inside apt-get -qq install -y --no-install-recommends /tessaly.deb >"$work/apt.log" 2>&1 ||
        { tail "$work/apt.log" >&2; fail "the .deb cannot be installed"; }
    inside dpkg --purge tessaly >/dev/null
    all_files >"$work/before"
    inside dpkg -i /tessaly.deb >/dev/null
    for file in share/man/man1/tessaly-cli.1.gz share/applications/tessaly.desktop \
        share/icons/hicolor/scalable/apps/tessaly.svg "lib/tessaly/Docs/Tessaly Conversion.pdf"; do
        [ -s "$root/usr/$file" ] || fail "no /usr/$file"
    done
    run_as_user
    run_window_as_user
    run_as_root
    inside dpkg --remove tessaly >/dev/null
    all_files >"$work/after"
    diff "$work/before" "$work/after" || fail "the .deb leaves something behind"
    echo "The .deb was installed, run and removed without leftovers."
}

try_archive() {
    local folder
    mkdir "$work/unpacked"
    tar xzf "$archive" -C "$work/unpacked"
    folder=$(echo "$work"/unpacked/*)
    (cd / && "$folder/tessaly-cli" convert --root "$root/board" --output "$work/out" "${options[@]}" --quiet) ||
        fail "the unpacked tessaly-cli"
    [ -s "$folder/tessaly-cli.ini" ] || fail "the settings are not beside the unpacked program"
    "$folder/tessaly" --version
    echo "The .tar.gz runs where it was unpacked."
}

make_packages
try_deb
try_archive
