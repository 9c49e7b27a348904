# shellcheck shell=bash
# Shared by the scripts beside it, which source it: they start in the project's folder, wherever they were called from.
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

say() { printf '\n%s: %s\n' "$(basename "$0")" "$*"; }
fail() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

on_macos() { [ "$(uname -s)" = Darwin ]; }

# Whether a window could be shown here.
has_display() { on_macos || [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; }

processors() { getconf _NPROCESSORS_ONLN; }

# build <preset>: configures and builds what CMakePresets.json calls so, into build/<preset>.
build() {
    # Homebrew's folder, for a CMake that came from elsewhere and does not search it.
    if on_macos; then export CMAKE_PREFIX_PATH="${CMAKE_PREFIX_PATH:-$(brew --prefix)}"; fi
    cmake --preset "$1"
    cmake --build --preset "$1" --parallel "$(processors)"
}
