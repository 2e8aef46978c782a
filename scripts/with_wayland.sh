#!/usr/bin/env bash
# Runs a command as with_display.sh does, but its windows are those of a Wayland compositor, which shows its screen, and
# takes keys and mouse, in a window of that display.
#
# usage: with_wayland.sh COMMAND [ARGUMENT...]
#
# WAYLAND_SHELL: a shell of weston's; kiosk-shell.so shows each window as large as the screen
set -euo pipefail

if [ -z "${IN_DISPLAY_FOR_WAYLAND:-}" ]; then
    IN_DISPLAY_FOR_WAYLAND=1 SCREEN_SIZE=1300x1100 exec "$(dirname "$0")/with_display.sh" "$0" "$@"
fi

weston --backend=x11-backend.so --socket=wayland-1 --width=1280 --height=1024 --idle-time=0 --no-config \
    --shell="${WAYLAND_SHELL:-desktop-shell.so}" \
    >"$HOME/weston.log" 2>&1 &
compositor=$!
trap 'kill "$compositor" 2>/dev/null || true' EXIT
for _ in $(seq 100); do
    [ -S "$XDG_RUNTIME_DIR/wayland-1" ] && xdotool search --class weston >/dev/null 2>&1 && break
    sleep 0.05
done
export WAYLAND_DISPLAY=wayland-1 GDK_BACKEND=wayland
"$@"
