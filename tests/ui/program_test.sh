#!/usr/bin/env bash
# program_test.sh LUMVALE: the program opens its window on a disk, with and without OpenGL, and where there is
# no such disk or home it says so in one line and opens nothing.
set -euo pipefail
lumvale=$1
disk=$(mktemp -d)
trap 'rm -rf "$disk"' EXIT
mkdir -p "$disk/Users/me"
touch "$disk/file"

fail() {
    printf '%s\n' "$@" "what it said:" "$(cat "$disk/said")" >&2
    exit 1
}

# Without a display, so that a window would fail it with another status.
for case in "$disk/missing /Users/me" "$disk/file /" "$disk /Users/nobody" "$disk /file"; do
    read -r root home <<<"$case"
    status=0
    env -u DISPLAY LUMVALE_DISK="$root" LUMVALE_HOME="$home" "$lumvale" >"$disk/said" 2>&1 || status=$?
    [ "$status" = 2 ] || fail "status $status for $case"
    [ "$(wc -l <"$disk/said")" = 1 ] || fail "not one line for $case"
done

for backend in '' software; do
    status=0
    QT_QUICK_BACKEND=$backend LUMVALE_DISK=$disk LUMVALE_HOME=/Users/me XDG_CONFIG_HOME=$disk/config \
        timeout 3 "$lumvale" >"$disk/said" 2>&1 || status=$?
    [ "$status" = 124 ] || fail "it ended by itself with status $status, drawing with ${backend:-OpenGL}"
    ! grep -E 'qrc:|\.qml' "$disk/said" || fail "a fault in a screen, drawing with ${backend:-OpenGL}"
done
