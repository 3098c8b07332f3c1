# Functions of ./run and ./test, which source this file. Those that differ between the systems are in linux.sh and
# macos.sh, which both define:
#   install SECTION…            installs the missing packages of these sections of setup/packages or setup/Brewfile
#   has_display                 succeeds if windows can be shown to the user
#   start_display [SIZE]        prepares a display for tests, on Linux a virtual one of this size
#   open_program PRESET [ARGUMENT…]
#                               opens Lumvale as built with this preset, with the exported variables LUMVALE_…
#   system_environment          the system's part of the environment of `pinned`
# shellcheck shell=bash

say() { printf '%s\n' "$*"; }
fail() {
    printf '%s: %s\n' "$0" "$1" >&2
    exit "${2:-1}"
}

system=linux
[ "$(uname -s)" != Darwin ] || system=macos
# shellcheck source=setup/linux.sh
. "${BASH_SOURCE[0]%/*}/$system.sh"

# build PRESET TARGET…: configures the preset and builds these targets.
build() {
    cmake --preset "$1" --log-level=WARNING >/dev/null
    cmake --build --preset "$1" --target "${@:2}"
}

# pinned FOLDER COMMAND…: runs a command in a fixed environment (locale, time zone, scale, no user settings), so
# that it behaves the same on every machine. FOLDER is emptied and becomes its HOME.
pinned() {
    local home=$1
    rm -rf "$home"
    mkdir -p "$home"
    mkdir -m 700 "$home/runtime"
    # Cocoa looks for CFFIXED_USER_HOME before HOME.
    env -i PATH="$PATH" TMPDIR="${TMPDIR:-/tmp}" HOME="$home" CFFIXED_USER_HOME="$home" \
        XDG_RUNTIME_DIR="$home/runtime" TZ=UTC QSG_RENDER_LOOP=basic QT_SCALE_FACTOR=1 \
        "${system_environment[@]}" "${@:2}"
}
