# Sourced by ./package: the archive for Linux that starts from any folder.

# make_archive: build/quillmoor-VERSION-linux-MACHINE.tar.gz, which holds what an installation does.
make_archive() {
    local top stage archive
    top=quillmoor-$version-linux-$(uname -m)
    stage=$PWD/build/archive/$top
    archive=build/$top.tar.gz
    build_preset release quillmoor quillmoor-cli host manual samples icons || return 1
    rm -rf build/archive "$archive"
    DESTDIR='' cmake --install build/release --prefix "$stage" --strip >/dev/null || return 1
    sed "s/@version@/$version/" packaging/linux/README.txt >"$stage/README.txt" || return 1
    cp LICENSE THIRD-PARTY "$stage" || return 1
    chmod -R go=rX,u=rwX "$stage"
    tar -C build/archive --sort=name --owner=0 --group=0 --numeric-owner --mtime="@$commit_time" \
        --format=gnu -c "$top" | gzip -9n >"$archive" || return 1
    echo "$archive:"
    echo "  holds $(tar -tf "$archive" | grep -vc '/$') files, $(stat -c %s "$archive") bytes"
}
