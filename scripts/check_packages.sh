#!/usr/bin/env bash
# Makes the Debian packages of the release build, unpacks them into an empty folder, and uses what is there: starts
# qzchart without a screen and builds a host.
#   scripts/check_packages.sh
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
packages=build/release/packages
unpacked=$packages/unpacked

rm -rf "$packages"
cpack --preset release
shopt -s failglob
for package in "$packages"/*.deb; do
    printf -- '-- %s: %s\n' "$(basename -- "$package")" "$(dpkg-deb --field "$package" Depends)"
    dpkg-deb --extract "$package" "$unpacked"
done
dpkg-deb --field "$packages"/qzchart_*.deb Depends | grep -q 'libqzlinepainttoolfactory1 .*libqt6widgets6'

HOME=$(readlink -f "$unpacked") QT_QPA_PLATFORM=offscreen "$unpacked/usr/bin/qzchart" --demo "$packages/qzchart.png"
scripts/use_installed.sh "$unpacked/usr" "$packages/host"
