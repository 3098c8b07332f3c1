#!/usr/bin/env bash
# program_test.sh LUMVALE TITLE HOST: the program opens its window on a disk, with and without OpenGL, asks HOST for
# updates and leaves no files in the home of its user. Without such a disk or home it prints one line and ends.
set -euo pipefail
lumvale=$1 title=$2 host=$3
disk=$(mktemp -d)
program='' proxy=''
trap '[ -z "$program$proxy" ] || kill $program $proxy 2>/dev/null || true; rm -rf "$disk"' EXIT
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
for case in "$disk/missing /Users/me" "$disk/file /" "$disk /Users/absent" "$disk /file"; do
    read -r root inside <<<"$case"
    status=0
    env -u DISPLAY LUMVALE_DISK="$root" LUMVALE_HOME="$inside" "$lumvale" >"$disk/said" 2>&1 || status=$?
    [ "$status" = 2 ] || fail "status $status for $case"
    [ "$(wc -l <"$disk/said")" = 1 ] || fail "not one line for $case"
done

# A proxy that refuses: it prints its port, then the first line of the first request.
# shellcheck disable=SC2016 # the variables are Perl's
refusing_proxy='use IO::Socket::INET;
    $| = 1;
    my $server = IO::Socket::INET->new(Listen => 1, LocalAddr => "127.0.0.1") or die;
    print $server->sockport, "\n";
    print scalar readline $server->accept;'

for backend in '' software; do
    exec 3< <(perl -e "$refusing_proxy")
    proxy=$!
    read -r port <&3
    env -u XDG_CACHE_HOME -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" \
        https_proxy="http://127.0.0.1:$port" QT_QUICK_BACKEND="$backend" LUMVALE_DISK="$disk" \
        LUMVALE_HOME=/Users/me "$lumvale" >"$disk/said" 2>&1 &
    program=$!
    for ((tenth = 0; ; ++tenth)); do
        kill -0 $program 2>/dev/null || fail "it ended by itself, drawing with ${backend:-OpenGL}"
        ! has_window || break
        ((tenth < 600)) || fail "no window with the title $title, drawing with ${backend:-OpenGL}"
        sleep 0.1
    done
    request=''
    read -r -t 60 request <&3 || true
    [[ $request == "CONNECT $host:443 "* ]] || fail "it did not ask $host for updates: $request"
    kill $program
    wait $program || true
    program='' proxy=''
    ! grep -E 'qrc:|\.qml' "$disk/said" || fail "a fault in a screen, drawing with ${backend:-OpenGL}"
done

# The graphics driver keeps a cache of its own.
left=$(find "$home" -type f ! -path '*/mesa_shader_cache*')
[ -z "$left" ] || fail "it left files in the user's home:" "$left"
