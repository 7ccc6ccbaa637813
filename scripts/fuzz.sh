#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fuzzes the demo's site reader with libFuzzer, under ASan and UBSan, from the
# seeds in tests/fuzz/corpus. Builds with clang in build/fuzz; the arguments go
# to libFuzzer (default: five minutes). New inputs worth keeping land in
# build/fuzz/corpus, a crashing input in build/fuzz/crash-*.
#   scripts/fuzz.sh -max_total_time=3600
set -euo pipefail
cd "$(dirname "$0")/.."

sanitizers="-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer"
cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ \
    -DCMAKE_CXX_FLAGS="$sanitizers" -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DTARVONIX_BUILD_FUZZERS=ON -DTARVONIX_BUILD_TESTS=OFF -DTARVONIX_BUILD_EXAMPLES=OFF \
    -DTARVONIX_BUILD_BENCHMARKS=OFF -DTARVONIX_BUILD_DESIGNER_PLUGIN=OFF >/dev/null
cmake --build build/fuzz --target fuzz_sitio -j "$(nproc 2>/dev/null || echo 2)"

mkdir -p build/fuzz/corpus
[ $# -gt 0 ] || set -- -max_total_time=300
# A site that takes seconds or a gigabyte to read is a fault too (20 s leaves room for a busy machine).
cd build/fuzz
ASAN_OPTIONS=detect_leaks=1:quarantine_size_mb=64 UBSAN_OPTIONS=print_stacktrace=1 \
    exec bin/fuzz_sitio -timeout=20 -rss_limit_mb=1024 -max_len=65536 "$@" corpus ../../tests/fuzz/corpus
