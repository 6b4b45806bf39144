#!/bin/bash
# What `cmake --install` copies into a scratch root, and whether the program starts from there.
. "$(dirname "$0")/common.sh"

root=$scratch/root
DESTDIR=$root cmake --install "$build" --prefix /usr >"$scratch/install.log" || fail "$(cat "$scratch/install.log")"
check_files "$root"
check_start "$root"

# Without its component the program says what is missing.
rm "$root/usr/lib/distinte/components/QZUO_COPIADISTINTA.so"
mkdir -p "$scratch/empty"
status=0
env -u DISTINTE_REGISTRY -u XDG_DATA_HOME HOME="$scratch/empty" "$root/usr/bin/distinte" \
    --database "$scratch/x.sqlite" --create 2>"$scratch/reason" || status=$?
[ "$status" -eq 3 ] || fail "without its component the program ended with $status"
grep -q 'QZUO_COPIADISTINTA.so' "$scratch/reason" || fail "the missing component is not named"
