#!/usr/bin/env bash
# Makes Tessaly-<version>-windows-x64.zip on Linux: both programs, Docs, the manual and the licences of what is
# linked in. Qt's base module is built for Windows once, from Debian's source package, into build/windows-qt or the
# folder that TESSALY_WINDOWS_QT names, which several copies of this tree can share. packaging/windows/README.md
# tells how long it takes.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/needs.sh
need run forms windows package

qt=${TESSALY_WINDOWS_QT:-$PWD/build/windows-qt}
toolchain=$PWD/packaging/windows/mingw-w64.cmake

# The same lists of packages as the machine's own, but for sources, kept apart from them.
apt_for_sources() {
    apt-get -o Dir::Etc::SourceList="$qt/apt/sources.list" -o Dir::Etc::SourceParts="$qt/apt/parts" \
        -o Dir::State::Lists="$qt/apt/lists" -o Dir::Cache="$qt/apt/cache" -qq "$@"
}

# The tools that run on Linux must be of the same version.
source_version() { dpkg-query -W -f='${source:Version}' qt6-base-dev-tools; }

fetch_source() {
    [ -d "$qt/source" ] && return
    mkdir -p "$qt/apt/parts" "$qt/apt/lists/partial" "$qt/apt/cache/archives/partial"
    sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$qt/apt/sources.list" 2>/dev/null || true
    if [ -f /etc/apt/sources.list.d/debian.sources ]; then
        sed 's/^Types:.*/Types: deb-src/' /etc/apt/sources.list.d/debian.sources >"$qt/apt/parts/debian.sources"
    fi
    apt_for_sources update
    (cd "$qt" && apt_for_sources source --download-only "qt6-base=$(source_version)")
    rm -rf "$qt/unpacked"
    dpkg-source -x "$qt"/qt6-base_*.dsc "$qt/unpacked"
    leave_out "$qt/unpacked"
    mv "$qt/unpacked" "$qt/source"
}

# Debian's package lacks the header for pen tablets, whose licence forbids changes. DirectWrite's list of fonts is
# there only with Direct2D, and the module for printing compiles only with a printer. licences.txt tells of it too.
leave_out() {
    local windows=$1/src/plugins/platforms/windows
    sed -i 's/QT_CONFIG(\(tabletevent\|directwrite3\))/0/' "$windows"/*.h "$windows"/*.cpp
    sed -i 's/CONDITION QT_FEATURE_tabletevent/CONDITION FALSE/' "$windows/CMakeLists.txt"
    sed -i 's/^if(QT_FEATURE_printsupport)/if(FALSE)/' "$1/src/CMakeLists.txt"
}

# Only what the window needs: no network, databases, printing to files, OpenGL or tests; and what Debian has no
# Windows build of comes from Qt's own tree.
configure_qt() {
    local feature off=() own=()
    for feature in network sql xml testlib concurrent dbus vulkan printer pdf direct2d jpeg icu glib zstd; do
        off+=("-DFEATURE_$feature=OFF")
    done
    for feature in graphicsview mdiarea wizard undoview fontdialog lcdnumber dial calendarwidget; do
        off+=("-DFEATURE_$feature=OFF")
    done
    for feature in zlib pcre2 png freetype harfbuzz doubleconversion; do
        own+=("-DFEATURE_system_$feature=OFF")
    done
    cmake -S "$qt/source" -B "$qt/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_BUILD_TYPE=MinSizeRel -DCMAKE_INSTALL_PREFIX="$qt/install" -DBUILD_SHARED_LIBS=OFF \
        -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$(host_cmake_folder)" \
        -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DINPUT_opengl=no "${off[@]}" "${own[@]}"
}

# An interrupted build is taken up again where it stood.
build_qt() {
    [ -f "$qt/install/lib/cmake/Qt6/Qt6Config.cmake" ] && return
    [ -f "$qt/build/build.ninja" ] || configure_qt
    nice -n 19 cmake --build "$qt/build" --parallel
    cmake --install "$qt/build" >"$qt/install.log"
}

host_cmake_folder() { dirname "$(dirname "$(dpkg -L qt6-base-dev | grep '/Qt6/Qt6Config.cmake$')")"; }

gather_licences() {
    local library
    rm -rf "$qt/licences"
    mkdir -p "$qt/licences/Qt"
    sed "s/@version@/$(source_version)/" packaging/windows/licences.txt >"$qt/licences/README.txt"
    cp "$qt/source/debian/copyright" "$qt/licences/Qt/copyright.txt"
    cp "$qt/source/LICENSES"/{LGPL-3.0-only,GPL-3.0-only}.txt "$qt/licences/Qt/"
    for library in freetype harfbuzz-ng libpng zlib pcre2 double-conversion md4c; do
        mkdir "$qt/licences/Qt/$library"
        find "$qt/source/src/3rdparty/$library" -maxdepth 1 \
            \( -iname 'LICEN*' -o -iname 'COPYING*' -o -iname '*LICENSE.txt' \) \
            -exec cp {} "$qt/licences/Qt/$library/" \;
    done
    for library in libcli11-dev nlohmann-json3-dev libsimpleini-dev mingw-w64-common gcc-mingw-w64-base; do
        cp "/usr/share/doc/$library/copyright" "$qt/licences/$library.txt"
    done
}

build_package() {
    local build=$PWD/build/windows-package
    cmake --preset windows -B "$build" -DTESSALY_FORMS=ON -DTESSALY_LICENCES="$qt/licences" \
        -DCMAKE_PREFIX_PATH="$qt/install" -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$(host_cmake_folder)"
    cmake --build "$build"
    (cd "$build" && cpack)
    ls -l "$build"/*.zip
}

fetch_source
build_qt
gather_licences
build_package
