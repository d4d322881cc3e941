#!/usr/bin/env bash
# Drives qzchart from outside through a trader's morning in a real window, up to killing the program and opening it again;
# see drive_morning.py. Leaves a picture of every step in build/morning-steps/.
#   scripts/xvfb_morning.sh [QZCHART]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

chart=${1:-build/dev/app/qzchart}
exec env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb xvfb-run --auto-servernum --server-args='-screen 0 1400x900x24' \
    python3 scripts/drive_morning.py "$chart" build/morning-steps
