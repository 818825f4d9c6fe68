#!/usr/bin/env bash
# Runs the set-up script for Windows users and its undoing under Wine, in a prefix of its own that is
# new each time, and compares the registry and the settings file before and after. The registry is
# asked through reg.exe: the files that it is kept in lag behind.
set -u
root=$(dirname "$(dirname "$(dirname "$(readlink -f "$0")")")")
mkdir -p "$root/build"
work=$(mktemp -d "$root/build/set-up.XXXXXX")
export WINEPREFIX=$work/prefix WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe=;winex11.drv='
export WINEDEBUG=-all WINEARCH=win64 LC_ALL=C.UTF-8
wine=/usr/lib/wine/wine64
wineserver=/usr/lib/wine/wineserver
trap '"$wineserver" -k; "$wineserver" -w; rm -rf "$work"' EXIT
failures=0

classes='HKCU\Software\Classes'

fail() {
    echo "set-up: $*"
    failures=$((failures + 1))
}

# same WHAT WANTED GOT: two files are alike.
same() {
    cmp -s "$2" "$3" || {
        fail "$1 differs:"
        diff <(cat -A "$2") <(cat -A "$3") | head -20
    }
}

reg() {
    "$wine" reg "$@" >/dev/null 2>&1
}

# classes_now FILE: the user's classes as text.
classes_now() {
    reg export "$classes" 'C:\classes.reg' /y || fail "no export"
    iconv -f UTF-16 -t UTF-8 "$WINEPREFIX/drive_c/classes.reg" >"$1"
}

# default_value KEY
default_value() {
    "$wine" reg query "$1" /ve 2>/dev/null | tr -d '\r' | iconv -f CP1252 -t UTF-8 |
        sed -n 's/^    (Default)    REG_SZ    //p'
}

# run FOLDER SCRIPT [ARGUMENT]: a command file, or the script itself.
run() {
    case $2 in
        *.cmd) (cd "$1" && "$wine" cmd /c ".\\$2" /q) ;;
        *) (cd "$1" && "$wine" cscript //nologo "$2" ${3:+"$3"}) ;;
    esac >"$work/said" 2>&1 </dev/null || {
        fail "$2 ended with status $?"
        cat "$work/said"
    }
}

# A folder as the zip makes it, as far as the set-up looks at it.
make_program() {
    mkdir -p "$1"
    : >"$1/quillmoor.exe"
    : >"$1/VLXPRO.EXE"
    cp "$root/packaging/windows/set-up.js" "$1"
    for script in set-up.cmd undo.cmd; do
        sed 's/$/\r/' "$root/packaging/windows/$script" >"$1/$script"
    done
}

"$wine" wineboot --init >/dev/null 2>&1
"$wineserver" -w
appdata=$(find "$WINEPREFIX/drive_c/users" -type d -path '*/AppData/Roaming' ! -path '*/Public/*')
settings=$appdata/Orrindale/VLXPRO30.INI
first="$work/Über alles (été) & Söhne"
second="$work/100%! of it"
make_program "$first"
make_program "$second"
# The drive that shows the whole of this system.
windows_second="Z:$(tr / '\\' <<<"$second")"

# Another program's entries, and an earlier registration of Quillmoor by hand.
reg add "$classes\\.dll\\OpenWithList\\other.exe" /f
reg add "$classes\\SystemFileAssociations\\.exe\\shell" /f
reg add "$classes\\Applications\\quillmoor.exe\\shell\\open\\command" /ve /t REG_EXPAND_SZ \
    /d 'D:\old\quillmoor.exe %1' /f
classes_now "$work/before"

