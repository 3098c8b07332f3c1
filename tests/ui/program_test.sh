#!/usr/bin/env bash
# program_test.sh LUMVALE TITLE HOST: the program opens its window on a disk, on X11 with and without OpenGL and on
# Wayland, asks HOST for updates and leaves no files in the home of its user. Without a disk it asks for one; a folder
# that is no Mac's disk it refuses in one line.
set -euo pipefail
lumvale=$1 title=$2 host=$3
work=$(mktemp -d)
disk=$work/disk
program='' proxy='' weston=''
trap '[ -z "$program$proxy$weston" ] || kill $program $proxy $weston 2>/dev/null || true; rm -rf "$work"' EXIT
home=$work/home # of the user who runs it
mkdir -p "$disk/Users/me" "$home" "$work/linux/home/me" "$work/two/Users/me" "$work/two/Users/you"
touch "$work/file" "$disk/file"

fail() {
    printf '%s\n' "$@" "what it said:" "$(cat "$work/said")" >&2
    exit 1
}

# refused COMMAND…: fails unless the command ends with one line. Without a display: opening a window would fail with
# another status.
refused() {
    local status=0
    env -u DISPLAY -u LUMVALE_DISK "$@" >"$work/said" 2>&1 || status=$?
    [ "$status" = 2 ] || fail "status $status of $*"
    [ "$(wc -l <"$work/said")" = 1 ] || fail "not one line of $*"
}

for case in "$work/missing /Users/me" "$work/file /" "$work/linux /home/me" "$disk /Users/absent" "$disk /file"; do
    read -r root inside <<<"$case"
    refused "$lumvale" "$root" "$inside"
    refused LUMVALE_DISK="$root" LUMVALE_HOME="$inside" "$lumvale"
done
refused "$lumvale" "$work/two" # which home?
env -u DISPLAY "$lumvale" --version >"$work/said" || fail "no version"
[[ $(cat "$work/said") == "$title "[0-9]* ]] || fail "not a version"
env -u DISPLAY "$lumvale" --help >"$work/said" || fail "no help"

# A proxy that refuses: it prints its port, then the first line of the first request.
# shellcheck disable=SC2016 # the variables are Perl's
refusing_proxy='use IO::Socket::INET;
    $| = 1;
    my $server = IO::Socket::INET->new(Listen => 1, LocalAddr => "127.0.0.1") or die;
    print $server->sockport, "\n";
    print scalar readline $server->accept;'

# start VARIABLE=VALUE… [ARGUMENT…]: starts the program in this environment, with the proxy.
start() {
    exec 3< <(perl -e "$refusing_proxy")
    proxy=$!
    read -r port <&3
    local variables=()
    while [[ ${1-} == *=* ]]; do
        variables+=("$1")
        shift
    done
    env -u LUMVALE_DISK -u XDG_CACHE_HOME -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME HOME="$home" \
        https_proxy="http://127.0.0.1:$port" "${variables[@]}" "$lumvale" "$@" >"$work/said" 2>&1 &
    program=$!
}

# wait_until WHAT COMMAND…: repeats the command until it succeeds; fails if the program ends.
wait_until() {
    local tenth
    for ((tenth = 0; ; ++tenth)); do
        kill -0 $program 2>/dev/null || fail "it ended by itself: $1"
        ! "${@:2}" || break
        ((tenth < 600)) || fail "never seen: $1"
        sleep 0.1
    done
}

stop() {
    kill $program
    wait $program || true
    ! grep -E 'qrc:|\.qml' "$work/said" || fail "a fault in a screen"
    kill $proxy 2>/dev/null || true
    program='' proxy=''
}

# has_window SIZE: succeeds if the program shows a window of the title and this size on X11, and asks for a dark title
# bar. Other programs on the display may have a window of this title as well.
has_window() {
    local id
    for id in $(xwininfo -root -tree | sed -n "s/^ *\(0x[0-9a-f]*\) \"$title\":.* $1+.*/\1/p"); do
        if xprop -id "$id" _NET_WM_PID | grep -q " $program\$" && xwininfo -id "$id" | grep -q IsViewable &&
            xprop -id "$id" _GTK_THEME_VARIANT | grep -q '"dark"'; then
            return
        fi
    done 2>/dev/null
    return 1
}

# Succeeds if Wayland's screen shows more than the compositor's own plain background.
is_drawn() {
    rm -f "$work"/wayland-screenshot-*.png
    (cd "$work" && XDG_PICTURES_DIR="$work" weston-screenshooter) || return 1
    (($(identify -format %k "$work"/wayland-screenshot-*.png) >= 1000))
}

asked_for_updates() {
    local request=''
    read -r -t 60 request <&3 || true
    [[ $request == "CONNECT $host:443 "* ]] || fail "it did not ask $host for updates: $request"
}

for opengl in xcb_glx none; do
    start QT_XCB_GL_INTEGRATION=$opengl "$disk"
    wait_until "the window with $opengl" has_window 1040x800
    asked_for_updates
    stop
done

start
wait_until "the choice of a disk" has_window 560x520
stop

export XDG_RUNTIME_DIR=$work/runtime WAYLAND_DISPLAY=wayland-lumvale
mkdir -m 700 "$XDG_RUNTIME_DIR"
printf '[core]\nidle-time=0\n[shell]\npanel-position=none\nbackground-color=0xff000000\n' >"$work/weston.ini"
# With its debug protocol anyone may take pictures of the screen.
weston --backend=headless-backend.so --use-pixman --debug --socket=$WAYLAND_DISPLAY --width=1366 --height=768 \
    --config="$work/weston.ini" >"$work/weston.log" 2>&1 &
weston=$!
for _ in {1..600}; do
    [ ! -S "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY" ] || break
    sleep 0.1
done
start QT_QPA_PLATFORM=wayland "$disk"
wait_until "a frame on Wayland" is_drawn
asked_for_updates
stop
kill $weston
weston=''

# The graphics driver and the font library keep caches of their own.
left=$(find "$home" -type f ! -path '*/mesa_shader_cache*' ! -path '*/fontconfig/*')
[ -z "$left" ] || fail "it left files in the user's home:" "$left"
