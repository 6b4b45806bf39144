#!/bin/bash
# The Debian package: what it says and holds; its install, start and removal in a scratch root that knows this
# machine's packages, so that its dependencies are checked.
. "$(dirname "$0")/common.sh"
need cpack dpkg dpkg-deb dpkg-shlibdeps fakeroot file readelf

(cd "$scratch" && cpack --config "$build/CPackConfig.cmake" -G DEB -B "$scratch/packages" >"$scratch/cpack.log" 2>&1) ||
    fail "$(cat "$scratch/cpack.log")"
architecture=$(dpkg --print-architecture)
package=$scratch/packages/distinte_${version}_$architecture.deb
[ -f "$package" ] || fail "no $(basename "$package") in: $(ls "$scratch/packages")"

field() {
    dpkg-deb --field "$package" "$1"
}
[ "$(field Package)" = distinte ] || fail "Package: $(field Package)"
[ "$(field Version)" = "$version" ] || fail "Version: $(field Version)"
[ "$(field Architecture)" = "$architecture" ] || fail "Architecture: $(field Architecture)"
[[ $(field Suggests) =~ tdsodbc ]] || fail "no ODBC driver is suggested: $(field Suggests)"
[ -n "$(field Maintainer)" ] || fail "no maintainer"
# A line that tells what it is, then paragraphs, each line behind one blank.
[ "$(field Description | wc -l)" -ge 5 ] || fail "no long description"
! field Description | tail -n +2 | grep -vE '^ ([^ ].*|\.)$' || fail "lines of the description are not as they should be"
# Nothing but files: no script of the package runs at its install or removal.
control=$(dpkg-deb --ctrl-tarfile "$package" | tar -t | grep -v '^\./$' | LC_ALL=C sort | tr '\n' ' ')
[ "$control" = "./control ./md5sums " ] || fail "the package's control files are $control"

# Files belong to root, nobody else may write them, and the two binaries are stripped.
dpkg-deb --contents "$package" >"$scratch/contents"
! grep -v ' root/root ' "$scratch/contents" || fail "files that are not root's"
! grep -E '^.(....w|.......w)' "$scratch/contents" | grep -v '^l' || fail "files that others may write"
dpkg-deb --extract "$package" "$scratch/extracted"
check_files "$scratch/extracted"
for binary in usr/bin/distinte usr/lib/distinte/components/QZUO_COPIADISTINTA.so; do
    ! readelf -S "$scratch/extracted/$binary" | grep -q '\.debug_info' || fail "$binary is not stripped"
    ! readelf -d "$scratch/extracted/$binary" | grep -qE 'RPATH|RUNPATH' || fail "$binary looks for libraries elsewhere"
done

# A root of its own with this machine's list of packages.
root=$scratch/root
mkdir -p "$root/var/lib/dpkg"/{info,updates,triggers} "$root/var/log"
cp /var/lib/dpkg/status "$root/var/lib/dpkg/status"
[ -f /var/lib/dpkg/arch ] && cp /var/lib/dpkg/arch "$root/var/lib/dpkg/arch"
in_root() {
    local as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(fakeroot)
    # The list of this machine's own files is not there, as dpkg says for every package.
    PATH=$PATH:/usr/sbin:/sbin "${as_root[@]}" dpkg --root="$root" --force-not-root --log=/dev/null "$@" \
        >"$scratch/dpkg.log" 2>&1 || fail "dpkg $*: $(grep -v 'files list file' "$scratch/dpkg.log")"
}
state() {
    dpkg-query --admindir="$root/var/lib/dpkg" --show --showformat='${db:Status-Abbrev}' distinte 2>/dev/null || true
}

in_root --install "$package"
[ "$(state)" = "ii " ] || fail "state after the install: $(state)"
check_files "$root"
check_start "$root"

in_root --remove distinte
[ -z "$(state)" ] || [ "$(state)" = "un " ] || fail "state after the removal: $(state)"
left=$(cd "$root" && find . -path ./var -prune -o ! -name . -print)
[ -z "$left" ] || fail "left after the removal: $left"
[ -z "$(find "$root/var/lib/dpkg/info" -name 'distinte*')" ] || fail "dpkg still knows files of the package"

# An upgrade of the package by itself changes nothing.
in_root --install "$package"
in_root --install "$package"
check_files "$root"
