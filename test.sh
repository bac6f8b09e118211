#!/usr/bin/env bash
# Builds everything with sanitizers and runs every test.
#   ./test.sh [options of ctest, such as -R cli]
# TESSALY_SKIP_DATABASE=1 leaves out the tests that load a result into a MariaDB of their own,
# TESSALY_SKIP_BROWSER=1 those that look at a report in Chromium.
set -euo pipefail
cd "$(dirname "$0")"
. scripts/needs.sh

# What the tests of a part of the tree need is named here by its purpose.
need run test forms
if [ "${TESSALY_SKIP_DATABASE:-}" != 1 ]; then need database; fi
if [ "${TESSALY_SKIP_BROWSER:-}" != 1 ]; then need browser; fi

cmake --preset sanitize -DTESSALY_WERROR="${TESSALY_WERROR:-OFF}"
cmake --build build/sanitize
ctest --test-dir build/sanitize --parallel "$(nproc)" --output-on-failure "$@"
