#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what building and testing Tarvonix needs on Debian 12, when it is missing.
set -euo pipefail

# qt6-tools-dev: the Designer plugin and QUiLoader (whose CMake package also
# needs libqt6opengl6-dev); doxygen: the API reference; qt6-svg-dev: SVG export;
# poppler-utils: pdftotext, with which the tests read exported PDF files;
# qt6-base-private-dev: the accessibility tests switch the platform's
# accessibility on, as qtbase's own do.
packages=(cmake ninja-build g++ pkg-config qt6-base-dev qt6-base-private-dev qt6-tools-dev libqt6opengl6-dev libgl-dev fonts-dejavu-core gcovr doxygen qt6-svg-dev poppler-utils)
# valgrind: the demo's run under memcheck (scripts/valgrind.sh).
packages+=(valgrind)

missing=()
for package in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$package")
    fi
done

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo=""
    if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
