#!/usr/bin/env bash
# every_language.sh FOLDER [LANGUAGE…]: visits all states of the program, in all languages unless some are named, at
# scale 1 and 2. Fails if a text is cut or overlaps another. Saves in FOLDER the pictures at scale 1, and in FOLDER/sheets
# a sheet for each state with its pictures in all languages. Needs the packages that ./test installs.
set -euo pipefail
mkdir -p "$1"
folder=$(realpath "$1") languages=("${@:2}")
[ ${#languages[@]} -gt 0 ] || languages=(en de es fr it pt ru srCyrillic srLatin)
cd "$(dirname "$0")/../.."
# shellcheck source=setup/common.sh
. setup/common.sh

build release lumvale-sample-disk lumvale-tour
start_display 2400x1800 # for a window of 1040 × 800 points at scale 2
# visit SCALE ARGUMENT…: runs the tour in each language, each time on a new sample disk.
visit() {
    local language
    for language in "${languages[@]}"; do
        build/release/bin/lumvale-sample-disk "$folder/disk"
        pinned "$folder/home" env QT_SCALE_FACTOR="$1" LUMVALE_DISK="$folder/disk" LUMVALE_HOME=/Users/camille \
            build/release/bin/lumvale-tour "${@:2}" "$language" || status=1
    done
}
status=0
visit 1 "$folder"
visit 2 --check

cd "$folder"
mkdir -p sheets
for picture in "${languages[0]}"-*.png; do
    state=${picture#"${languages[0]}"-}
    montage -tile 3x -geometry 820x+4+4 "${languages[@]/%/-$state}" "sheets/$state"
done
say "The sheets are in $folder/sheets"
exit $status
