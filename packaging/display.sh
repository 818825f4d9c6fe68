# Sourced by what needs a display where there is none: a virtual one that nobody else can use.

# start_display WIDTHxHEIGHT: sets DISPLAY, XAUTHORITY and display_server, the process to end with
# stop_display. Only who knows the cookie, which lies in a folder closed to others, gets in.
start_display() {
    display_folder=$(mktemp -d) || return 1
    export XAUTHORITY=$display_folder/authority
    local cookie
    cookie=$(mcookie) && xauth -q add :0 . "$cookie" 2>/dev/null || return 1
    # Xvfb says which display it took.
    exec 8< <(exec Xvfb -displayfd 1 -screen 0 "$1x24" -nolisten tcp -auth "$XAUTHORITY" \
        2>/dev/null 9>&-)
    display_server=$!
    local number
    read -r number <&8 && xauth -q add ":$number" . "$cookie" || return 1
    export DISPLAY=:$number
}

stop_display() {
    [ -z "${display_server:-}" ] || kill "$display_server" 2>/dev/null
    [ -z "${display_folder:-}" ] || rm -rf "$display_folder"
}
