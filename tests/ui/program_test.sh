#!/usr/bin/env bash
# program_test.sh LUMVALE: the program opens its window on a disk, with and without OpenGL, and leaves nothing
# behind by that; where there is no such disk or home it says so in one line and opens nothing.
set -euo pipefail
lumvale=$1
disk=$(mktemp -d)
trap 'rm -rf "$disk"' EXIT
home=$disk/host-home # of the user who runs it, apart from the disk that it cleans
mkdir -p "$disk/Users/me" "$home"
touch "$disk/file"

fail() {
    printf '%s\n' "$@" "what it said:" "$(cat "$disk/said")" >&2
    exit 1
}

# Without a display, so that a window would fail it with another status.
for case in "$disk/missing /Users/me" "$disk/file /" "$disk /Users/nobody" "$disk /file"; do
    read -r root inside <<<"$case"
    status=0
    env -u DISPLAY LUMVALE_DISK="$root" LUMVALE_HOME="$inside" "$lumvale" >"$disk/said" 2>&1 || status=$?
    [ "$status" = 2 ] || fail "status $status for $case"
    [ "$(wc -l <"$disk/said")" = 1 ] || fail "not one line for $case"
done

for backend in '' software; do
    status=0
    env -u XDG_CACHE_HOME -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" \
        QT_QUICK_BACKEND="$backend" LUMVALE_DISK="$disk" LUMVALE_HOME=/Users/me \
        timeout 3 "$lumvale" >"$disk/said" 2>&1 || status=$?
    [ "$status" = 124 ] || fail "it ended by itself with status $status, drawing with ${backend:-OpenGL}"
    ! grep -E 'qrc:|\.qml' "$disk/said" || fail "a fault in a screen, drawing with ${backend:-OpenGL}"
done

# What the graphics driver keeps is its own affair.
left=$(find "$home" -type f ! -path '*/mesa_shader_cache*')
[ -z "$left" ] || fail "it left files in the user's home:" "$left"
