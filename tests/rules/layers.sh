#!/usr/bin/env bash
# Checks the layers: includes point down only, no Qt below app/, and code for one operating system only in folders
# called linux/ and macos/. Prints each violation.
set -uo pipefail
cd "$(dirname "$0")/../.." || exit

product='platform core app ui main'
broken=0

# code FOLDER…: prints the lines of C++ in these folders as file:line:text, without comments.
code() {
    find "$@" \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' \) -exec grep -Hn '' {} + | sed 's,//.*,,'
}

# forbid RULE LINES: prints the lines, if any, as violations of the rule.
forbid() {
    [ -n "$2" ] || return
    printf '%s:\n%s\n\n' "$1" "$2"
    broken=1
}

below=''
for layer in $product; do
    below+="${below:+|}$layer"
    forbid "$layer/ includes by full names, and only from $below" \
        "$(code "$layer" | grep -E '#\s*include\s*"' | grep -vE "\"($below)/|\.moc\"")"
done
forbid 'no Qt in platform/ and core/' \
    "$(code platform core | grep -E '#\s*include\s*<Q|\bQ_(OBJECT|GADGET)\b')"

# shellcheck disable=SC2086 # a list of folders
forbid 'conditional compilation for a system' \
    "$(code $product tools packaging bench tests |
        grep -E '#\s*(el)?if.*\b(__linux(__)?|__gnu_linux__|__unix__|__APPLE__|__MACH__|_WIN32|TARGET_OS_|Q_OS_)')"

# of_one_system SYSTEM HEADERS CALLS CONSTANTS: forbids these outside the system's own folders. Tests and benchmarks
# that need one system are left out by CMake on the other.
of_one_system() {
    # shellcheck disable=SC2086
    forbid "headers, calls and constants of one system, outside $1/" \
        "$(code $product tools packaging | grep -v "^[^:]*/$1/" |
            grep -E "#\s*(include|import)\s*<($2)|\b($3)\s*\(|($4)\b")"
}

headers='linux/|asm/|sys/(epoll|eventfd|fsuid|inotify|prctl|sendfile|signalfd|statfs|syscall|sysinfo|sysmacros|timerfd|vfs|xattr)\.h'
calls='accept4|copy_file_range|dup3|fallocate|getdents64|memfd_create|openat2|pipe2|posix_fadvise|prctl|renameat2|statx|syscall'
constants='\b(AT_EMPTY_PATH|FS_IOC_[A-Z]+|O_NOATIME|O_PATH|O_TMPFILE|RENAME_NOREPLACE|RESOLVE_[A-Z_]+|SYS_[a-z0-9_]+)|"/pro[c]|\.st_[amc]tim'
of_one_system linux "$headers" "$calls" "$constants"

headers='(AppKit|CoreFoundation|CoreText|Foundation|Photos|mach|objc)/|TargetConditionals|crt_externs|sys/(attr|clonefile|vnode)\.h'
calls='_NSGetEnviron|clonefile|f?chflags|getattrlist(at|bulk)?|posix_spawn_file_actions_addinherit_np|renamea?t?x_np'
constants='\b(F_GETPATH|O_NOFOLLOW_ANY|O_SEARCH|O_SYMLINK|POSIX_SPAWN_CLOEXEC_DEFAULT|RENAME_EXCL|UF_[A-Z]+|_CS_DARWIN_[A-Z_]+|CF(Locale|String|URL)[A-Za-z]*)'
of_one_system macos "$headers" "$calls" "$constants"

exit $broken
