# Sourced by run and test: installs what is missing, configures and builds.

# Prints the packages of the given lists that are not installed. Of "one | other" either will do; when neither is there it
# is the first that apt offers.
missing_packages() {
    local installed name choice
    installed=$(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' | sed -n 's/^ii  *//p')
    grep -hv '^#' "$@" | sort -u | while IFS=' |' read -ra names; do
        choice=
        for name in "${names[@]}"; do
            if grep -qx "$name" <<<"$installed"; then
                continue 2
            elif [ -z "$choice" ] && { [ ${#names[@]} -eq 1 ] || [ -n "$(apt-cache madison "$name")" ]; }; then
                choice=$name
            fi
        done
        echo "${choice:-${names[0]}}"
    done
}

# Installs the packages of the given lists; returns at once when they are all there.
install_packages() {
    local missing as_root=()
    if ! command -v dpkg-query >/dev/null; then
        echo "This is no Debian system: install the equivalents of $* yourself, if they are missing." >&2
        return 0
    fi
    missing=$(missing_packages "$@")
    [ -z "$missing" ] && return 0
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Mivora needs these packages, and installing them needs root. As root, run:" >&2
            echo "  apt-get install --no-install-recommends" $missing >&2
            return 1
        fi
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -q >&2 || return 1
    # Only now it is known what apt offers.
    missing=$(missing_packages "$@")
    echo "Installing what is missing:" $missing >&2
    # shellcheck disable=SC2086
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends $missing >&2 || {
        echo "apt-get could not install the packages above; its own message says why." >&2
        return 1
    }
}

# build PRESET [TARGET…]: configures when needed and builds, quietly unless something is wrong.
build() {
    local preset=$1
    shift
    if [ ! -f "build/$preset/build.ninja" ]; then
        local messages
        echo "Configuring ($preset)…" >&2
        messages=$(cmake --preset "$preset" 2>&1) || {
            printf '%s\n' "$messages" >&2
            return 1
        }
    fi
    echo "Building ($preset)…" >&2
    if [ $# -gt 0 ]; then
        cmake --build --preset "$preset" --target "$@" >&2
    else
        cmake --build --preset "$preset" >&2
    fi
}
