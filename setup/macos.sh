# The functions of common.sh for macOS: packages of Homebrew, the bundle. Runs with bash 3.2.
# shellcheck shell=bash

PATH=$PATH:/opt/homebrew/bin # Homebrew is not in the PATH of a new account
# macOS has no locale C.UTF-8, and its windows have 72 dots per inch.
# shellcheck disable=SC2034 # used by common.sh
system_environment=(LC_ALL=en_US.UTF-8 QT_QPA_PLATFORM=cocoa QT_FONT_DPI=72)

# Installs the whole Brewfile, which has no sections.
install() {
    command -v brew >/dev/null || fail "install Homebrew first (https://brew.sh): it provides the required packages"
    if ! brew bundle check --no-upgrade --file=setup/Brewfile >/dev/null 2>&1; then
        say "Installing the packages of setup/Brewfile"
        brew bundle install --no-upgrade --file=setup/Brewfile || fail "the packages could not be installed"
    fi
    # Homebrew does not link these into its own prefix, since macOS has older versions of them.
    CMAKE_PREFIX_PATH=$(brew --prefix icu4c):$(brew --prefix sqlite):$(brew --prefix)
    export CMAKE_PREFIX_PATH
}

has_display() { true; }
start_display() { true; }

# Waits until the program ends and prints its output. `open` starts it as an application of its own, with its own
# permissions: a program that a terminal starts has those of the terminal.
open_program() {
    local name output=$PWD/build/$1/output
    local options=(-n -W --stdout "$output" --stderr "$output")
    for name in "${!LUMVALE_@}"; do
        [ -z "${!name+set}" ] || options+=(--env "$name=${!name}")
    done
    : >"$output"
    open "${options[@]}" "build/$1/bin/Lumvale.app" --args "${@:2}"
    cat "$output"
}
