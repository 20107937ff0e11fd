# Sourced by ./run, ./test, ./package and .ci/run: which Debian packages each needs, how they get there, how a
# preset is built and its tests are run.
# shellcheck shell=bash

# The one list of packages.
# shellcheck disable=SC2034  # used by the scripts that source this
{
    packages_build=(g++ clang cmake ninja-build qt6-base-dev qt6-serialport-dev libgl-dev pkg-config libusb-1.0-0-dev
        libcli11-dev nlohmann-json3-dev scdoc)
    packages_test=(libgtest-dev libgmock-dev qt6-base-private-dev fontconfig fonts-liberation umockdev libumockdev-dev
        libvalijson-dev fish zsh python3)
    packages_fleet=(ansible-core parallel jq git python3 python3-yaml systemd)
    packages_fleet_checks=(ansible-lint yamllint git)
    packages_kernel=(qemu-system-x86 busybox-static cpio kmod)
    packages_desktop=(xvfb openbox icewm xdotool x11-utils python3 fontconfig fonts-liberation)
    packages_readers=(python3-pyatspi at-spi2-core dbus dbus-daemon)
    packages_tour=(xvfb xauth fontconfig fonts-liberation)
    packages_window=(fontconfig fonts-liberation)
    packages_package=(dpkg-dev lintian man-db)
    packages_try=(mmdebstrap binutils appstream desktop-file-utils librsvg2-bin)
    packages_checks=(git clang-format clang-tidy shellcheck)
    packages_bench=(python3 git libbenchmark-dev fontconfig fonts-liberation valgrind)
    packages_sanitizers=(libclang-rt-dev llvm-14)
    packages_mutate=(python3-clang-14 ninja-build)
    packages_newer=(clang-16)
    packages_portable=(g++-mingw-w64-x86-64-posix googletest wine wine64)
}

# install_packages PACKAGE...: installs those that are missing; fast when none is.
install_packages() {
    local missing=() package as_root=()
    if ! command -v dpkg-query >/dev/null; then
        echo "Not a Debian system: this has to be there already: $*" >&2
        return 0
    fi
    for package in "$@"; do
        # shellcheck disable=SC2016  # the field is for dpkg-query to fill in
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
            missing+=("$package")
    done
    [[ ${#missing[@]} -gt 0 ]] || return 0

    if [[ $EUID -ne 0 ]]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing: ${missing[*]}" >&2
            echo "Neither root nor sudo is at hand. As root: apt-get install ${missing[*]}" >&2
            return 3
        fi
        as_root=(sudo)
        [[ -t 0 ]] || as_root+=(-n)  # nobody is there to type a password
    fi
    echo "Installing: ${missing[*]}"
    as_root+=(env DEBIAN_FRONTEND=noninteractive)
    if ! { "${as_root[@]}" apt-get update -q &&
        "${as_root[@]}" apt-get install -q -y --no-install-recommends "${missing[@]}"; } </dev/null; then
        echo "apt-get could not install: ${missing[*]}" >&2
        return 3
    fi
}

# run_tests PRESET [CTEST-OPTION...]: the tests of build/PRESET, without a display. More at a time
# than there are processors: those that take long wait for the clock, and count for less
# (tests/CMakeLists.txt).
run_tests() {
    env -u DISPLAY -u WAYLAND_DISPLAY QT_QPA_PLATFORM=offscreen UBSAN_OPTIONS=print_stacktrace=1 \
        ctest --test-dir "build/$1" --output-on-failure --no-tests=error -j $((16 * $(nproc))) \
        "${@:2}"
}

# build_preset PRESET [TARGET...]: configures build/PRESET if that was not done yet (or was done
# for another place), and builds it, or those targets of it.
build_preset() {
    local folder=build/$1 home=
    if [[ -f $folder/CMakeCache.txt ]]; then
        home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt")
    fi
    if [[ $home != "$PWD" ]]; then
        rm -rf "${folder:?}/CMakeCache.txt" "$folder/CMakeFiles" "$folder/build.ninja"
    fi
    # Also when what the presets say has changed since.
    if [[ ! -f $folder/build.ninja || CMakePresets.json -nt $folder/CMakeCache.txt ]]; then
        cmake --preset "$1" && touch "$folder/CMakeCache.txt" || return
    fi
    cmake --build "$folder" ${2:+--target "${@:2}"}
}
