#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the library and its tests with gcov instrumentation, runs the tests and
# prints the line and branch coverage of src/. It reports; it does not judge.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

jobs=$(nproc 2>/dev/null || echo 2)
export QT_QPA_PLATFORM=offscreen

cmake --preset coverage >/dev/null
cmake --build --preset coverage -j "$jobs"
# Counts from an earlier run would add up with this one.
find build/coverage -name '*.gcda' -delete
ctest --preset coverage -j "$jobs"

# Branches that only a thrown exception or the compiler's own code take are left
# out: every trapped operation would otherwise count each call's unwinding path.
gcovr --root . --object-directory build/coverage --filter 'src/' \
    --exclude-throw-branches --exclude-unreachable-branches \
    --print-summary --output build/coverage/coverage.txt
echo "Per file: build/coverage/coverage.txt"
