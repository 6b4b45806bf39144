# Shared by the packaging tests. Each runs as: <test>.sh BUILD_FOLDER VERSION, in a folder of its own that it may fill.
set -euo pipefail

build=$1
version=$2
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source_folder=$(cd "$here/../.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# Tools that the machine may lack: the test is then skipped, never passed.
need() {
    local tool
    for tool in "$@"; do
        if ! command -v "$tool" >/dev/null; then
            echo "skipped: $tool is not installed" >&2
            exit 77
        fi
    done
}

# Every file and link of a package, under the folder /usr.
installed_files=(
    usr/bin/distinte
    usr/lib/distinte/components/QZUO_COPIADISTINTA.so
    usr/share/applications/distinte.desktop
    usr/share/doc/distinte/CONTRIBUTING.md
    usr/share/doc/distinte/README.md
    usr/share/doc/distinte/changelog.gz
    usr/share/doc/distinte/copyright
    usr/share/doc/distinte/docs/automation.md
    usr/share/doc/distinte/docs/host-contract.md
    usr/share/distinte/manuale/manuale.md
    usr/share/doc/distinte/docs/immagini
    usr/share/doc/distinte/docs/manuale.md
    usr/share/doc/distinte/docs/operations.md
    usr/share/doc/distinte/docs/performance.md
    usr/share/doc/distinte/docs/reliability.md
    usr/share/icons/hicolor/128x128/apps/distinte.png
    usr/share/icons/hicolor/16x16/apps/distinte.png
    usr/share/icons/hicolor/24x24/apps/distinte.png
    usr/share/icons/hicolor/256x256/apps/distinte.png
    usr/share/icons/hicolor/32x32/apps/distinte.png
    usr/share/icons/hicolor/48x48/apps/distinte.png
    usr/share/icons/hicolor/64x64/apps/distinte.png
    usr/share/icons/hicolor/scalable/apps/distinte.svg
    usr/share/man/it/man1/distinte.1.gz
    usr/share/man/man1/distinte.1.gz
)

# The pictures of the manual.
for picture in "$source_folder"/docs/immagini/*.png; do
    installed_files+=("usr/share/distinte/manuale/immagini/$(basename "$picture")")
done

# Compares the files below a root with that list.
check_files() {
    local root=$1
    diff <(printf '%s\n' "${installed_files[@]}" | LC_ALL=C sort) \
        <(cd "$root" && find usr ! -type d | LC_ALL=C sort) || fail "the files below $root are not the expected ones"
}

# Starts the program that stands below a root: version, a database, and a script that opens the form and moves a node.
check_start() {
    local root=$1
    local program=$root/usr/bin/distinte
    local home=$scratch/home
    rm -rf "$home"
    mkdir -p "$home"
    local run=(env -u DISTINTE_REGISTRY -u DISTINTE_ODBC -u DISPLAY -u WAYLAND_DISPLAY -u XDG_DATA_HOME -u
        XDG_CONFIG_HOME -u LD_LIBRARY_PATH HOME="$home" "$program")
    [ "$("${run[@]}" --version)" = "distinte $version" ] || fail "--version of $program"
    "${run[@]}" --database "$home/prova.sqlite" --create-demo --demo-size 100
    cat >"$home/script.jsonl" <<'END'
{"do":"open"}
{"do":"select","control":"TRW_DISTINTEORIG","key":"C1"}
{"do":"read","control":"TRW_ELEMDISTINTAORIG"}
{"do":"screenshot","file":"shot.png"}
{"do":"close"}
{"do":"quit"}
END
    (cd "$home" && "${run[@]}" --database prova.sqlite --script script.jsonl >replies.jsonl) ||
        fail "the script ended with $?"
    [ "$(grep -c '"ok":true' "$home/replies.jsonl")" -eq 6 ] || fail "a line was refused"
    sed -n 3p "$home/replies.jsonl" | grep -q 'RagioneSociale' || fail "the tree shows no nodes"
    [ -s "$home/shot.png" ] || fail "no picture of the form"
    # The component in use is the one that was installed with the program.
    grep -qF "$(readlink -f "$root")/usr/lib/distinte/components/QZUO_COPIADISTINTA.so" "$home/.local/share/distinte/components" ||
        fail "the installed component was not the one loaded"
}
