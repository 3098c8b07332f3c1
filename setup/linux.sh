# The functions of common.sh for Linux: packages of Debian, a display of X11 or Wayland.
# shellcheck shell=bash

system_environment=(LC_ALL=C.UTF-8 QT_QPA_PLATFORM=xcb QT_FONT_DPI=96)

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

has_display() { [ -n "${DISPLAY-}${WAYLAND_DISPLAY-}" ]; }

# Starts Xvfb, a virtual display, and sets DISPLAY. It stops when the script exits.
start_display() {
    local number size=${1-1600x1200}
    # With -displayfd Xvfb chooses a free display number and prints it once it accepts connections. With -noreset it
    # doesn't refuse connections for a moment after the last program has left.
    coproc XVFB { exec Xvfb -noreset -displayfd 1 -screen 0 "${size}x24" -nolisten tcp 2>build/xvfb.log; }
    # shellcheck disable=SC2064 # expanded now on purpose: the trap must kill this very process
    trap "kill $XVFB_PID 2>/dev/null" EXIT
    read -r number <&"${XVFB[0]}" || fail "Xvfb did not start; see build/xvfb.log"
    export DISPLAY=:$number
    system_environment+=(DISPLAY="$DISPLAY")
    unset WAYLAND_DISPLAY
}

open_program() {
    if [ -z "${XDG_RUNTIME_DIR-}" ]; then
        export XDG_RUNTIME_DIR=$PWD/build/runtime
        mkdir -p "$XDG_RUNTIME_DIR"
        chmod 700 "$XDG_RUNTIME_DIR"
    fi
    exec "build/$1/bin/lumvale" "${@:2}"
}
