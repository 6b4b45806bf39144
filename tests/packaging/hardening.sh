#!/bin/bash
# What the compiler and the linker have built into the two binaries that are installed, against faults that someone might
# make use of.
. "$(dirname "$0")/common.sh"
need readelf objdump

root=$scratch/root
DESTDIR=$root cmake --install "$build" --prefix /usr >"$scratch/install.log" || fail "$(cat "$scratch/install.log")"

# The settings of the build that these files come from.
setting() {
    sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"
}
type=$(setting CMAKE_BUILD_TYPE)
flags="$(setting CMAKE_CXX_FLAGS) $(setting "CMAKE_CXX_FLAGS_${type^^}")"

for binary in usr/bin/distinte usr/lib/distinte/components/QZUO_COPIADISTINTA.so; do
    file=$root/$binary
    header=$(readelf -hW "$file")
    segments=$(readelf -lW "$file")
    dynamic=$(readelf -dW "$file")
    symbols=$(readelf --dyn-syms -W "$file")
    grep -q 'Type: *DYN' <<<"$header" || fail "$binary stands at a fixed address"
    grep -q 'GNU_RELRO' <<<"$segments" || fail "$binary keeps its tables writable"
    grep -qE 'BIND_NOW|Flags:.*NOW' <<<"$dynamic" || fail "$binary binds its functions while it runs"
    grep -E 'GNU_STACK' <<<"$segments" | grep -q 'RW ' || fail "$binary has no stack that is data alone"
    ! grep -qE 'LOAD.*RWE' <<<"$segments" || fail "$binary has memory that is both written and run"
    ! grep -q TEXTREL <<<"$dynamic" || fail "$binary changes its own code when it is loaded"
    grep -q '__stack_chk_fail' <<<"$symbols" || fail "$binary does not watch its stack"
    # Checked functions are the optimising compiler's.
    if [[ $flags =~ -O[1-9sz] ]]; then
        grep -qE '__[a-z]+_chk\b' <<<"$symbols" || [ "$binary" != usr/bin/distinte ] ||
            fail "$binary calls no checked functions"
    fi
    # The mark of every function that may be jumped to.
    if [ "$(setting DISTINTE_HAS_CF_PROTECTION)" = 1 ] && grep -q 'X86-64' <<<"$header"; then
        functions=$(objdump -d --no-show-raw-insn "$file" | grep -c 'endbr64') || true
        [ "$functions" -gt 500 ] || fail "$binary has $functions places that are marked for jumps"
    fi
done
grep -q 'PIE' <<<"$(readelf -dW "$root/usr/bin/distinte")" || fail "the program stands at a fixed address"
