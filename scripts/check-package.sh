#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
#
# Checks the library as a host team gets it, from the default build (run it
# after that build; it builds nothing of the library again):
#   - installed into a prefix, the consumer program in tests/consumer builds out
#     of tree with find_package(Tarvonix) and with pkg-config, and runs;
#   - a request for a newer version than installed is refused;
#   - cpack makes the .deb packages, which hold the expected files, and the
#     consumer builds against them unpacked, and runs.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/default
work=$PWD/$build/package-check
rm -rf "$work"
mkdir -p "$work"
export QT_QPA_PLATFORM=offscreen

failures=0
fail() {
    echo "check-package: $1" >&2
    failures=$((failures + 1))
}

# consumer NAME PREFIX LIBDIR [cmake arguments]: configures, builds and runs the consumer.
consumer() {
    local name=$1 prefix=$2 libdir=$3
    shift 3
    cmake -S tests/consumer -B "$work/$name" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" "$@" >"$work/$name.log"
    cmake --build "$work/$name" >>"$work/$name.log"
    LD_LIBRARY_PATH=$libdir "$work/$name/consumer"
}

# consumer_pkgconfig NAME PCDIR LIBDIR: the same program, built with the flags pkg-config gives.
consumer_pkgconfig() {
    local name=$1 pcdir=$2 libdir=$3
    local flags
    flags=$(PKG_CONFIG_PATH=$pcdir pkg-config --cflags --libs tarvonix)
    # shellcheck disable=SC2086 # the flags are words
    ${CXX:-c++} -std=c++20 -fPIC tests/consumer/main.cpp $flags -o "$work/$name"
    LD_LIBRARY_PATH=$libdir "$work/$name"
}

echo "== install into a prefix"
prefix=$work/prefix
cmake --install "$build" --prefix "$prefix" >"$work/install.log"
libdir=$(dirname "$(find "$prefix" -name 'libtarvonix.so' | head -n 1)")
consumer cmake "$prefix" "$libdir"
consumer_pkgconfig pkgconfig "$libdir/pkgconfig" "$libdir"
if find "$prefix" -name '*_p.h' | grep -q .; then
    fail "private headers were installed: $(find "$prefix" -name '*_p.h' | tr '\n' ' ')"
fi

echo "== a newer version than installed"
if cmake -S tests/consumer -B "$work/newer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DTARVONIX_VERSION=0.2 >"$work/newer.log" 2>&1; then
    fail "find_package(Tarvonix 0.2) accepted version 0.1"
elif ! grep -q 'version: 0\.1\.0' "$work/newer.log"; then
    cat "$work/newer.log" >&2
    fail "find_package(Tarvonix 0.2) failed without CMake's version message"
fi

echo "== Debian packages"
(cd "$build" && cpack -G DEB -B "$work/deb" >"$work/cpack.log")
# expect PACKAGE FILE...: each file is in the package.
expect() {
    local package=$1 contents
    shift
    contents=$(dpkg-deb --contents "$work"/deb/"${package}"_*.deb | awk '{print $6}')
    for file in "$@"; do
        grep -q -x -- "./usr/$file" <<<"$contents" || fail "$package lacks /usr/$file"
    done
}
plugindir=$(qmake6 -query QT_INSTALL_PLUGINS)/designer
expect libtarvonix0 lib/libtarvonix.so.0 lib/libtarvonix_model.so.0 share/doc/libtarvonix0/copyright
expect libtarvonix-dev lib/libtarvonix.so lib/libtarvonix_model.so \
    include/tarvonix/tarvonix.h include/tarvonix/map/mapax.h include/tarvonix/model/objeto.h \
    include/tarvonix/tarvonix_export.h include/tarvonix/tarvonixmodel_export.h \
    lib/cmake/Tarvonix/TarvonixConfig.cmake lib/cmake/Tarvonix/TarvonixConfigVersion.cmake \
    lib/cmake/Tarvonix/TarvonixTargets.cmake lib/pkgconfig/tarvonix.pc lib/pkgconfig/tarvonix-model.pc
expect tarvonix-designer-plugin "${plugindir#/usr/}/libtarvonixdesigner.so"
for runtime in libqt6widgets6 libqt6svg6 libqt6printsupport6; do
    dpkg-deb --field "$work"/deb/libtarvonix0_*.deb Depends | grep -q "$runtime" \
        || fail "libtarvonix0 does not depend on $runtime"
done
dpkg-deb --field "$work"/deb/libtarvonix-dev_*.deb Depends | grep -q qt6-svg-dev \
    || fail "libtarvonix-dev does not depend on qt6-svg-dev"
for deb in "$work"/deb/*.deb; do
    dpkg-deb -x "$deb" "$work/unpacked"
done
consumer cmake-deb "$work/unpacked/usr" "$work/unpacked/usr/lib"

if [ $failures -gt 0 ]; then
    echo "check-package: $failures failure(s)" >&2
    exit 1
fi
echo "check-package: the installed and the packaged library build and run a host"
