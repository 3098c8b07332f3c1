#!/usr/bin/env bash
# tidy.sh BUILD_FOLDER: platform/ and core/ pass the checks of .clang-tidy, and so compile with clang as well.
set -euo pipefail
build=$(realpath "$1")
cd "$(dirname "$0")/../.."

tool=$(command -v clang-tidy-14 || command -v clang-tidy)
find platform core -name '*.cpp' -print0 |
    xargs -0 -n 1 -P "$(nproc)" "$tool" -p "$build" --quiet \
        2> >(grep -vE '^[0-9]+ warnings? generated' >&2) # those are in the system's headers
