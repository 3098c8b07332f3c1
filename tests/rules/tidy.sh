#!/usr/bin/env bash
# tidy.sh BUILD_FOLDER: runs the checks of .clang-tidy on platform/ and core/, which also shows that they compile with
# clang.
set -euo pipefail
build=$(realpath "$1")
cd "$(dirname "$0")/../.."

tool=$(command -v clang-tidy-14 || command -v clang-tidy)
mkdir -p "$build/tidy"

# A source that has passed is skipped until it, a header, the checks or the compiler flags change.
inputs=$(find platform core .clang-tidy "$build/compile_commands.json" -type f ! -name '*.cpp' -print0 |
    sort -z | xargs -0 cat | sha256sum)
check() {
    local passed
    passed=$build/tidy/$(sha256sum - "$1" <<<"$inputs" | sha256sum | cut -d ' ' -f 1)
    # clang does not know all of g++'s warning flags in the compilation database.
    [ -e "$passed" ] && return
    "$tool" -p "$build" --quiet --extra-arg=-Wno-unknown-warning-option "$1" && touch "$passed"
}
export -f check
export build tool inputs
# shellcheck disable=SC2016 # expanded by the inner shell
find platform core -name '*.cpp' ! -path 'platform/macos/*' -print0 | xargs -0 -n 1 -P "$(nproc)" bash -c 'check "$1"' check \
    2> >(grep -vE '^[0-9]+ warnings? generated' >&2) # in system headers
