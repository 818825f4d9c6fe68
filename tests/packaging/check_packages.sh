#!/usr/bin/env bash
# Installs what ./package made of this version into a clean Debian, made by debootstrap from the mirror
# that this machine's apt uses, and tries it there: both programs run, for users too; an older version
# is upgraded; what desktops, shells and man are told is in form; removed, nothing is left. The archive
# starts from any folder. Runs as root, in a mount namespace of its own.
set -u
cd "$(dirname "$(dirname "$(dirname "$(readlink -f "$0")")")")" || exit 2
. packaging/packages.sh
. packaging/display.sh
if [ "$(id -u)" -ne 0 ]; then
    exec sudo tests/packaging/check_packages.sh
elif [ "${1:-}" != inside ]; then
    # shellcheck disable=SC2086
    need_packages $deb_test_packages $screenshot_packages && exec unshare --mount \
        tests/packaging/check_packages.sh inside
    exit 1
fi

version=$(sed -n 's/^project(Quillmoor VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
machine=$(dpkg --print-architecture)
mkdir -p build
work=$(mktemp -d "$PWD/build/packages.XXXXXX")
root=$work/root
samples=/usr/share/quillmoor/samples
program=
clean_up() {
    kill $program 2>/dev/null
    stop_display
    umount -R "$root"/* 2>/dev/null
    rm -rf --one-file-system "$work"
}
trap clean_up EXIT
failures=0

fail() {
    echo "packages: $*"
    failures=$((failures + 1))
}

# inside COMMAND...: as root there; as_user: as somebody without rights.
inside() {
    env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive \
        chroot "$root" "$@" </dev/null
}
as_user() {
    env -i PATH=/usr/bin:/bin LC_ALL=C.UTF-8 HOME=/home/reader ${DISPLAY:+DISPLAY="$DISPLAY"} \
        XAUTHORITY=/home/reader/authority /usr/sbin/chroot --userspec=1000:1000 "$root" "$@" </dev/null
}

# quietly COMMAND...: tells what a command says only when it fails.
quietly() {
    "$@" >"$work/said" 2>&1 || {
        cat "$work/said"
        fail "$* failed"
        return 1
    }
}

# The clean system is kept as build/clean-root.tar; older than a week it is made anew.
make_root() {
    local site suite
    if [ -z "$(find build/clean-root.tar -mtime -7 2>/dev/null)" ]; then
        read -r site suite < <(apt-get indextargets --format '$(SITE) $(CODENAME)' \
            'Created-By: Packages' 'Label: Debian' 'Codename: bookworm')
        quietly debootstrap --variant=minbase bookworm "$root" "$site" || return 1
        echo "deb $site $suite main" >"$root/etc/apt/sources.list"
        apt-config dump | grep -i '^Acquire::.*proxy' >"$root/etc/apt/apt.conf.d/proxy"
        cp /etc/resolv.conf "$root/etc"
        quietly inside apt-get -q update || return 1
        # What Quillmoor's packages need is there before them; so is what keeps a desktop's lists.
        quietly inside apt-get -y -q install --no-install-recommends shared-mime-info \
            desktop-file-utils hicolor-icon-theme $(needed quillmoor) $(needed quillmoor-cli) || return 1
        quietly inside useradd -m -u 1000 reader || return 1
        tar -C "$root" --one-file-system -c . >build/clean-root.tar
    else
        mkdir "$root" && tar -C "$root" -xf build/clean-root.tar
    fi
}

# needed NAME: the packages that it depends on, without their versions.
needed() {
    dpkg-deb -f "$(deb_of "$1")" Depends | sed 's/([^)]*)//g; s/|[^,]*//g; s/,/ /g'
}
deb_of() {
    echo "build/$1_${version}_$machine.deb"
}

# What there is, without the records of dpkg and apt themselves.
files_now() {
    (cd "$root" && find . -xdev \( -path ./packages -o -path ./proc -o -path ./tmp -o -path ./home \
        -o -path ./var/lib/dpkg -o -path ./var/log -o -path ./var/cache \) -prune -o -print |
        LC_ALL=C sort)
}

# window_of WHAT COMMAND...: a window of the program comes up for a user, and shows a sample's name.
window_of() {
    local what=$1 window title
    shift
    as_user "$@" 2>"$work/said" &
    program=$!
    window=$(timeout 30 xdotool search --sync --onlyvisible --name '^Quillmoor \[' | tail -1)
    title=$(xdotool getwindowname "${window:-0}" 2>/dev/null)
    case $title in
        *heather.dll*) ;;
        *) fail "$what shows no window of its sample but '$title'"; cat "$work/said" ;;
    esac
    # A message in front of it would be a second one.
    [ "$(xdotool search --onlyvisible --name . 2>/dev/null | wc -l)" -le 1 ] ||
        fail "$what shows more than its window"
    kill "$program"
    wait "$program" 2>/dev/null
    program=
}

# cli_of WHAT COMMAND FOLDER: quillmoor-cli lists and saves the samples of a folder.
cli_of() {
    as_user "$2" list "$3/heather.dll" "$3/curlew.vbx" >"$work/listed" 2>&1 ||
        fail "$1 lists nothing: $(cat "$work/listed")"
    grep -q QUILL "$work/listed" || fail "$1 lists no QUILL"
    quietly as_user "$2" save --output "/home/reader/$1" "$3/heather.dll"
    find "$root/home/reader/$1" -name '*.BMP' | grep -q . || fail "$1 saved no bitmap"
}

