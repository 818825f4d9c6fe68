#!/usr/bin/env bash
# Takes the pictures that software centres show, manual/html/*.png, of the program in
# build/release on a virtual display. They are kept in the repository, and published below
# QUILLMOOR_HOMEPAGE.
set -u
cd "$(dirname "$(dirname "$(readlink -f "$0")")")" || exit 2
. packaging/packages.sh
. packaging/display.sh
# shellcheck disable=SC2086 # the lists are words
need_packages $native_packages $window_packages $screenshot_packages &&
    build_preset release quillmoor host samples || exit 1
program=
trap 'kill $program 2>/dev/null; stop_display' EXIT
start_display 1024x768 || exit 1
export QT_QPA_PLATFORM=xcb

# take NAME KEY...: the window after these keys in its tree.
take() {
    local picture=manual/html/$1.png window
    shift
    build/release/quillmoor build/release/samples/heather.dll 2>/dev/null &
    program=$!
    window=$(timeout 20 xdotool search --sync --onlyvisible --name '^Quillmoor \[' | tail -1)
    [ -n "$window" ] || exit 1
    xdotool windowsize --sync "$window" 700 500 windowfocus --sync "$window" \
        mousemove --window "$window" 80 60 click 1 sleep 0.3 key "$@" sleep 0.7
    import -window "$window" -strip "$picture" || exit 1
    kill "$program"
    wait "$program" 2>/dev/null
}

take bitmap Home Down Right Down Down Down Down
take strings End Right Down
