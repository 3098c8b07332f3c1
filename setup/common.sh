# What ./run and ./test share. Sourced by them at the top of the tree.
# shellcheck shell=bash

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s: %s\n' "$0" "$1" >&2
    exit "${2:-1}"
}

# packages SECTION…: the names listed under these headings of setup/packages.
packages() {
    awk -v sections=" $* " '
        /^\[/ { wanted = index(sections, " " substr($1, 2, length($1) - 2) " "); next }
        wanted && NF && !/^#/ { print $1 }' setup/packages
}

# missing PACKAGE…: those that aren't installed. One question to the package database answers for all.
missing() {
    comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
            sed -n 's/^installed //p' | sort)
}

# install SECTION…: installs what is missing of these sections.
install() {
    local packages as_root=()
    mapfile -t packages < <(packages "$@")
    if ! command -v dpkg-query >/dev/null; then
        say "Nothing is installed here, since this is no Debian system. Needed: ${packages[*]}"
        return
    fi
    mapfile -t packages < <(missing "${packages[@]}")
    [ ${#packages[@]} -gt 0 ] || return 0

    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "some packages are missing, and only root can install them:
apt-get update && apt-get install --no-install-recommends ${packages[*]}"
        as_root=(sudo)
    fi
    say "Installing ${packages[*]}"
    apt_get() {
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -q -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@"
    }
    apt_get update || fail "the list of packages could not be fetched"
    apt_get install -y --no-install-recommends "${packages[@]}" || fail "the packages could not be installed"
}

# build PRESET TARGET…
build() {
    cmake --preset "$1" --log-level=WARNING >/dev/null
    cmake --build --preset "$1" --target "${@:2}"
}

# start_display: a display that nobody sees, for this script and what it starts; it ends with the script.
start_display() {
    local number
    # Xvfb takes a free number itself, and names it once it can be used.
    coproc XVFB { exec Xvfb -displayfd 1 -screen 0 1600x1200x24 -nolisten tcp 2>build/xvfb.log; }
    # shellcheck disable=SC2064 # the process is the one of now
    trap "kill $XVFB_PID 2>/dev/null" EXIT
    read -r number <&"${XVFB[0]}" || fail "no display could be started; build/xvfb.log says why"
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY
}

# pinned FOLDER COMMAND…: runs a command that must behave, and look, the same on every machine. Of this
# environment it gets only where programs are found; FOLDER, made anew, is its home.
pinned() {
    local home=$1
    rm -rf "$home"
    mkdir -p "$home"
    mkdir -m 700 "$home/runtime"
    env -i PATH="$PATH" TMPDIR="${TMPDIR:-/tmp}" HOME="$home" XDG_RUNTIME_DIR="$home/runtime" \
        LC_ALL=C.UTF-8 TZ=UTC DISPLAY="${DISPLAY:-}" QT_QPA_PLATFORM=xcb \
        QSG_RENDER_LOOP=basic QT_SCALE_FACTOR=1 QT_FONT_DPI=96 "${@:2}"
}
