#!/bin/sh
# Holds the samples of a native build against an independent reader of executables:
# check_listing.sh BUILD_FOLDER. Every resource has to be listed with its type, name and size.
build=$1
listed=$(for sample in heather.dll curlew.vbx; do
    wrestool -l "$build/samples/$sample" | sed -n \
        "s/^--type=\([^ ]*\) --name=\([^ ]*\) .*size=\([0-9]*\)\]\$/$sample \1 \2 \3/p"
done | sort)
made=$("$build/tools/make_samples" --list | sort)
[ -n "$made" ] && [ "$made" = "$listed" ] && exit 0
printf 'made:\n%s\nlisted:\n%s\n' "$made" "$listed"
exit 1
