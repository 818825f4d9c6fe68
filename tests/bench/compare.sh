#!/usr/bin/env bash
# Compares the time that whole programs take: compare.sh [FILE...]
# Lists and saves each file with quillmoor-cli, wrestool and 7z, in turn, and prints the median of
# the runs in milliseconds. Without a file: files of 8,000 and 64,000 resources.
# RUNS=n sets the number of runs (9). The programs do not write the same: wrestool and 7z keep every
# kind of resource, quillmoor-cli four of them. 64,000 saved files take 256 MB each time.
set -eu
files=()
for file; do files+=("$(readlink -f "$file")"); done
cd "$(dirname "$(readlink -f "$0")")/../.."
. packaging/packages.sh
# shellcheck disable=SC2086 # the lists are words
need_packages $native_packages $bench_packages
build_preset release quillmoor-cli make_many
build=$PWD/build/release
runs=${RUNS:-9}
# in memory where there is room, so that the disk's mood does not count
work=$(mktemp -d -p "$([ -d /dev/shm ] && echo /dev/shm || echo /tmp)")
trap 'rm -rf "$work"' EXIT

# now: microseconds
now() { echo "${EPOCHREALTIME/[.,]/}"; }

# run_once COMMAND...: appends the milliseconds to $work/NAME, where NAME is $name.
run_once() {
    rm -rf "$work/out"
    mkdir "$work/out"
    local start
    start=$(now)
    "$@" >"$work/stdout" 2>"$work/stderr" || { echo "$name failed:" >&2; head -3 "$work/stderr" >&2; exit 1; }
    echo "$(((($(now) - start) + 50) / 100))" >>"$work/$name"
    find "$work/out" -type f | wc -l >"$work/$name.files"
}

# median NAME: of the runs, in milliseconds with a decimal
median() { sort -n "$work/$1" | awk '{ t[NR] = $1 } END { printf "%.1f", t[int((NR + 1) / 2)] / 10 }'; }

compare() {
    local file=$1
    rm -f "$work"/list-* "$work"/save-*
    for _ in $(seq "$runs"); do
        name=list-quillmoor-cli run_once "$build/quillmoor-cli" list "$file"
        name=list-wrestool run_once wrestool -l "$file"
        name=list-7z run_once 7z l "$file"
        name=save-quillmoor-cli run_once "$build/quillmoor-cli" save "$file" --output "$work/out"
        name=save-wrestool run_once wrestool -x -R -o "$work/out" "$file"
        name=save-7z run_once 7z x -y "-o$work/out" "$file"
    done
    echo "$file, median of $runs runs, milliseconds"
    for what in list save; do
        for program in quillmoor-cli wrestool 7z; do
            printf '  %s  %-14s %9s' "$what" "$program" "$(median "$what-$program")"
            [ "$what" = list ] || printf '  %6s files, %s microseconds each' \
                "$(cat "$work/$what-$program.files")" "$(median "$what-$program" |
                    awk -v files="$(cat "$work/$what-$program.files")" '{ printf "%.1f", $1 * 1000 / files }')"
            printf '\n'
        done
    done
}

if [ ${#files[@]} -gt 0 ]; then
    for file in "${files[@]}"; do compare "$file"; done
else
    for count in 8000 64000; do
        "$build/tests/make_many" "$count" "$work/$count.dll"
        compare "$work/$count.dll"
    done
fi
