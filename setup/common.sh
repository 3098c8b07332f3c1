# Functions of ./run and ./test, which source this file at the top of the tree.
# shellcheck shell=bash

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s: %s\n' "$0" "$1" >&2
    exit "${2:-1}"
}

# packages SECTION…: prints the packages listed under these headings of setup/packages.
packages() {
    awk -v sections=" $* " '
        /^\[/ { wanted = index(sections, " " substr($1, 2, length($1) - 2) " "); next }
        wanted && NF && !/^#/ { print $1 }' setup/packages
}

# missing PACKAGE…: prints those that are not installed. One query of the package database covers all of them.
missing() {
    comm -23 <(printf '%s\n' "$@" | sort) \
        <(dpkg-query --show --showformat '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null |
            sed -n 's/^installed //p' | sort)
}

# install SECTION…: installs the missing packages of these sections.
install() {
    local packages as_root=()
    mapfile -t packages < <(packages "$@")
    if ! command -v dpkg-query >/dev/null; then
        say "This is not a Debian system, so nothing is installed. Required packages: ${packages[*]}"
        return
    fi
    mapfile -t packages < <(missing "${packages[@]}")
    [ ${#packages[@]} -gt 0 ] || return 0

    if [ "$(id -u)" != 0 ]; then
        command -v sudo >/dev/null || fail "packages are missing and only root can install them:
apt-get update && apt-get install --no-install-recommends ${packages[*]}"
        as_root=(sudo)
    fi
    say "Installing ${packages[*]}"
    apt_get() {
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get -q -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 "$@"
    }
    apt_get update || fail "the package list could not be fetched"
    apt_get install -y --no-install-recommends "${packages[@]}" || fail "the packages could not be installed"
}

# build PRESET TARGET…: configures the preset and builds these targets.
build() {
    cmake --preset "$1" --log-level=WARNING >/dev/null
    cmake --build --preset "$1" --target "${@:2}"
}

# start_display: starts Xvfb, a virtual display, and sets DISPLAY. It stops when the script exits.
start_display() {
    local number
    # With -displayfd Xvfb chooses a free display number and prints it once it accepts connections.
    coproc XVFB { exec Xvfb -displayfd 1 -screen 0 1600x1200x24 -nolisten tcp 2>build/xvfb.log; }
    # shellcheck disable=SC2064 # expanded now on purpose: the trap must kill this very process
    trap "kill $XVFB_PID 2>/dev/null" EXIT
    read -r number <&"${XVFB[0]}" || fail "Xvfb did not start; see build/xvfb.log"
    export DISPLAY=:$number
    unset WAYLAND_DISPLAY
}

# pinned FOLDER COMMAND…: runs a command in a fixed environment (locale, time zone, scale, no user settings), so
# that it behaves the same on every machine. FOLDER is emptied and becomes its HOME.
pinned() {
    local home=$1
    rm -rf "$home"
    mkdir -p "$home"
    mkdir -m 700 "$home/runtime"
    env -i PATH="$PATH" TMPDIR="${TMPDIR:-/tmp}" HOME="$home" XDG_RUNTIME_DIR="$home/runtime" \
        LC_ALL=C.UTF-8 TZ=UTC DISPLAY="${DISPLAY:-}" QT_QPA_PLATFORM=xcb \
        QSG_RENDER_LOOP=basic QT_SCALE_FACTOR=1 QT_FONT_DPI=96 "${@:2}"
}
