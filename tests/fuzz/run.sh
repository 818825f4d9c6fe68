#!/usr/bin/env bash
# Fuzzes what takes bytes of a file, under AddressSanitizer and UndefinedBehaviorSanitizer.
#   run.sh TARGET [SECONDS]   one target, 60 seconds; SECONDS 0: what is kept is tried once
#   run.sh --all [SECONDS]    all targets, two at a time, 20 seconds each
#   run.sh --coverage         the lines of its own files that each target reaches with what is kept
# A target is a source file here. It starts from the seeds that make_seeds writes and from what
# earlier runs found to reach more, which is kept in build/fuzz/kept/TARGET (KEPT=FOLDER: there). A
# try that breaks something is left in build/fuzz/broken; "build/fuzz/fuzz/TARGET FILE" repeats it.
# The closing line is "N targets held, N broke".
set -u
cd "$(dirname "$(readlink -f "$0")")/../.." || exit 2
. packaging/packages.sh

kept=$(readlink -m "${KEPT:-build/fuzz/kept}")
broken=$PWD/build/fuzz/broken
targets() {
    for source in tests/fuzz/*.cpp; do
        case $source in */fuzz.cpp | */make_seeds.cpp) ;; *) basename "$source" .cpp ;; esac
    done
}

prepare() {
    # shellcheck disable=SC2086 # the lists are words
    need_packages $native_packages $fuzz_packages && build_preset "$1" fuzz
}

# fuzz TARGET SECONDS: prints a line with the tries, the places reached and those of the seeds.
fuzz() {
    local log start=build/fuzz/fuzz/start/$1 limits="-max_total_time=$2"
    [ "$2" -gt 0 ] || limits=-runs=0
    log=$(mktemp)
    mkdir -p "$kept/$1" "$broken"
    # shellcheck disable=SC2086 # the limits are words
    if LC_ALL=C.UTF-8 nice "build/fuzz/fuzz/$1" $limits -timeout=10 -rss_limit_mb=2048 \
        -malloc_limit_mb=512 -use_value_profile=1 -print_final_stats=1 -dict="$start/words" \
        -artifact_prefix="$broken/$1-" "$kept/$1" "$start/seeds" >"$log" 2>&1 </dev/null
    then
        printf '%-14s held: %9s tries, %5s places reached (%s at the start)\n' "$1" \
            "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
            "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)" \
            "$(sed -n 's/.*INITED cov: \([0-9]*\) .*/\1/p' "$log")"
        rm -f "$log"
    else
        printf '%-14s BROKE\n' "$1"
        grep -vE '^#[0-9]+|^INFO|^stat::' "$log" | head -60
        rm -f "$log"
        return 1
    fi
}

# The files whose lines count for a target.
own_files() {
    case $1 in
        pe_reader) echo exe/pe_reader.cpp exe/pe_directories.cpp exe/pe_headers.cpp ;;
        ne_reader) echo exe/ne_reader.cpp exe/ne_table.cpp exe/file_pages.cpp ;;
        probe) echo exe/probe.cpp exe/pe_headers.cpp exe/refusal.cpp ;;
        survey) echo exe/survey.cpp exe/survey_pe.cpp exe/survey_ne.cpp exe/pe_image.cpp \
            export/group_file.cpp exe/picture_groups.cpp \
            content/picture_group.cpp content/signature.cpp content/string_table.cpp \
            content/message_table.cpp ;;
        page) echo cli/html_page.cpp cli/page_data.cpp cli/page_file.cpp cli/page_pictures.cpp \
            cli/page_texts.cpp export/picture_pixels.cpp ;;
        bitmap) echo content/dib.cpp viewer/dib_draw.cpp platform/native/gdi/dib_decode.cpp ;;
        icon) echo content/dib.cpp viewer/dib_draw.cpp viewer/png.cpp ;;
        run_length) echo content/run_length.cpp platform/native/gdi/dib_decode.cpp ;;
        png) echo platform/codec/codec.cpp platform/codec/codec_linux.cpp platform/codec/png_file.cpp ;;
        string_table) echo content/string_block.cpp viewer/pane.cpp export/writers.cpp ;;
        binary_data) echo viewer/pane.cpp export/writers.cpp exe/catalog.cpp ;;
        version_info) echo content/version_info.cpp ;;
        wave) echo shell/sound.cpp platform/native/winmm/sound.cpp ;;
        module) echo platform/native/kernel/module_image.cpp ;;
        dialog) echo platform/native/user/dialog_template.cpp ;;
        menu) echo platform/native/user/menus.cpp ;;
        icon_group) echo platform/native/user/pictures.cpp ;;
        profile) echo platform/native/kernel/profile.cpp ;;
        text) echo platform/utf8.cpp platform/native/kernel/code_page.cpp cli/file_names.cpp ;;
    esac
}

show_coverage() {
    local work target
    work=$(mktemp -d)
    for target in $(targets); do
        local program=build/fuzz-coverage/fuzz/$target
        LC_ALL=C.UTF-8 LLVM_PROFILE_FILE=$work/raw "$program" -runs=0 -rss_limit_mb=0 \
            "$kept/$target" "build/fuzz/fuzz/start/$target/seeds" >"$work/log" 2>&1 </dev/null &&
            llvm-profdata merge -o "$work/data" "$work/raw" &&
            # shellcheck disable=SC2046 # the files are words
            llvm-cov report "$program" -instr-profile="$work/data" $(own_files "$target") |
            awk -v target="$target" -v root="$PWD/" '/\.cpp/ { # the whole path when there is one file
                file = index($1, root) == 1 ? substr($1, length(root) + 1) : $1
                printf "%-14s %-34s %5s lines, %s reached\n", target, file, $8, $10 }'
    done
    rm -rf "$work"
}

export -f fuzz
export kept broken
case ${1:-} in
    --all)
        prepare fuzz || exit 1
        told=$(mktemp)
        targets | xargs -P 2 -I '{}' bash -c 'fuzz "$1" "$2"' fuzz '{}' "${2:-20}" | tee "$told"
        bad=$(grep -c ' BROKE$' "$told")
        good=$(grep -c ' held: ' "$told")
        rm -f "$told"
        echo "$good targets held, $bad broke"
        [ "$bad" -eq 0 ] && [ "$good" -eq "$(targets | wc -l)" ]
        ;;
    --coverage)
        prepare fuzz && prepare fuzz-coverage && show_coverage
        ;;
    "" | -*)
        sed -n '2,10s/^# \{0,1\}//p' "$0"
        exit 2
        ;;
    *)
        prepare fuzz && fuzz "$1" "${2:-60}"
        ;;
esac
