#!/usr/bin/env bash
# Drives qzchart from outside in a real window: arms, draws in both panes, restyles, moves a divider, hides, shows and
# deletes all. Leaves a picture of every step in build/panel-steps/.
#   scripts/xvfb_panels.sh [QZCHART]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

chart=${1:-build/dev/app/qzchart}
exec env -u WAYLAND_DISPLAY QT_QPA_PLATFORM=xcb xvfb-run --auto-servernum --server-args='-screen 0 1400x900x24' \
    python3 scripts/drive_panels.py "$chart" build/panel-steps
