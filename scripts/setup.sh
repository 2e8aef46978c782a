#!/usr/bin/env bash
# Installs from Debian's packages whatever building, testing and looking at the product needs and this machine lacks;
# with the word "packages", also what making packages of it needs.
set -euo pipefail

packages=(
    # building
    g++ cmake ninja-build ccache pkg-config python3 gettext
    libwxgtk3.2-dev libgtk-3-dev libboost-dev libboost-locale-dev libboost-thread-dev libboost-regex-dev
    liblog4cplus-dev libexpat1-dev libicu-dev nlohmann-json3-dev
    # tests, benchmarks, fuzzers
    libgtest-dev libbenchmark-dev geany clang libclang-rt-dev llvm
    # linters
    clang-format clang-tidy shellcheck codespell pyflakes3
    # documents
    doxygen
    # a desktop without a screen: display, window manager, keyboard, pictures, accessibility
    xvfb xauth openbox xsettingsd weston xdotool python3-xlib xclip imagemagick dbus-x11
    at-spi2-core libatk-adaptor python3-pyatspi gir1.2-atspi-2.0 orca locales
    # what windows need to look right, in every language that is shipped
    adwaita-icon-theme gsettings-desktop-schemas librsvg2-common shared-mime-info
    fonts-dejavu-core fonts-noto-core fonts-vlgothic
)
if [ "${1:-}" = packages ]; then
    packages+=(debhelper dpkg-dev lintian abigail-tools mmdebstrap appstream desktop-file-utils)
fi

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "These packages are missing; run this as root, or install them: ${missing[*]}" >&2
    exit 1
fi
echo "Installing ${#missing[@]} packages: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -q
apt-get install -q -y --no-install-recommends "${missing[@]}"
