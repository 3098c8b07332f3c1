#!/usr/bin/env bash
# Checks that each header of the product has a source of the same name, that no file of the product, its tools or
# benchmarks is longer than 350 lines, and that the tests are at most 30 % of product and tests together.
set -uo pipefail
cd "$(dirname "$0")/../.." || exit

product='platform core app ui main'
broken=0

# forbid RULE LINES: prints the lines, if any, as violations of the rule.
forbid() {
    [ -n "$2" ] || return
    printf '%s:\n%s\n\n' "$1" "$2"
    broken=1
}

# Headers of plain types, templates and inline functions, which need no source.
alone='platform/base/bytes.h platform/base/date.h platform/base/result.h platform/text/icu_locale.h platform/base/progress.h platform/files/file_part.h'
alone+=' platform/photos/photo_asset.h core/photos/duplicate_photo_item.h ui/shell/foreign_types.h'

# A system's folder holds the sources of headers that lie beside it or, in platform/, in the folders by job.
# shellcheck disable=SC2086 # a list of folders
forbid 'a header has a source of the same name' "$(find $product -name '*.h' | sort | while read -r header; do
    source=${header%.h}.cpp
    name=$(basename "$source")
    [ -e "$source" ] || [ -e "platform/linux/$name" ] || [ -e "$(dirname "$source")/linux/$name" ] || [[ " $alone " == *" $header "* ]] ||
        echo "$header"
done)"

forbid 'at most 350 lines' "$(find $product tools bench packaging \( -name '*.cpp' -o -name '*.h' -o -name '*.qml' \) \
    -exec wc -l {} + | awk '$1 > 350 && $2 != "total"')"

# code_lines FOLDER…: prints the number of lines that are neither blank nor a comment.
code_lines() {
    find "$@" \( -name '*.cpp' -o -name '*.h' -o -name '*.qml' \) -exec cat {} + | grep -cvE '^[[:space:]]*(//.*)?$'
}

tests=$(code_lines tests)
# shellcheck disable=SC2086 # a list of folders
all=$((tests + $(code_lines $product)))
forbid 'the tests are at most 30 % of product and tests' \
    "$([ $((tests * 100)) -le $((all * 30)) ] || echo "$tests of $all lines, $((tests * 1000 / all)) per mille")"

exit $broken
