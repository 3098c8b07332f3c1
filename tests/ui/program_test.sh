#!/usr/bin/env bash
# program_test.sh LUMVALE TITLE: the program opens its window on a disk, with and without OpenGL, and leaves no files
# in the home of its user. Without such a disk or home it prints one line and ends.
set -euo pipefail
lumvale=$1 title=$2
disk=$(mktemp -d)
program=''
trap '[ -z "$program" ] || kill "$program" 2>/dev/null || true; rm -rf "$disk"' EXIT
home=$disk/host-home # of the user who runs it
mkdir -p "$disk/Users/me" "$home"
touch "$disk/file"

fail() {
    printf '%s\n' "$@" "what it said:" "$(cat "$disk/said")" >&2
    exit 1
}

# Succeeds if the program shows a window of this title; other programs on the display may have one as well.
has_window() {
    local id
    for id in $(xwininfo -root -tree | sed -n "s/^ *\(0x[0-9a-f]*\) \"$title\":.*/\1/p"); do
        if xprop -id "$id" _NET_WM_PID | grep -q " $program\$" && xwininfo -id "$id" | grep -q IsViewable; then
            return
        fi
    done 2>/dev/null
    return 1
}

# Without a display: opening a window would fail with another status.
for case in "$disk/missing /Users/me" "$disk/file /" "$disk /Users/nobody" "$disk /file"; do
    read -r root inside <<<"$case"
    status=0
    env -u DISPLAY LUMVALE_DISK="$root" LUMVALE_HOME="$inside" "$lumvale" >"$disk/said" 2>&1 || status=$?
    [ "$status" = 2 ] || fail "status $status for $case"
    [ "$(wc -l <"$disk/said")" = 1 ] || fail "not one line for $case"
done

for backend in '' software; do
    env -u XDG_CACHE_HOME -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" \
        QT_QUICK_BACKEND="$backend" LUMVALE_DISK="$disk" LUMVALE_HOME=/Users/me "$lumvale" >"$disk/said" 2>&1 &
    program=$!
    for ((tenth = 0; ; ++tenth)); do
        kill -0 $program 2>/dev/null || fail "it ended by itself, drawing with ${backend:-OpenGL}"
        ! has_window || break
        ((tenth < 600)) || fail "no window with the title $title, drawing with ${backend:-OpenGL}"
        sleep 0.1
    done
    kill $program
    wait $program || true
    program=''
    ! grep -E 'qrc:|\.qml' "$disk/said" || fail "a fault in a screen, drawing with ${backend:-OpenGL}"
done

# The graphics driver keeps a cache of its own.
left=$(find "$home" -type f ! -path '*/mesa_shader_cache*')
[ -z "$left" ] || fail "it left files in the user's home:" "$left"
