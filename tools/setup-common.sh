# shellcheck shell=bash
# Shared by the set-up scripts: installs the Debian 12 packages that are
# missing, then configures a Release build in build/. Sourced, not run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build
packages=(
    cmake g++ make pkg-config
    qt6-base-dev libqt6svg6   # widgets; SVG for the icon theme's symbolic icons
    libgtest-dev libbenchmark-dev
    libexpat1-dev             # the desktop host's XML reader
    libzip-dev                # the desktop host's resource packages (zip files)
    xvfb xauth                # a virtual display where there is no screen
    fonts-dejavu-core adwaita-icon-theme
    python3-pyftpdlib         # a real FTP server on loopback for the FTP console's tests
    libxcb1-dev               # the command asks the X server before Qt would abort
    locales                   # a Latin-1 locale for the command's argument decoding test
    clang libclang-rt-14-dev  # the fuzz targets: libFuzzer comes with clang's runtime
    libsmbclient-dev libavahi-client-dev  # SMB shares and DNS-SD host discovery
    samba smbclient           # a real SMB server on loopback for the network tests
    libcurl4-openssl-dev      # the desktop host's FTP synchronisation
    rsync lftp                # reference tools the synchronisation benchmark measures against
)

say() { printf '\n== %s\n' "$*"; }

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        # Without a terminal nobody can type a password: fail instead of waiting.
        if [ -t 0 ]; then sudo "$@"; else sudo -n "$@"; fi
    else
        echo "setup: run this as root, or install sudo" >&2
        return 1
    fi
}

install_missing() {
    local missing=() package
    for package in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' ||
            missing+=("$package")
    done
    if [ ${#missing[@]} -eq 0 ]; then
        say "All packages are installed"
        return
    fi
    say "Installing ${missing[*]}"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends \
        "${missing[@]}"
}

# The command's tests read arguments in a Latin-1 locale; without it that row is skipped.
latin1_locale() {
    locale -a 2>/dev/null | grep -qx 'de_DE.iso88591' && return
    say "Generating the de_DE.ISO-8859-1 locale"
    as_root localedef -i de_DE -f ISO-8859-1 de_DE.ISO-8859-1
}

# ccache, where a developer installed it, makes rebuilds of the three trees cheap.
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi

configure() {
    say "Configuring $build (Release)"
    cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release "${launcher[@]}" >/dev/null
}

build_jobs() { nproc 2>/dev/null || echo 2; }
