#!/usr/bin/env bash
# tidy.sh BUILD_FOLDER: platform/ and core/ pass the checks of .clang-tidy, and so compile with clang as well.
set -euo pipefail
build=$(realpath "$1")
cd "$(dirname "$0")/../.."

tool=$(command -v clang-tidy-14 || command -v clang-tidy)
mkdir -p "$build/tidy"

# A source that has passed is not read again until it, the checks, a header or the flags change.
ground=$(find platform core .clang-tidy "$build/compile_commands.json" -type f ! -name '*.cpp' -print0 |
    sort -z | xargs -0 cat | sha256sum)
check() {
    local passed
    passed=$build/tidy/$(sha256sum - "$1" <<<"$ground" | sha256sum | cut -d ' ' -f 1)
    # The flags are g++'s, and some of its warnings clang doesn't know.
    [ -e "$passed" ] && return
    "$tool" -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option "$1" && touch "$passed"
}
export -f check
export build tool ground
# shellcheck disable=SC2016 # the inner shell's
find platform core -name '*.cpp' -print0 | xargs -0 -n 1 -P "$(nproc)" bash -c 'check "$1"' check \
    2> >(grep -vE '^[0-9]+ warnings? generated' >&2) # those are in the system's headers
