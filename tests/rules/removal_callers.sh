#!/bin/sh
# Compares all calls in the product that can remove or overwrite files with the list below. A call that is not listed
# is either a mistake or a decision that must be added to the list.
#
#   removal_callers.sh TREE        checks the product in TREE
#   removal_callers.sh --itself    checks that this script finds new calls

set -eu

known='app/history/history_store.cpp writeFile
app/models/put_back_model.cpp putBack
core/photos/photo_duplicates.cpp deleteAssets
core/removal/deletion.cpp moveToTrash
core/removal/deletion.cpp removeForGood
core/removal/put_back.cpp putBack
core/removal/put_back.h putBack
core/removal/trash.cpp removeForGood
core/removal/trash.cpp unlock
core/startup/launch_agents.cpp runProgram
core/startup/startup_items.cpp putBack
platform/files/file.cpp renameat
platform/files/file.cpp unlinkat
platform/files/file.cpp writeFile
platform/files/file.h writeFile
platform/linux/system.cpp renameExclusively
platform/linux/system.cpp renameat2
platform/macos/system.cpp renameExclusively
platform/macos/system.cpp renameatx_np
platform/macos/system_photo_library.mm deleteAssets
platform/macos/system_photo_library.mm deleteAssets:
platform/macos/system_photo_library.mm unlink
platform/macos/system_trash.mm moveToTrash
platform/macos/system_trash.mm trashItemAtURL
platform/photos/photo_access.cpp writeFile
platform/photos/photo_catalogue.cpp openToChange
platform/photos/photo_library.cpp deleteAssets
platform/photos/photo_library.h deleteAssets
platform/removal/exclusive_move.cpp moveExclusively
platform/removal/exclusive_move.cpp renameExclusively
platform/removal/exclusive_move.cpp renameat
platform/removal/exclusive_move.cpp unlinkat
platform/removal/exclusive_move.h moveExclusively
platform/removal/remove.cpp removeForGood
platform/removal/remove.cpp unlinkat
platform/removal/remove.cpp unlock
platform/removal/remove.h removeForGood
platform/removal/remove.h unlock
platform/removal/trash.cpp moveExclusively
platform/removal/trash.cpp moveToTrash
platform/removal/trash.cpp putBack
platform/removal/trash.h moveToTrash
platform/removal/trash.h putBack
platform/sqlite/sqlite.cpp openToChange
platform/sqlite/sqlite.h openToChange
platform/system/process.cpp posix_spawn
platform/system/process.cpp runProgram
platform/system/process.h runProgram
platform/system/system.h renameExclusively'

# Operations of platform/, system calls, and functions of libraries. Starting a program counts, since it may remove
# files.
layer='removeForGood|moveToTrash|putBack|moveExclusively|deleteAssets|openToChange|unlock|renameExclusively|writeFile|runProgram'
calls='unlink|unlinkat|rmdir|rename|renameat|renameat2|renamex_np|renameatx_np|truncate|ftruncate|creat|system|popen|posix_spawnp?|exec[lv]p?e?'
libraries='remove_all|resize_file|removeRecursively|removeDatabase|rmpath|ofstream|O_TRUNC|QSaveFile|QProcess|filesystem::remove|fs::remove|QFile::remove|WriteOnly|ReadWrite|trashItemAtURL|deleteAssets:'

callers() {
    (cd "$1" && find core platform app ui main \( -name '*.cpp' -o -name '*.h' -o -name '*.mm' -o -name '*.qml' \) -exec awk \
        -v pattern="(^|[^A-Za-z0-9_])(($layer|$calls)[ ]*\\\\(|($libraries))" '
        {
            sub(/\/\/.*/, "")
            while (match($0, pattern)) {
                word = substr($0, RSTART, RLENGTH)
                $0 = substr($0, RSTART + RLENGTH)
                gsub(/[^A-Za-z0-9_:]/, "", word)
                sub(/^:+/, "", word)
                print FILENAME, word
            }
        }' {} + | LC_ALL=C sort -u)
}

if [ "$1" = --itself ]; then
    tree=$(mktemp -d)
    trap 'rm -rf "$tree"' EXIT
    mkdir "$tree/core" "$tree/platform" "$tree/app" "$tree/ui" "$tree/main"
    printf 'a();\n    platform::removeForGood(x); // unlinkat(y)\n    remove_all (z);\n' >"$tree/core/new.cpp"
    [ "$(callers "$tree" | tr '\n' ';')" = 'core/new.cpp removeForGood;core/new.cpp remove_all;' ]
    exit
fi

found=$(mktemp)
trap 'rm -f "$found"' EXIT
callers "$1" >"$found"
printf '%s\n' "$known" | diff --label 'the list' --label 'the product' -U0 - "$found"
