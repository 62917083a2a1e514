# Sourced by run and test: installs what is missing, configures and builds.

# Prints the packages of the given lists that are not installed. Of "one | other" either will do; when neither is there it
# is the first that apt offers. "one if other" is wanted where there is the other.
missing_packages() {
    local installed name choice
    installed=$(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' | sed -n 's/^ii  *//p')
    grep -hv '^#' "$@" | sort -u | while IFS=' |' read -ra names; do
        choice=
        if [ "${names[1]:-}" = if ]; then
            [ -n "$(apt-cache madison "${names[2]}")" ] || continue
            names=("${names[0]}")
        fi
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

# What to look for on systems that name their packages otherwise.
say_libraries() {
    cat <<'END'
There is no apt here, so nothing is installed. Mivora is built from these, with their headers:
  CMake 3.25, Ninja, pkg-config, a compiler of C++20 (GCC 12 or Clang 14, or newer)
  Qt 6.4 or newer: Base (with D-Bus), Declarative (Quick, Quick Templates), SVG, Tools (Linguist); to run also Wayland
  Boost 1.81 or newer, with Boost.URL; CLI11 2; GLib 2.74 with GIO; for the tests libsodium
  libxcb 1.15, with shape and xkb; libxkbcommon 1.5, with its X11 part;
  the headers of libwayland 1.20
  libecal 2.0 of evolution-data-server 3.46 or newer: without it no calendars of the desktop's accounts
  LayerShellQt 6, with Qt's private headers: without them the panel is shown by XWayland in Wayland sessions
Debian's names of all of them, and of what the tests need: scripts/packages-*.txt
END
}

# Installs the packages of the given lists; returns at once when they are all there.
install_packages() {
    local missing as_root=()
    if ! command -v apt-get >/dev/null; then
        [ -n "$(ls build/*/build.ninja 2>/dev/null)" ] || say_libraries >&2
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
        # What is left out for want of a library.
        sed -n 's/^-- \(.* not found: .*\)/\1/p' <<<"$messages" >&2
    fi
    echo "Building ($preset)…" >&2
    if [ $# -gt 0 ]; then
        cmake --build --preset "$preset" --target "$@" >&2
    else
        cmake --build --preset "$preset" >&2
    fi
}