# make_older NAME: the package as an earlier version that had a file more.
make_older() {
    rm -rf "$work/older"
    dpkg-deb -R "$(deb_of "$1")" "$work/older"
    sed -i "s/^Version: .*/Version: 2.9.9/" "$work/older/DEBIAN/control"
    mkdir -p "$work/older/usr/lib/quillmoor"
    : >"$work/older/usr/lib/quillmoor/$1.gone"
    dpkg-deb --root-owner-group -b "$work/older" "$root/packages/$1-older.deb" >/dev/null
}

check_desktop() {
    local there=$root/usr/share file
    quietly desktop-file-validate "$there/applications/quillmoor.desktop"
    quietly appstreamcli validate --pedantic --no-net "$there"/metainfo/*.xml
    for file in "$there"/man/man1/quillmoor*.1.gz; do
        gunzip -c "$file" | mandoc -T lint >"$work/said" || fail "$file: $(cat "$work/said")"
    done
    # A program that is for one kind of executables stays their first choice.
    mkdir -p "$work/data/applications"
    printf '%s\n' '[Desktop Entry]' Type=Application Name=Other 'Exec=true %f' \
        'MimeType=application/x-ms-dos-executable;' >"$work/data/applications/zzz.desktop"
    quietly update-desktop-database "$work/data/applications"
    export XDG_DATA_HOME=$work/data XDG_DATA_DIRS=$there XDG_CONFIG_HOME=$work/config
    # gio leaves out what cannot be started here.
    mkdir -p "$work/bin" && : >"$work/bin/quillmoor" && chmod +x "$work/bin/quillmoor"
    for kind in application/x-ms-dos-executable application/x-ms-ne-executable; do
        PATH=$PATH:$work/bin gio mime $kind >"$work/said"
        head -1 "$work/said" | grep -q 'zzz.desktop' || fail "first for $kind: $(cat "$work/said")"
        grep -q 'quillmoor.desktop' "$work/said" || fail "quillmoor is not offered for $kind"
    done
    kind=$(gio info -a standard::content-type "$there/quillmoor/samples/curlew.vbx" |
        sed -n 's/.*type: //p')
    [ "$kind" = application/x-ms-ne-executable ] || fail "curlew.vbx is taken for $kind"
    unset XDG_DATA_HOME XDG_DATA_DIRS XDG_CONFIG_HOME
}

check_completions() {
    local share=$root/usr/share
    (
        # shellcheck disable=SC1091
        . "$share/bash-completion/completions/quillmoor-cli"
        COMP_WORDS=(quillmoor-cli save --f)
        COMP_CWORD=2
        _quillmoor_cli
        [ "${COMPREPLY[*]}" = --force ]
    ) || fail "bash completes nothing"
    fish -c 'source $argv[1]; complete -C "quillmoor-cli save --f"' \
        "$share/fish/vendor_completions.d/quillmoor-cli.fish" | grep -q ^--force ||
        fail "fish completes nothing"
    zsh -f tests/packaging/complete.zsh "$share/zsh/vendor-completions" 'quillmoor-cli save --' |
        grep -q -e '^--force  ' || fail "zsh completes nothing"
}

make_root || exit 1
mkdir -p "$root/packages" && cp "$(deb_of quillmoor)" "$(deb_of quillmoor-cli)" "$root/packages" || exit 1
make_older quillmoor
make_older quillmoor-cli
mount -t proc proc "$root/proc" && mount -t tmpfs tmpfs "$root/tmp" || exit 1
start_display 1024x768 || exit 1
mkdir -p "$root/tmp/.X11-unix" && mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
chmod 1777 "$root/tmp"
install -o 1000 -m 600 "$XAUTHORITY" "$root/home/reader/authority"
files_now >"$work/before"

# An older version, then this one above it.
quietly inside dpkg -i /packages/quillmoor-older.deb /packages/quillmoor-cli-older.deb
quietly inside dpkg -i "/packages/quillmoor_${version}_$machine.deb" \
    "/packages/quillmoor-cli_${version}_$machine.deb"
find "$root/usr" -name '*.gone' | grep . && fail "an upgrade leaves what the older version had"
[ "$(as_user quillmoor-cli --version)" = "quillmoor-cli $version" ] || fail "another version runs"
cli_of installed quillmoor-cli $samples
quietly inside quillmoor-cli list $samples/heather.dll
window_of "the package" quillmoor $samples/heather.dll
check_desktop
check_completions

# Each goes without the other.
cp -r "$root$samples" "$root/packages"
quietly inside dpkg --purge quillmoor
cli_of alone quillmoor-cli /packages/samples
quietly inside dpkg --purge quillmoor-cli
files_now | diff "$work/before" - || fail "something is left"

# The archive, from a folder with a name of its own.
mkdir "$root/home/reader/else where"
tar -C "$root/home/reader/else where" --strip-components=1 -xzf "build/quillmoor-$version-linux-$(uname -m).tar.gz"
moved="/home/reader/else where"
cli_of moved "$moved/bin/quillmoor-cli" "$moved/share/quillmoor/samples"
window_of "the archive" "$moved/bin/quillmoor" "$moved/share/quillmoor/samples/heather.dll"

echo "$failures failures with the packages of $version"
[ "$failures" -eq 0 ]
