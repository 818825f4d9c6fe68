#!/usr/bin/env bash
# Runs a Windows program under Wine: wine.sh PROGRAM [ARGUMENT...]
# The prefix is the build's own, made once, without add-on downloads; with no display a virtual one
# is started for the program's time. quillmoor.exe has a prefix apart from the tests', in which it is
# set up as set-up.cmd leaves it.
root=$(dirname "$(dirname "$(readlink -f "$0")")")
case ${1:-} in
    quillmoor.exe | */quillmoor.exe) export WINEPREFIX=$root/build/wineprefix.set-up ;;
    *) export WINEPREFIX=$root/build/wineprefix ;;
esac
export WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe='
export WINEDEBUG=${WINEDEBUG:--all}
export WINEARCH=win64
wine=/usr/lib/wine/wine64
mkdir -p "$root/build"

# Frames are Wine's own, so that no window waits for a window manager that is not there; nor is a
# sound device looked for.
make_prefix() {
    "$wine" wineboot --init &&
        "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f &&
        "$wine" reg add 'HKCU\Software\Wine\Drivers' /v Audio /d '' /f &&
        touch "$WINEPREFIX/made"
}

# set_up PROGRAM: the settings name the folder of the program, and of VLXPRO.EXE.
set_up() {
    local settings
    settings=$(find "$WINEPREFIX/drive_c/users" -type d -path '*/AppData/Roaming' \
        ! -path '*/Public/*')/Orrindale
    mkdir -p "$settings"
    printf '[Vellumax]\r\nApplicationPath=Z:%s\r\n' \
        "$(dirname "$(readlink -f "$1")" | tr / '\\')" | iconv -f UTF-8 -t CP1252 >"$settings/VLXPRO30.INI"
}

start() {
    if [ ! -f "$WINEPREFIX/made" ]; then
        mkdir -p "$WINEPREFIX"
        (
            flock 9
            [ -f "$WINEPREFIX/made" ] || make_prefix
        ) 9>"$WINEPREFIX.lock" >/dev/null 2>&1
    fi
    case $WINEPREFIX in
        *.set-up) set_up "$1" ;;
    esac
    "$wine" "$@"
}

if [ -n "${DISPLAY:-}" ]; then
    start "$@"
    exit
fi
. "$root/packaging/display.sh"
trap stop_display EXIT
start_display 1280x1024 || { echo "The virtual display did not start." >&2; exit 1; }
start "$@"
status=$?
exit $status
