#!/usr/bin/env bash
# Fuzzes each target for some seconds from its corpus: tests/fuzz/run.sh [SECONDS] [TARGET...]
# New finds and inputs stay in build/fuzz; the corpora in the tree are only read.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/needs.sh
need run fuzz

seconds=${1:-10}
shift || true
cmake --preset fuzz >/dev/null
cmake --build build/fuzz --target fuzz_targets

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in tests/fuzz/*_fuzz.cpp; do targets+=("$(basename "$source" _fuzz.cpp)"); done
fi
# A place in memory, where there is one: every input writes files.
[ -d /dev/shm ] && export TMPDIR=/dev/shm
for target in "${targets[@]}"; do
    mkdir -p "build/fuzz/inputs/$target"
    echo "fuzzing $target for $seconds s"
    log="build/fuzz/$target.log"
    "build/fuzz/bin/${target}_fuzz" -max_total_time="$seconds" -timeout=120 -rss_limit_mb=2048 -max_len=20000 \
        -dict=tests/fuzz/board.dict -artifact_prefix="build/fuzz/" "build/fuzz/inputs/$target" \
        "tests/fuzz/corpus/$target" >"$log" 2>&1 || { tail -n 60 "$log" >&2; exit 1; }
    tail -n 1 "$log"
done
echo "${#targets[@]} passed, 0 failed"
