#!/usr/bin/env bash
# Builds the library and runs the demo host program.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/setup.sh

cmake --preset release >/dev/null
cmake --build --preset release -j "$(nproc 2>/dev/null || echo 2)"
exec build/release/bin/muestra "$@"
