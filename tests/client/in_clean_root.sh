#!/bin/sh
# Runs in a Debian that was made for it: installs the packages that lie beside it, does what a newcomer does with them,
# removes them, and finds nothing of them left.
set -eu
step() { printf '  %s (%s s)\n' "$1" "$(($(date +%s) - begun))"; }
begun=$(date +%s)
quietly() { "$@" >/tmp/said 2>&1 || { cat /tmp/said; echo "failed: $*"; exit 1; }; }

quietly apt-get update
# What they stand on comes first and stays: what is left afterwards is theirs.
needed=$(for package in *.deb; do dpkg-deb --field "$package" Depends; done |
    tr ',' '\n' | grep -v -e commondlg3 -e '^ *$' | sort -u | paste -sd,)
quietly apt-get satisfy -y --no-install-recommends "$needed"
quietly apt-get install -y --no-install-recommends g++ cmake make pkg-config xvfb xauth xdotool fonts-dejavu-core \
    adwaita-icon-theme openbox
every_file() {
    find / -xdev \( -path /proc -o -path /dev -o -path /tmp -o -path /given -o -path /root -o -path /var/cache \
        -o -path /var/log -o -path /var/lib/apt -o -path /var/lib/dpkg -o -path /run \) -prune -o -print | sort
}
every_file >/tmp/before
quietly apt-get install -y ./*.deb
step "installed"

quietly xvfb-run -a commondlg3_gallery --language de --screenshots /tmp/pictures
pictures=$(find /tmp/pictures -name '*.png' | wc -l)
step "$pictures pictures of the gallery"
[ "$pictures" -ge 20 ]

quietly cmake -S project -B /tmp/client
quietly cmake --build /tmp/client
[ "$(LANGUAGE=de /tmp/client/client | head -n 1)" = '&OK' ]
for package in commondlg3 commondlg3-messages; do
    case $package in
        commondlg3) parts="messages log pages" define="" ;;
        *) parts=messages define=-DMESSAGES_ALONE ;;
    esac
    # shellcheck disable=SC2046,SC2086 # words are wanted
    quietly g++ -std=c++17 $define -DDATA_DIR="\"$(pkg-config --variable=datadir $package)\"" \
        -DLOCALE_DIR="\"$(pkg-config --variable=localedir $package)\"" $(pkg-config --cflags $package) \
        project/client.cpp $(printf 'project/interface_%s.cpp ' $parts) -o "/tmp/$package" $(pkg-config --libs $package)
    [ "$("/tmp/$package" | head -n 1)" = '&OK' ]
done
step "clients built by CMake and pkg-config"

cp -r /usr/share/doc/libcommondlg3-dev/examples/starter /tmp/starter
quietly cmake -S /tmp/starter -B /tmp/starter/build
quietly cmake --build /tmp/starter/build
# shellcheck disable=SC2016 # for the inner shell
quietly timeout 60 xvfb-run -a sh -c 'openbox & /tmp/starter/build/starter & program=$!
    window=$(xdotool search --sync --onlyvisible --pid $program | head -n 1)
    # A key is lost while the window manager takes the window over.
    while kill -0 $program 2>/dev/null; do
        xdotool windowactivate --sync "$window" key alt+F4
        timeout 2 tail --pid=$program -f /dev/null
    done
    wait $program'
if grep ERROR /tmp/said; then exit 1; fi
step "the starter built, opened and closed"

[ -s /usr/share/doc/commondlg3/html/index.html ]
# shellcheck disable=SC2046 # words are wanted
quietly apt-get purge -y $(for package in *.deb; do dpkg-deb --field "$package" Package; done)
every_file >/tmp/after
if ! diff /tmp/before /tmp/after; then
    echo "the packages left something behind, or took something away"
    exit 1
fi
step "removed without a trace"
