# Shared by ./run and ./test: the packages that are needed, and who may install them.

# Installs the Debian packages named, quick when none is missing.
need_packages() {
    local missing=()
    local package
    for package in "$@"; do
        if [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" != installed ]; then
            missing+=("$package")
        fi
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "==> Installing ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing and only root can install them: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

build_packages=(g++ cmake ninja-build qt6-base-dev libgl-dev libsqlite3-dev unixodbc-dev libxlsxwriter-dev libminizip-dev
    libcsv-dev nlohmann-json3-dev libgtest-dev fonts-inter)
# Drivers that the tests open connections through, the letters that a table is compared with, and what reads exported
# files back. (libreoffice-calc-nogui, where it is there, opens the sheets in a spreadsheet program.)
test_packages=(libsqliteodbc tdsodbc unicode-data poppler-utils unzip)

jobs=$(nproc)
