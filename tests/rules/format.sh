#!/usr/bin/env bash
# The code has the form that .clang-format gives it. Other versions of the tool write a few things
# differently; 14 is the one that counts.
set -euo pipefail
cd "$(dirname "$0")/../.."

tool=$(command -v clang-format-14 || command -v clang-format)
find platform core app ui main packaging tools bench tests \( -name '*.h' -o -name '*.cpp' \) -print0 |
    xargs -0 "$tool" --dry-run -Werror
