#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the demo's screenshot under valgrind's memcheck, from the default build:
# any invalid read or write, or a leak definitely lost in the library or the
# demo, fails. Qt and fontconfig need no suppressions here: what they keep for
# the whole process is still reachable, not lost.
set -euo pipefail
cd "$(dirname "$0")/.."

bodega=build/default/bin/bodega
[ -x "$bodega" ] || cmake --build --preset default --target bodega
salida=$(mktemp -d)
trap 'rm -rf "$salida"' EXIT
QT_QPA_PLATFORM=offscreen nice -n 10 valgrind --tool=memcheck --error-exitcode=1 \
    --leak-check=full --errors-for-leak-kinds=definite --show-leak-kinds=definite \
    --num-callers=30 \
    "$bodega" --screenshot "$salida/bodega.png"
