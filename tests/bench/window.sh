#!/usr/bin/env bash
# Measures the window, on the display there is or on a virtual one: the start beside those of empty
# windows of Qt's, without and with a menu bar and a tree, opening 64,000 resources beside listing
# them with quillmoor-cli, and what the user waits for. Prints medians in milliseconds. RUNS=n sets
# the number of runs (11).
set -eu
cd "$(dirname "$0")/../.."
. packaging/packages.sh
. packaging/display.sh
# shellcheck disable=SC2086 # the lists are words
need_packages $native_packages $window_packages xvfb xauth
build_preset release quillmoor quillmoor-cli host make_many bench_window empty_window first_paint
build=$PWD/build/release
runs=${RUNS:-11}
work=$(mktemp -d)
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$work}"
trap 'rm -rf "$work"; stop_display' EXIT
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    start_display 1024x768
    export QT_QPA_PLATFORM=xcb
fi

# now: microseconds
now() { echo "${EPOCHREALTIME/[.,]/}"; }

# start PROGRAM: milliseconds until its first painting is on the screen
start() { START=$(now) LD_PRELOAD=$build/tests/libfirst_paint.so "$@"; }

# list FILE: milliseconds that quillmoor-cli takes
list() {
    local from
    from=$(now)
    "$build/quillmoor-cli" list "$1" >/dev/null
    echo "$(((($(now) - from) + 50) / 100))" | sed 's/.$/.&/'
}

print() { printf '%-44s %7s  (%s to %s)\n' "$1" $(sort -n "$work/$2" | awk '{ t[NR] = $1 } END { print t[int((NR + 1) / 2)], t[1], t[NR] }'); }

"$build/tests/make_many" 64000 "$work/many.dll"
cd "$build"
for _ in $(seq "$runs"); do
    start "$build/tests/empty_window" >>"$work/empty"
    start "$build/tests/empty_window" controls >>"$work/controls"
    start "$build/quillmoor" >>"$work/start"
    list "$work/many.dll" >>"$work/list"
    "$build/tests/bench_window" open "$work/many.dll" >>"$work/open"
done
print "start of an empty window" empty
print "start of one with a menu bar and a tree" controls
print "start" start
print "quillmoor-cli list, 64,000 resources" list
print "open 64,000 resources first" open
"$build/tests/bench_window" "$runs" >"$work/picture"
print "select a picture of 4096 x 4096, 32 bits" picture
