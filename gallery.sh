#!/usr/bin/env bash
# Installs what is missing, builds, and starts the gallery with the arguments given. Without a display it runs the
# gallery on one of its own; without arguments either it writes the pictures of every window, in both themes and every
# language, to a folder.
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh
cmake --preset release >/dev/null
cmake --build --preset release --target commondlg3_gallery

gallery=build/gallery/commondlg3_gallery
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$gallery" "$@"
fi
if [ $# -gt 0 ]; then
    exec scripts/with_display.sh "$gallery" "$@"
fi
scripts/screenshots.sh "$gallery" screenshots
