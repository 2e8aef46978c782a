#!/usr/bin/env bash
# Runs a command on a display of its own: Xvfb, a window manager, a session bus, and private folders for whatever it
# would write to the user's home. Everything that is started here ends with the command.
#
# usage: with_display.sh COMMAND [ARGUMENT...]
#
# SCREEN_SIZE: in pixels (1280x1024)
# KEYS_REPEAT: "no" for tests of which a busy machine may hold a key for longer than a user would
set -euo pipefail

home=$(mktemp -d)
started=()
cleanup() {
    for pid in "${started[@]}"; do kill "$pid" 2>/dev/null || true; done
    rm -rf "$home"
}
trap cleanup EXIT

mkdir -p "$home"/{config,data/applications,cache,run}
# Of the editors that a machine has, the tests know one: others are hidden, whatever somebody has installed.
{ grep -lE "^MimeType=.*text/x-(csrc|c\+\+src)" /usr/share/applications/*.desktop 2>/dev/null || true; } | grep -v geany |
    while read -r entry; do
        printf '[Desktop Entry]\nHidden=true\n' >"$home/data/applications/${entry##*/}"
    done || true
chmod 700 "$home/run"
export HOME="$home" XDG_CONFIG_HOME="$home/config" XDG_DATA_HOME="$home/data" XDG_CACHE_HOME="$home/cache" \
    XDG_RUNTIME_DIR="$home/run"
export LANG=C.UTF-8 LC_ALL=C.UTF-8 GTK_OVERLAY_SCROLLING=0 GDK_BACKEND=x11 GSETTINGS_BACKEND=memory
unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS LANGUAGE

repeat=()
[ "${KEYS_REPEAT:-}" != no ] || repeat=(-r)
# A number of our own: of servers that look for a free one at the same moment, two may settle on the same.
# And not begun anew when its first client goes while the second is coming, which would then be thrown out.
exec {fd}<> <(:)
Xvfb ":$((100 + $$ % 50000))" -displayfd "$fd" -screen 0 "${SCREEN_SIZE:-1280x1024}x24" -noreset -nolisten tcp \
    "${repeat[@]}" >"$home/xvfb" 2>&1 &
started+=($!)
read -r -t 60 number <&"$fd" || { echo "with_display.sh: no display" >&2; cat "$home/xvfb" >&2; exit 1; }
exec {fd}>&-
export DISPLAY=":$number"

bus=$(dbus-daemon --session --fork --print-address=1 --print-pid=1)
export DBUS_SESSION_BUS_ADDRESS="${bus%%$'\n'*}"
started+=("${bus##*$'\n'}")

openbox >/dev/null 2>&1 &
started+=($!)
for attempt in $(seq 600); do
    xdotool get_num_desktops >/dev/null 2>&1 && break
    [ "$attempt" -lt 600 ] || { echo "with_display.sh: no window manager" >&2; exit 1; }
    sleep 0.05
done

"$@"
