#!/usr/bin/env bash
# Checks the layers: includes point down only, no Qt below app/, and code for one operating system only in that
# system's folder of platform/. Prints each violation.
set -uo pipefail
cd "$(dirname "$0")/../.." || exit

product='platform core app ui main'
broken=0

# code FOLDER…: prints the lines of C++ in these folders as file:line:text, without comments.
code() {
    find "$@" \( -name '*.h' -o -name '*.cpp' \) -exec grep -Hn '' {} + | sed 's,//.*,,'
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
forbid 'conditional compilation for a system, outside platform/' \
    "$(code ${product#platform } tools bench tests |
        grep -E '#\s*(el)?if.*\b(__linux(__)?|__gnu_linux__|__unix__|__APPLE__|__MACH__|_WIN32|TARGET_OS_|Q_OS_)')"

headers='linux/|asm/|sys/(epoll|eventfd|fsuid|inotify|prctl|sendfile|signalfd|statfs|syscall|sysinfo|sysmacros|timerfd|vfs|xattr)\.h'
calls='accept4|copy_file_range|dup3|fallocate|getdents64|memfd_create|openat2|pipe2|posix_fadvise|prctl|renameat2|statx|syscall'
constants='AT_EMPTY_PATH|FS_IOC_[A-Z]+|O_NOATIME|O_PATH|O_TMPFILE|RENAME_NOREPLACE|RESOLVE_[A-Z_]+|SYS_[a-z0-9_]+'
# shellcheck disable=SC2086
forbid 'headers, calls and constants of Linux, outside platform/linux/' \
    "$(code $product | grep -v '^platform/linux/' |
        grep -E "#\s*include\s*<($headers)|\b($calls)\s*\(|\b($constants)\b|\"/proc/|\.st_[amc]tim\b")"

exit $broken
