# Sourced by ./run, ./test and ./package: installs what is missing, and says what.
# Sets nothing else and asks nothing; works as root, and with sudo as a user.

# What the Linux programs are built with, and what their tests need besides.
program_packages="g++ cmake ninja-build binutils-mingw-w64-i686 qt6-base-dev libpng-dev zlib1g-dev libsdl2-dev libcli11-dev nlohmann-json3-dev"
native_packages="$program_packages libgtest-dev libgmock-dev"
# What the window needs when it runs: the faces it draws with, one for its menus (with the others
# alone "sans" is a typewriter's), the file choosers' languages, Wayland, and the desktop's
# applications for the manual.
window_packages="fonts-liberation fonts-dejavu-core qt6-translations-l10n qt6-wayland xdg-utils"
# A virtual display, keys for it and its picture.
screenshot_packages="xvfb xauth xdotool imagemagick"
test_packages="icoutils"
bench_packages="icoutils p7zip-full"
lint_packages="clang-format clang-tidy"
fuzz_packages="clang libclang-rt-14-dev llvm"
# Building for Windows, running it here, and what the zips take besides.
cross_packages="g++ cmake ninja-build libcli11-dev nlohmann-json3-dev googletest g++-mingw-w64-x86-64 binutils-mingw-w64-x86-64 libz-mingw-w64-dev"
wine_packages="wine64 libwine xvfb xauth"
zip_packages="g++-mingw-w64-i686 binutils-mingw-w64-i686 zip unzip"
# What the Debian packages are built and looked through with, and what their test asks besides.
deb_packages="build-essential dpkg-dev debhelper lintian perl"
deb_test_packages="debootstrap appstream desktop-file-utils libglib2.0-bin mandoc zsh fish"

# need_packages NAME...: installs those that the machine lacks.
need_packages() {
    missing=
    for package in "$@"; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
            missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    echo "Installing:$missing" >&2
    as_root=
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || {
            echo "These packages are missing and there is no sudo to install them:$missing" >&2
            return 1
        }
        as_root=sudo
    fi
    log=$(mktemp)
    # shellcheck disable=SC2086 # the list is words
    if { $as_root env DEBIAN_FRONTEND=noninteractive apt-get -y -q install \
            --no-install-recommends $missing ||
        { $as_root apt-get -q update && $as_root env DEBIAN_FRONTEND=noninteractive \
            apt-get -y -q install --no-install-recommends $missing; }; } >"$log" 2>&1 </dev/null
    then
        rm -f "$log"
    else
        cat "$log" >&2
        rm -f "$log"
        echo "The packages could not be installed:$missing" >&2
        return 1
    fi
}

# build_preset PRESET [TARGET...]: configures, once and when the presets have changed, then builds with
# at most two jobs; quiet unless something fails.
build_preset() {
    preset=$1
    shift
    log=$(mktemp)
    if { [ "build/$preset/build.ninja" -nt CMakePresets.json ] || cmake --preset "$preset"; } >"$log" 2>&1 &&
        cmake --build --preset "$preset" ${1:+--target} "$@" >"$log" 2>&1
    then
        rm -f "$log"
    else
        cat "$log" >&2
        rm -f "$log"
        echo "The $preset build failed." >&2
        return 1
    fi
}
