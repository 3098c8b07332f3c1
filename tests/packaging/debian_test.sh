#!/usr/bin/env bash
# debian_test.sh BUILD_FOLDER NAME VERSION IDENTIFIER: the Debian package of what is built brings what it
# may and asks for what it needs; unpacked into an empty folder and started as its menu entry says, it shows its
# window, and writes nothing but the user's settings. The photograph stays in BUILD_FOLDER/packaging.
set -euo pipefail
build=$1 name=$2 version=$3 identifier=$4
product=$(realpath "$(dirname "$0")/../..")
work=$(realpath "$(mktemp -d)")
chmod 755 "$work"
root=$work/root home=$work/home disk=$work/disk
program=''
trap '[ -z "$program" ] || kill "$program" 2>/dev/null || true; chmod -R u+w "$work"; rm -rf "$work"' EXIT

fail() {
    printf '%s\n' "$@" >&2
    [ ! -e "$work/said" ] || sed 's/^/it said: /' "$work/said" >&2
    exit 1
}

cd "$build"
cpack --config CPackConfig.cmake -B "$work/package" >"$work/cpack" 2>&1 || fail "no package" "$(cat "$work/cpack")"
package=$work/package/lumvale_${version}_$(dpkg --print-architecture).deb
[ -f "$package" ] || fail "the package has another name: $(ls "$work/package")"

# Control fields.
field() { dpkg-deb --field "$package" "$1"; }
for line in 'Package lumvale' "Version $version" "Architecture $(dpkg --print-architecture)" 'Section utils' \
    "Maintainer $name <hello@lumvale.example>"; do
    [ "$(field "${line%% *}")" = "${line#* }" ] || fail "${line%% *} is $(field "${line%% *}")"
done
[ "$(field Description | grep -c '^  \* ')" = 4 ] || fail "a description without its features: $(field Description)"

# Dependencies are satisfied here and cover all QML imports.
dpkg-checkbuilddeps -d "$(field Depends), $(field Recommends)" /dev/null 2>"$work/unmet" || fail "$(cat "$work/unmet")"
needed=" $(field Depends | sed 's/([^)]*)//g; s/,/ /g') "
[[ $needed == *' libqt6quick6 '* ]] || fail "the program's libraries aren't asked for: $needed"
while read -r module; do
    owner=$(dpkg-query --search "*/qt6/qml/${module//.//}/qmldir") || fail "$module comes with no package"
    [[ $needed == *" ${owner%%:*} "* ]] || fail "$module needs ${owner%%:*}"
done < <(grep -rhoE --include='*.qml' '^import Qt[A-Za-z0-9.]+' "$product/ui" | cut -d ' ' -f 2 | sort -u)
[[ " $(field Recommends | sed 's/,/ /g') " == *' fonts-inter '* ]] || fail "the texts' face isn't recommended"

# Contents.
mkdir "$root"
dpkg-deb --extract "$package" "$root"
icons=usr/share/icons/hicolor
{
    for side in 16 22 24 32 48 64 128 256 512; do
        echo "$icons/${side}x$side/apps/$identifier.png"
    done
    echo "$icons/scalable/apps/$identifier.svg"
    echo "$icons/symbolic/apps/$identifier-symbolic.svg"
    echo usr/bin/lumvale
    echo "usr/share/applications/$identifier.desktop"
    echo usr/share/doc/lumvale/changelog.gz
    echo usr/share/doc/lumvale/copyright
    echo usr/share/man/man1/lumvale.1.gz
    echo "usr/share/metainfo/$identifier.metainfo.xml"
} | LC_ALL=C sort >"$work/allowed"
find "$root" ! -type d -printf '%P\n' | LC_ALL=C sort | diff -u "$work/allowed" - || fail "it brings other files"
modes=$(find "$root" -mindepth 1 -printf '%y%m\n' | sort -u | tr '\n' ' ')
[ "$modes" = 'd755 f644 f755 ' ] || fail "odd modes: $modes"
[ "$(find "$root" -type f -perm 755 -printf '%P')" = usr/bin/lumvale ] || fail "another program"

# Debian's own checks, then the texts that only we can check: the changelog begins with this version, and the manual
# page names what --help does.
complaints=$(lintian --allow-root --fail-on error,warning "$package" 2>&1) || fail "lintian" "$complaints"
[[ $(zcat "$root/usr/share/doc/lumvale/changelog.gz") == "lumvale ($version) "* ]] || fail "no changelog of $version"
manual=$(zcat "$root/usr/share/man/man1/lumvale.1.gz" | sed 's/\\-/-/g')
[[ $manual == *"$name $version"* ]] || fail "the manual page is of another version"
for word in $("$root/usr/bin/lumvale" --help | sed -nE 's/^  (\S+) .*/\1/p'); do
    [[ $manual == *"$word"* ]] || fail "the manual page does not describe $word"
