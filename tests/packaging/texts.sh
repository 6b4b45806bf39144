#!/bin/bash
# The desktop entry, the icon and the manual pages: well formed, and telling of every option of the program.
. "$(dirname "$0")/common.sh"
need desktop-file-validate man
packaging=$source_folder/packaging

problems=$(desktop-file-validate "$packaging/distinte.desktop" 2>&1) || fail "desktop entry: $problems"
[ -z "$problems" ] || fail "desktop entry: $problems"

for page in distinte.1 distinte.it.1; do
    problems=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=100 \
        man --warnings -E UTF-8 -l -Tutf8 -Z "$packaging/$page" 2>&1 >/dev/null) || true
    [ -z "$problems" ] || fail "$page: $problems"
    text=$(LC_ALL=C.UTF-8 MANWIDTH=100 man -E UTF-8 -l "$packaging/$page" | sed 's/.\x08//g')
    grep -qF "$version" "$packaging/$page" || fail "$page is not of version $version"
    options=$("$build/bin/distinte" --help | grep -oE -- '--[a-z-]+' | sort -u)
    [ "$(wc -w <<<"$options")" -ge 10 ] || fail "--help names too few options"
    for option in $options; do
        grep -qF -- "$option" <<<"$text" || fail "$page does not tell of $option"
    done
    ! grep -E '.{101}' <<<"$text" || fail "$page has lines that are too long"
done

# The icon: a drawing, and pictures of the sizes that their folders name.
grep -q '<svg xmlns=' "$packaging/distinte.svg" || fail "no drawing"
for size in 16 24 32 48 64 128 256; do
    picture=$build/packaging/icons/${size}x$size/apps/distinte.png
    file=$(head -c 24 "$picture" | od -An -tx1 -v | tr -d ' \n')
    [ "${file:0:16}" = 89504e470d0a1a0a ] || fail "$picture is no PNG"
    [ $((16#${file:32:8})) -eq "$size" ] && [ $((16#${file:40:8})) -eq "$size" ] || fail "$picture has another size"
done
