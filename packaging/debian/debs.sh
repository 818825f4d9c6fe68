# Sourced by ./package: the Debian packages.

# copy_sources FOLDER: what belongs to the project, and no build.
copy_sources() {
    mkdir -p "$1" || return 1
    if git -c safe.directory="$PWD" rev-parse --git-dir >/dev/null 2>&1; then
        git -c safe.directory="$PWD" ls-files -z --cached --others --exclude-standard |
            tar --null --files-from=- --ignore-failed-read -c 2>/dev/null | tar -x -C "$1"
    else
        tar --exclude=./build -c . | tar -x -C "$1"
    fi
}

# make_debs: build/quillmoor_VERSION_MACHINE.deb and build/quillmoor-cli_VERSION_MACHINE.deb.
make_debs() {
    local source=build/deb/quillmoor-$version log=build/deb/log deb
    rm -rf build/deb
    copy_sources "$source" && cp -r packaging/debian "$source/debian" || return 1
    LC_ALL=C packaging/debian/make_changelog <CHANGELOG.md >"$source/debian/changelog" || return 1
    # Nothing is younger than the commit, whenever it was taken out.
    find "$source" -exec touch -h -d "@$commit_time" {} +
    (
        cd "$source" && export SOURCE_DATE_EPOCH=$commit_time LC_ALL=C.UTF-8 &&
            DEB_BUILD_OPTIONS="parallel=2 noautodbgsym" dpkg-buildpackage -us -uc -b
    ) >"$log" 2>&1 || {
        tail -40 "$log" >&2
        echo "The Debian packages were not built: $log" >&2
        return 1
    }
    # The form of both; what is overridden says why.
    lintian --fail-on error,warning --allow-root build/deb/*.changes || return 1
    for deb in build/deb/*.deb; do
        mv "$deb" build/ || return 1
        deb=build/$(basename "$deb")
        echo "$deb:"
        echo "  holds $(dpkg-deb -c "$deb" | grep -vc '/$') files, $(stat -c %s "$deb") bytes"
        echo "  needs $(dpkg-deb -f "$deb" Depends)"
    done
}
