# shellcheck shell=bash
# Functions shared by run.sh, test.sh, .ci/run and other scripts: installing packages, configuring and building. To be
# sourced; the caller sets `root` to the project's folder.
# shellcheck disable=SC2034,SC2154  # the caller uses the lists and sets root

build_packages=(
    cmake ninja-build g++
    qt6-base-dev libsdl1.2-dev libgl-dev libopengl-dev libglu1-mesa-dev libgl1-mesa-dri
    libx11-dev libxcb1-dev libxi-dev libice-dev libfontconfig-dev
    qt6-l10n-tools qt6-translations-l10n
    fonts-liberation
)
screen_packages=(xvfb openbox xdotool wmctrl x11-utils x11-session-utils x11-xserver-utils xclip imagemagick procps)
# Additional packages for building kytconvert; the editor does not need them.
converter_packages=(
    librdkit-dev libboost-dev libboost-serialization-dev libboost-iostreams-dev zlib1g-dev libinchi-dev qt6-svg-dev
)
# Other programs that read in tests what kytconvert writes; nothing needs them to be built or run.
judge_packages=(python3-rdkit openbabel)
# Packages for creating and checking the Debian package, and for checking metadata, icons and scripts.
packaging_packages=(
    dpkg-dev fakeroot file lintian
    desktop-file-utils appstream libxml2-utils shared-mime-info man-db groff-base bsdextrautils librsvg2-bin shellcheck
    tumbler dbus libglib2.0-bin imagemagick
)
fuzz_packages=(clang libclang-rt-dev llvm)

say() {
    printf '%s\n' "$*"
}

# fail MESSAGE: prints an error message and ends the script.
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# missing_packages PACKAGE...: prints the packages that are neither installed nor provided by an installed package.
missing_packages() {
    dpkg-query --show --showformat='${db:Status-Status}\t${Package}, ${Provides}\n' |
        awk -v wanted="$*" -F '\t' '
            $1 == "installed" {
                gsub(/ *\([^)]*\)/, "", $2)
                count = split($2, names, /, */)
                for (i = 1; i <= count; i++)
                    have[names[i]] = 1
            }
            END {
                count = split(wanted, names, " ")
                for (i = 1; i <= count; i++)
                    if (!(names[i] in have))
                        print names[i]
            }'
}

# install_missing PACKAGE...: installs missing packages with apt-get; does nothing if there are none.
install_missing() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        fail "apt-get not found: install the packages listed in scripts/setup.sh and build with CMake"
    fi
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -eq 0 ] && return

    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail "missing packages (root or sudo required to install them): ${missing[*]}"
        as_root=(sudo)
        sudo true || fail "missing packages (sudo failed): ${missing[*]}"
    fi

    say "Installing ${missing[*]}"
    local log=$root/build/packages.log
    mkdir -p "$root/build"
    local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=600)
    # If the update fails, the old package lists may still suffice.
    "${apt[@]}" update </dev/null >"$log" 2>&1 || true
    if ! "${apt[@]}" install --no-install-recommends "${missing[@]}" </dev/null >>"$log" 2>&1; then
        tail -n 15 "$log" >&2
        fail "apt-get failed: see build/packages.log"
    fi
}

# build PRESET TARGET [CMAKE_ARGUMENT...]: configures the preset and builds the target.
build() {
    local preset=$1 target=$2
    shift 2
    local launcher=
    command -v ccache >/dev/null && launcher=ccache
    cd "$root" || fail "cannot open folder $root"

    local log=build/configure-$preset.log
    mkdir -p build
    if ! cmake --preset "$preset" -DCMAKE_CXX_COMPILER_LAUNCHER="$launcher" "$@" >"$log" 2>&1; then
        tail -n 25 "$log" >&2
        fail "configuring failed: see $log"
    fi
    cmake --build --preset "$preset" --target "$target" --parallel "${KYTSTUDIO_JOBS:-$(nproc)}" ||
        fail "build failed"
}