# Set up where a folder is named already, then moved and set up anew where none is.
mkdir "$(dirname "$settings")"
printf '[Vellumax]\r\nApplicationPath = D:\\Apps\r\n' | tee "$work/wanted" >"$settings"
run "$first" set-up.cmd
same "a settings file that names a folder" "$work/wanted" "$settings"
printf '[Other]\r\nApplicationPath=C:\\no\r\n[vellumax]\r\nLeft=1' >"$settings"
cp "$settings" "$work/settings"
run "$second" set-up.js
for key in Applications\\quillmoor.exe\\shell\\open \
    SystemFileAssociations\\.{cpl,dll,exe,vbx}\\shell\\Quillmoor; do
    [ "$(default_value "$classes\\$key\\command")" = "\"$windows_second\\quillmoor.exe\" %1" ] ||
        fail "$key has no command: $(default_value "$classes\\$key\\command")"
done
for extension in cpl dll exe vbx; do
    reg query "$classes\\.$extension\\OpenWithList\\quillmoor.exe" || fail "no entry for .$extension"
    reg query "$classes\\Applications\\quillmoor.exe\\SupportedTypes" /v ".$extension" ||
        fail ".$extension is no supported type"
done
printf '[Other]\r\nApplicationPath=C:\\no\r\n[vellumax]\r\nApplicationPath=%s\r\nLeft=1' \
    "$windows_second" >"$work/wanted"
same "the settings file" "$work/wanted" "$settings"

# An entry that comes later, in a key that the set-up made, stays.
reg add "$classes\\.vbx\\OpenWithList\\late.exe" /f
run "$first" undo.cmd
reg query "$classes\\.vbx\\OpenWithList\\quillmoor.exe" && fail "an entry is left"
reg query "$classes\\.vbx\\OpenWithList\\late.exe" || fail "another program's entry went"
reg delete "$classes\\.vbx" /f
classes_now "$work/after"
same "the registry after undo" "$work/before" "$work/after"
same "the settings file after undo" "$work/settings" "$settings"
run "$second" set-up.js undo
classes_now "$work/after"
same "the registry after a second undo" "$work/before" "$work/after"
reg query 'HKCU\Software\Quillmoor set-up' && fail "the notes are left"

# settings_case NAME: the settings file $work/settings (none when it is missing) becomes
# $work/wanted, and by undoing itself again.
settings_case() {
    rm -rf "$(dirname "$settings")"
    if [ -f "$work/settings" ]; then
        mkdir "$(dirname "$settings")"
        cp "$work/settings" "$settings"
    fi
    run "$first" set-up.js
    same "$1" "$work/wanted" "$settings"
    run "$first" set-up.js undo
    if [ -f "$work/settings" ]; then
        same "$1 after undo" "$work/settings" "$settings"
    elif [ -e "$(dirname "$settings")" ]; then
        fail "$1 after undo is left"
    fi
}

line="ApplicationPath=Z:$(tr / '\\' <<<"$first")"
rm "$work/settings"
printf '[Vellumax]\r\n%s\r\n' "$line" | iconv -f UTF-8 -t CP1252 >"$work/wanted"
settings_case "a new settings file"
printf '[Other]\r\n' | iconv -f UTF-8 -t UTF-16 >"$work/settings"
printf '[Other]\r\n[Vellumax]\r\n%s\r\n' "$line" | iconv -f UTF-8 -t UTF-16 >"$work/wanted"
settings_case "a settings file in UTF-16"

# A folder that the program could not read from the settings is refused, and a file that cannot be
# replaced leaves nothing of the attempt.
make_program "$work/Жук"
(cd "$work/Жук" && "$wine" cscript //nologo set-up.js >"$work/said" 2>&1) &&
    fail "a folder with strange letters is taken"
grep -q 'another language' "$work/said" || fail "the refusal says $(cat "$work/said")"
mkdir "$settings.new"
(cd "$first" && "$wine" cscript //nologo set-up.js >"$work/said" 2>&1) &&
    fail "a settings file that cannot be written is taken"
grep -q 'could not be written' "$work/said" || fail "the failure says $(cat "$work/said")"
rmdir "$settings.new"
same "the settings file after refusals" "$work/settings" "$settings"
classes_now "$work/after"
same "the registry after refusals" "$work/before" "$work/after"

[ "$failures" -eq 0 ]
