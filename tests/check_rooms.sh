#!/bin/sh
# Holds every include of the program against the order of its rooms: a room includes itself and the
# rooms below it, what core is made of includes core alone, two files never include each other, and
# nobody includes start.
# Prints the faults, one a line; exit status 1 when there is one.
cd "$(dirname "$0")/.." || exit 2

# From the top down: the room, and what it is built into.
order="
shell                   app
dialogs                 app
viewer                  app
cli                     cli
export                  core
exe                     core
content                 core
program                 core
platform/native/qt      app
platform/native/winmm   app
platform/codec          codec
platform/native/comdlg  core
platform/native/shell32 core
platform/native/comctl  core
platform/native/user    core
platform/native/gdi     core
platform/page_text      core
platform/native/kernel  core
platform/files          core
platform/console        core
platform/color_channel  core
platform/picture_limit  core
platform/byte_reader    core
platform/utf8           core
platform/native/handles core
platform/native/no_memory core
platform/native/visible core
platform/win32          core
"

find cli content dialogs exe export platform program shell viewer \
    \( -name '*.cpp' -o -name '*.h' \) | sort | xargs awk -v order="$order" '
    BEGIN {
        count = split(order, word, " ") / 2
        for (i = 1; i <= count; i++) {
            room[i] = word[2 * i - 1]
            part[i] = word[2 * i]
        }
    }
    # The place of a path in the order, 0 when it has none.
    function place_of(path,   i) {
        for (i = 1; i <= count; i++)
            if (index(path, room[i]) == 1 && substr(path, length(room[i]) + 1) ~ /^[\/._]/)
                return i
        return 0
    }
    function piece_of(path) { sub(/\.(cpp|h)$/, "", path); return path }
    function fault(text) { print FILENAME ":" FNR ": " text; faults = 1 }
    FNR == 1 {
        here = place_of(FILENAME)
        piece = piece_of(FILENAME)
        if (!here) fault("is in no room")
    }
    /^#include "/ {
        split($0, quoted, "\"")
        other = piece_of(quoted[2])
        there = place_of(quoted[2])
        if (other == piece) next
        if (!there) { fault("includes " quoted[2] ", which is in no room"); next }
        if (there < here)
            fault("runs up: " room[here] " includes " quoted[2])
        # Both programs stand on the codec, core does not.
        if (part[there] != "core" && part[there] != part[here] &&
            !(part[there] == "codec" && part[here] != "core"))
            fault(part[here] " includes " quoted[2] " of " part[there])
        if (other == "shell/start") fault("nobody includes start")
        included[piece, other] = 1
        if ((other, piece) in included) fault(quoted[2] " and this file include each other")
    }
    END { exit faults ? 1 : 0 }
'
