#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the library and runs every test: first a plain debug build, then a
# build with AddressSanitizer and UndefinedBehaviorSanitizer; checks the
# installed and packaged library with a host program and builds the API
# reference from the default build, and runs the demo under valgrind; then a build with coverage
# instrumentation that prints the coverage of src/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh
scripts/check-includes.sh
# Every source file says its licence.
unlicensed=$(find src tests examples benchmarks -name '*.h' -o -name '*.cpp' | xargs grep -L 'SPDX-License-Identifier' || true)
if [ -n "$unlicensed" ]; then
    echo "No SPDX licence line in:"; echo "$unlicensed"; exit 1
fi

jobs=$(nproc 2>/dev/null || echo 2)
export QT_QPA_PLATFORM=offscreen

for preset in default asan; do
    echo "== $preset build"
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" -j "$jobs"
    # The model library links Qt Core and Gui, nothing of the widgets.
    scripts/check-includes.sh "build/$preset/lib/libtarvonix_model.so"
    echo "== $preset tests"
    ctest --preset "$preset" -j "$jobs"
done

# The library as a host gets it, from the default build: nothing is built again.
echo "== package"
scripts/check-package.sh
echo "== valgrind"
scripts/valgrind.sh
echo "== API reference"
cmake --build --preset default --target docs

# Line and branch coverage of src/, printed for the record (not a gate).
echo "== coverage"
scripts/coverage.sh

# The tests' size against the library's, in lines: the project keeps it at 35 % or less.
lines() { find "$1" \( -name '*.h' -o -name '*.cpp' \) -exec cat {} + | wc -l; }
echo "== size: tests $(lines tests) lines, src $(lines src) lines ($((100 * $(lines tests) / $(lines src))) %)"
