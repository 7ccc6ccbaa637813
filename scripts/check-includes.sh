#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Keeps the library's layers apart: a folder under src/tarvonix/ includes only
# from itself and the folders below it, and the model library (core/, model/)
# includes nothing of Qt Widgets. The Designer plugin (src/designer/) sits above
# the whole library, which includes nothing of it nor of Qt's Designer modules. With a built model library as argument, also
# checks that it links no Qt library but Core and Gui.
set -euo pipefail
cd "$(dirname "$0")/.."

# The folders from the bottom up; the files at src/tarvonix/ itself sit above
# them, and the Designer plugin above those.
order=(core model platform widgets views containers leg legend map output "(top)" designer)
model_folders=(core model)

rank() {
    local i
    for i in "${!order[@]}"; do
        if [ "${order[$i]}" = "$1" ]; then echo "$i"; return; fi
    done
    echo "${#order[@]}"
}

qt_headers=""
for dir in /usr/include/*/qt6 /usr/include/qt6; do
    if [ -d "$dir/QtCore" ]; then qt_headers=$dir; break; fi
done

failures=0
fail() {
    echo "$1" >&2
    failures=$((failures + 1))
}

while IFS= read -r file; do
    if [[ $file == src/designer/* ]]; then
        folder=designer
    else
        relative=${file#src/tarvonix/}
        folder=${relative%%/*}
        [ "$folder" = "$relative" ] && folder="(top)"
    fi
    own=$(rank "$folder")
    is_model=0
    for m in "${model_folders[@]}"; do [ "$folder" = "$m" ] && is_model=1; done

    while IFS=: read -r line target; do
        case $target in
        tarvonix/*/*)
            other=${target#tarvonix/}
            other=${other%%/*}
            if [ "$(rank "$other")" -gt "$own" ]; then
                fail "$file:$line: $folder includes <$target>, which is above it"
            fi
            ;;
        designer/* | QtUiPlugin/* | QtDesigner/* | QtUiTools/* | QDesigner* | QUiLoader)
            [ "$folder" = designer ] || fail "$file:$line: the library includes <$target>, of the Designer plugin"
            ;;
        tarvonix/tarvonix_export.h)
            [ $is_model -eq 1 ] && fail "$file:$line: the model library includes the controls' export header"
            ;;
        Q*)
            if [ $is_model -eq 1 ]; then
                header=${target#QtCore/}
                header=${header#QtGui/}
                if [[ $target == QtWidgets/* ]]; then
                    fail "$file:$line: the model library includes <$target>"
                elif [ -n "$qt_headers" ] && [ ! -e "$qt_headers/QtCore/$header" ] && [ ! -e "$qt_headers/QtGui/$header" ]; then
                    fail "$file:$line: the model library includes <$target>, which is neither Qt Core nor Qt Gui"
                fi
            fi
            ;;
        esac
    done < <(grep -n -E '^[[:space:]]*#[[:space:]]*include[[:space:]]*<' "$file" \
        | sed -E 's/^([0-9]+):[[:space:]]*#[[:space:]]*include[[:space:]]*<([^>]+)>.*/\1:\2/')
done < <(find src/tarvonix src/designer -name '*.h' -o -name '*.cpp' | sort)

if [ $# -gt 0 ]; then
    linked=$(readelf -d "$1" | sed -n -E 's/.*NEEDED.*\[(libQt6[A-Za-z]+)\..*/\1/p')
    for library in $linked; do
        case $library in
        libQt6Core | libQt6Gui) ;;
        *) fail "$1 links $library" ;;
        esac
    done
fi

if [ $failures -gt 0 ]; then
    echo "check-includes: $failures include(s) against the layers" >&2
    exit 1
fi
echo "check-includes: every include points down the layers"
