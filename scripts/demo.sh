#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the library and runs the demo host program: a winery on the map.
# With a display it opens a window; without one it renders the map to
# bodega.png (or to the file given with --screenshot FILE) and says where;
# --export FILE writes the map to a PNG, SVG or PDF file.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc 2>/dev/null || echo 2)"
exec build/release/bin/bodega "$@"
