#!/usr/bin/env bash
# tour_test.sh SAMPLE_DISK TOUR FOLDER: makes a sample disk in FOLDER and visits all states of the program on it by real
# clicks, in English.
set -euo pipefail
sample_disk=$1 tour=$2 folder=$3
rm -rf "$folder"
mkdir -p "$folder"
trap 'rm -rf "$folder"' EXIT
"$sample_disk" "$folder/disk"
LUMVALE_DISK=$folder/disk LUMVALE_HOME=/Users/camille "$tour" --check en
