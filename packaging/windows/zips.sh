# Sourced by ./package: the zips for Windows.

programs="quillmoor.exe quillmoor-cli.exe VLXPRO.EXE kvtpng32.dll"
samples="samples/heather.dll samples/curlew.vbx"
texts="README.txt set-up.cmd undo.cmd set-up.js"
licences="LICENSE THIRD-PARTY"
# What every Windows has, and the one library that lies beside the program.
libraries="advapi32.dll comctl32.dll comdlg32.dll gdi32.dll kernel32.dll msvcrt.dll ole32.dll shell32.dll user32.dll winmm.dll kvtpng32.dll"

# check_program MACHINE FILE: the machine, the kind of program and what it imports.
check_program() {
    headers=$("$1-w64-mingw32-objdump" -p "$2") || return 1
    case $1 in
        x86_64) format=pei-x86-64 ;;
        i686) format=pei-i386 ;;
    esac
    grep -q "file format $format\$" <<<"$headers" || fail "$2 is not for $1" || return 1
    case $2 in
        */quillmoor.exe) subsystem="Windows GUI" ;;
        */quillmoor-cli.exe) subsystem="Windows CUI" ;;
        *) subsystem= ;;
    esac
    grep -q "^Subsystem.*$subsystem" <<<"$headers" || fail "$2 is no $subsystem program" || return 1
    imports=$(sed -n 's/.*DLL Name: //p' <<<"$headers")
    echo "  $(basename "$2") imports" ${imports:-nothing}
    for import in $imports; do
        grep -qiwF -- "$import" <<<"$libraries" ||
            fail "$2 needs $import, which not every Windows has" || return 1
    done
}

# make_zip PRESET MACHINE
make_zip() {
    built=build/$1
    machine=$2
    # shellcheck disable=SC2086 # the lists are words
    build_preset "$1" quillmoor quillmoor-cli codec host manual samples || return 1
    manual=$(cd manual && find html -type f | LC_ALL=C sort)
    top=quillmoor-$version-$machine
    stage=build/zip/$top
    zip=build/$top.zip
    rm -rf "$stage" "$zip"
    mkdir -p "$stage/html" "$stage/samples" || return 1
    for file in $programs $samples $manual; do
        cp "$built/$file" "$stage/$file" || return 1
    done
    for file in $texts; do
        sed 's/$/\r/' "packaging/windows/$file" >"$stage/$file" || return 1
    done
    for file in $licences; do
        sed 's/$/\r/' "$file" >"$stage/$file.txt" || return 1
    done
    echo "$zip:"
    for file in $programs; do
        check_program "$machine" "$stage/$file" || return 1
    done
    # The order and the times are the commit's, so that nothing of this machine is in the zip.
    names=$(printf "$top/%s\n" $programs $samples $manual $texts $(printf '%s.txt ' $licences))
    find "$stage" -exec touch -d "@$commit_time" {} +
    (cd build/zip && TZ=UTC zip -q -X -D -9 "../$top.zip" -@) <<<"$names" || return 1
    [ "$(unzip -Z1 "$zip")" = "$names" ] || fail "$zip does not hold what it should" || return 1
    (cd build/zip && find "$top" -type f | LC_ALL=C sort) |
        cmp -s - <(LC_ALL=C sort <<<"$names") || fail "$stage holds more than its zip" || return 1
    echo "  holds $(wc -l <<<"$names") files, $(stat -c %s "$zip") bytes"
}

