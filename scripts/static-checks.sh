#!/usr/bin/env bash
# Static checks of the core and the command line program: scripts/static-checks.sh BUILD
# BUILD is a build folder made by clang, for its list of compile commands.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1

rooms=(text platform control reader members output translate check finish cli)
mapfile -t sources < <(git ls-files "${rooms[@]/%//*.cpp}" | grep -v '_windows\.cpp$')
printf '%s\n' "${sources[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy -p "$build" --quiet
cppcheck --quiet --error-exitcode=1 --std=c++20 --language=c++ --inline-suppr -I . \
    --enable=warning,performance,portability --suppress=missingIncludeSystem \
    --suppress=unknownMacro --suppress=syntaxError "${sources[@]}"
