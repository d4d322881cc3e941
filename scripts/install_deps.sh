#!/usr/bin/env bash
# Installs the Debian 12 packages that the named groups need and that are missing:
#   scripts/install_deps.sh [run] [test]     (run alone when no group is named)
# Asks nothing. When nothing is missing it ends at once and needs neither the network nor any privilege.
set -euo pipefail

run_packages=(
    g++ cmake ninja-build ccache pkg-config
    qt6-base-dev      # Core, Gui, Widgets, PrintSupport, and with them the platform plugin for X
    qt6-svg-dev
    qt6-tools-dev libqt6opengl6-dev # UiTools, which asks for OpenGL
    libqcustomplot-dev libqcustomplot2.1-qt6
    libsqlitecpp-dev
    libplist-dev libplist++-dev
    fonts-dejavu-core # has the arrows of the marks
    fonts-wqy-microhei
)
test_packages=(
    libgtest-dev libbenchmark-dev
    qt6-charts-dev # an example
    dpkg-dev file  # packages
    doxygen
    clang clang-14 clang-format-14 clang-tidy-14
    python3 xvfb xauth openbox xdotool imagemagick
)
# A Wayland session without X needs Qt's plugin for it; most sessions serve X as well.
if [[ -n ${WAYLAND_DISPLAY:-} && -z ${DISPLAY:-} ]]; then
    run_packages+=(qt6-wayland)
fi

fail() {
    printf 'install_deps: %s\n' "$@" >&2
    exit 1
}

wanted=()
[[ $# -gt 0 ]] || set -- run
for group in "$@"; do
    case $group in
    run) wanted+=("${run_packages[@]}") ;;
    test) wanted+=("${test_packages[@]}") ;;
    *) fail "unknown group '$group'; the groups are: run test" ;;
    esac
done

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    printf 'install_deps: no apt here; what this system calls these Debian 12 packages has to be installed by hand:\n' >&2
    printf '  %s\n' "${wanted[*]}" >&2
    exit 0
fi

# dpkg-query fails as soon as one package is unknown to it; the lines of the others are complete all the same.
declare -A installed=()
while read -r package status; do
    if [[ $status == installed ]]; then
        installed[$package]=yes
    fi
done < <(dpkg-query --show --showformat='${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)

missing=()
for package in "${wanted[@]}"; do
    [[ -n ${installed[$package]:-} ]] || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

by_hand="apt-get install --no-install-recommends ${missing[*]}"
as_root=()
if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null || fail "missing packages, and neither root nor sudo to install them. As root:" "  $by_hand"
    as_root=(sudo)
fi

apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@"
}

printf 'install_deps: installing %s\n' "${missing[*]}" >&2
# Lists that could not be refreshed may still know the packages: only the installation decides.
apt update -q >&2 || printf 'install_deps: apt-get update failed; trying with the package lists there are\n' >&2
apt install -q -y --no-install-recommends "${missing[@]}" >&2 ||
    fail "apt could not install the packages (Debian 12 and its package archive are needed). By hand:" "  $by_hand"
