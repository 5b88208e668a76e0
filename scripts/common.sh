# What play, test, bench and package share; sourced from the project's folder.

build_packages=(g++ cmake ninja-build pkg-config libsdl2-dev libfreetype-dev libstb-dev
    fonts-jetbrains-mono)
test_packages=(doctest-dev clang-format xvfb xauth xdotool x11-utils x11-xkb-utils openbox
    imagemagick tmux vim)
wine_packages=(wine wine64 xvfb xdotool)
package_packages=(debhelper lintian zip xz-utils git)
windows_packages=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev cmake ninja-build)

say() { printf '%s\n' "$*" >&2; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs the Debian packages named that are not there yet; asks nothing.
need_packages() {
    local missing=() name
    for name in "$@"; do
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
    done
    [ "${#missing[@]}" -eq 0 ] && return
    say "Installing ${missing[*]}."
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -qq
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null
}

# build PRESET [targets...]: configures once and builds; quiet when there is nothing to do.
build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || { say "Configuring build/$preset."; cmake --preset "$preset" >/dev/null; }
    local targets=() name
    for name in "$@"; do targets+=(--target "$name"); done
    cmake --build "build/$preset" "${targets[@]}" -- --quiet
}
