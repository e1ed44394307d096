# Sourced by ./check and ./demo: brings in what packages.txt lists and this machine lacks.

# missing_packages [all]: names of the listed packages that are not installed, one a line; with "all" also those
# marked so.
missing_packages() {
    local name mark
    while read -r name mark; do
        case $name in '' | \#*) continue ;; esac
        [ -z "$mark" ] || [ "$mark" = "${1:-}" ] || continue
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$name" 2>/dev/null)" = installed ] || echo "$name"
    done <packages.txt
}

# need_packages [all]: installs them as root, or through sudo where there is one; ends with a clear line otherwise.
need_packages() {
    local missing as_root=
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: the packages of packages.txt are taken as given." >&2
        return 0
    fi
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" != 0 ]; then
        as_root=$(command -v sudo) || {
            echo "Missing packages: $missing- install them as root: apt-get install $missing" >&2
            return 1
        }
    fi
    echo "== installing $missing"
    $as_root apt-get update -qq
    # shellcheck disable=SC2086 # the names are to be split
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# build_preset PRESET [TARGET…]: configures and builds it in build/PRESET, on all cores of the machine.
build_preset() {
    local preset=$1
    shift
    cmake --preset "$preset" >"build/configure-$preset.log" 2>&1 || {
        cat "build/configure-$preset.log" >&2
        return 1
    }
    cmake --build --preset "$preset" --parallel "$(nproc)" ${1:+--target "$@"}
}
