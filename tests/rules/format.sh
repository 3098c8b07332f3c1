#!/usr/bin/env bash
# Checks the formatting of all code with clang-format 14, whose output other versions do not match exactly.
set -euo pipefail
cd "$(dirname "$0")/../.."

tool=$(command -v clang-format-14 || command -v clang-format)
find platform core app ui main packaging tools bench tests \( -name '*.h' -o -name '*.cpp' \) -print0 |
    xargs -0 "$tool" --dry-run -Werror
