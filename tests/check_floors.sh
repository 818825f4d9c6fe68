#!/bin/sh
# Holds every include of the program against cmake/floors.txt: none runs up a floor, the quiet half
# never includes the visible one, no two files include each other, only start includes main_window,
# nobody includes start, and every file of the rooms is in the table.
# Prints the faults, one a line; exit status 1 when there is one.
cd "$(dirname "$0")/.." || exit 2
find cli dialogs exe export platform shell viewer resources \
    \( -name '*.cpp' -o -name '*.h' \) 2>/dev/null | sort | xargs awk '
    BEGIN {
        while ((getline line < "cmake/floors.txt") > 0) {
            if (line !~ /^[0-9]/) continue
            split(line, word, " ")
            floor[word[4]] = word[1]
            library[word[4]] = word[2]
        }
    }
    function piece_of(path) { sub(/\.(cpp|h)$/, "", path); return path }
    function fault(text) { print FILENAME ":" FNR ": " text; faults = 1 }
    FNR == 1 {
        here = piece_of(FILENAME)
        if (!(here in floor)) fault("not in cmake/floors.txt")
    }
    /^#include "/ {
        split($0, quoted, "\"")
        there = piece_of(quoted[2])
        if (there == here) next
        if (!(there in floor)) { fault("includes " quoted[2] ", which no floor has"); next }
        if (floor[there] + 0 < floor[here] + 0)
            fault("runs up: floor " floor[here] " includes " quoted[2] " of floor " floor[there])
        if (library[here] == "core" && library[there] != "core")
            fault("core includes " quoted[2] " of " library[there])
        if (library[here] == "cli" && library[there] == "app" || library[here] == "app" && library[there] == "cli")
            fault(library[here] " includes " quoted[2] " of " library[there])
        if (there == "shell/main_window" && here != "shell/start")
            fault("only start includes main_window")
        if (there == "shell/start") fault("nobody includes start")
        included[here, there] = 1
        if ((there, here) in included) fault(quoted[2] " and this file include each other")
    }
    END { exit faults ? 1 : 0 }
'