done

# Desktop entry and metainfo.
entry=$root/usr/share/applications/$identifier.desktop
metainfo=$root/usr/share/metainfo/$identifier.metainfo.xml
complaints=$(desktop-file-validate "$entry" 2>&1) || true
[ -z "$complaints" ] || fail "the menu entry" "$complaints"
complaints=$(appstreamcli validate --no-net --no-color "$metainfo" 2>&1) || fail "the metainfo" "$complaints"
! grep -E '^[EW]: ' <<<"$complaints" || fail "the metainfo has warnings"
[ "$(sed -n 's/^Icon=//p' "$entry")" = "$identifier" ] || fail "the menu entry has another icon"

# An ordinary user's home and disk, and a file system where nothing else is theirs.
mkdir -p "$home" "$work/runtime" "$disk/Users/me/Library/Caches/com.example.editor" "$disk/Users/me/.Trash"
echo cached >"$disk/Users/me/Library/Caches/com.example.editor/data"
chmod 700 "$home" "$work/runtime"
user=() number=$(id -u)
if [ "$number" = 0 ]; then
    number=61357 # belongs to no user
    user=(setpriv "--reuid=$number" "--regid=$number" --clear-groups)
    chown -R "$number:$number" "$home" "$work/runtime" "$disk"
else
    chmod -R a-w "$root"
fi
listed() { find "$root" "$disk" -printf '%p %s %T@ %C@\n' | sort; }
listed >"$work/before"

command=$(sed -n 's/^Exec=//p' "$entry")
(
    cd /
    # shellcheck disable=SC2086 # the words of the command
    exec env -u XAUTHORITY -u XDG_CACHE_HOME -u XDG_CONFIG_HOME -u XDG_DATA_HOME -u XDG_STATE_HOME -u TMPDIR \
        HOME="$home" XDG_RUNTIME_DIR="$work/runtime" XDG_DATA_DIRS="$root/usr/share:/usr/share" \
        PATH="$root/usr/bin:$PATH" LUMVALE_DISK="$disk" LUMVALE_HOME=/Users/me "${user[@]}" $command
) >"$work/said" 2>&1 &
program=$!

photograph=$build/packaging/photograph.png
take_photograph() { import -silent -window "$window" "$photograph"; }

# It may take a while to come up, and a moment more until all of it is drawn.
window='' colors=0
for ((tenth = 0; tenth < 200 && colors < 1000; ++tenth)); do
    kill -0 $program 2>/dev/null || fail "it ended by itself"
    sleep 0.1
    [ -n "$window" ] || window=$(xwininfo -name "$name" 2>/dev/null | grep -oE -m 1 '0x[0-9a-f]+') || continue
    colors=$(take_photograph 2>/dev/null && identify -format %k "$photograph") || colors=0
done
[ -n "$window" ] || fail "no window with the title $name"
((colors >= 1000)) || fail "its window shows $colors colors"
sleep 0.5 # what fades in is whole by then
take_photograph

of_window() { xprop -len 1000000 -id "$window" "$1"; } # icons are long
pid=$(of_window _NET_WM_PID)
[ "$(realpath "/proc/${pid##* }/exe")" = "$(realpath "$root/usr/bin/lumvale")" ] || fail "it is another program's window"
class=$(of_window WM_CLASS)
[[ $class == *", \"$(sed -n 's/^StartupWMClass=//p' "$entry")\"" ]] || fail "desktops don't know it again: $class"
sizes=$(of_window _NET_WM_ICON | grep -oE '[0-9]+ x [0-9]+' | tr '\n' ,) || true
[ "$sizes" = '16 x 16,22 x 22,24 x 24,32 x 32,48 x 48,64 x 64,128 x 128,256 x 256,' ] || fail "its icons: $sizes"

kill $program
wait $program || true
program=''
! grep -E 'qrc:|\.qml' "$work/said" || fail "a fault in a screen"

# Caches of the graphics driver and the font library are allowed.
listed | diff -u "$work/before" - || fail "it changed what it was installed as, or the disk"
left=$(find "$home" -type f ! -path "$home/.config/$name/*" ! -path "$home/.cache/mesa_shader_cache/*" \
    ! -path "$home/.cache/fontconfig/*")
[ -z "$left" ] || fail "it left in the home:" "$left"
if [ ${#user[@]} -gt 0 ]; then
    # Wherever everyone may write.
    left=$(find /tmp /var/tmp /dev/shm /run "$(realpath "${TMPDIR:-/tmp}")" -maxdepth 2 -path "$work" -prune -o \
        -user "$number" -print 2>/dev/null) || true
    [ -z "$left" ] || fail "it left elsewhere:" "$left"
fi
