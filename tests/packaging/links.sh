#!/bin/bash
# Every document and picture that an installed document links to is installed with it.
. "$(dirname "$0")/common.sh"

root=$scratch/root
DESTDIR=$root cmake --install "$build" --prefix /usr >"$scratch/install.log" || fail "$(cat "$scratch/install.log")"
cd "$root/usr/share/doc/distinte"

links=0
while IFS= read -r document; do
    # [text](target), without what stands behind a "#", without addresses.
    while IFS= read -r target; do
        links=$((links + 1))
        [ -e "$(dirname "$document")/$target" ] || fail "$document links to $target, which is not installed"
    done < <(grep -oE '\]\([^)]+\)' "$document" | sed -E 's/^\]\(//; s/\)$//; s/#.*//' | grep -vE '^$|^[a-z]+:' | sort -u)
done < <(find . -name '*.md' | LC_ALL=C sort)
[ "$links" -ge 15 ] || fail "only $links links were found"
