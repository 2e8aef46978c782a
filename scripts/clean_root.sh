#!/usr/bin/env bash
# Runs a command in a Debian that was made for it and goes with it: nothing is installed there but what makes a Debian.
#
#   clean_root.sh SUITE FOLDER COMMAND...
#
# The command runs as root in a copy of FOLDER, /given. Packages come from where this machine gets its own.
# ROOT: a folder that is made if it is not there, and kept.
set -euo pipefail
[ $# -ge 3 ] || { sed -n '2,7s/^# \{0,1\}//p' "$0" >&2; exit 2; }
suite=$1 folder=$2
shift 2

if [ -n "${ROOT:-}" ]; then
    root=$ROOT
else
    root=$(mktemp -d /tmp/clean-root.XXXXXX)
    trap 'rm -rf --one-file-system "$root"' EXIT
fi

if [ ! -e "$root/etc/debian_version" ]; then
    # The sources of this machine, about that suite; what its packages are reached by; no cache of what was fetched.
    sources=$(mktemp)
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.sources 2>/dev/null >"$sources" || true
    # shellcheck disable=SC1091 # the machine's own
    own=$(. /etc/os-release && echo "$VERSION_CODENAME")
    sed -i "s/\b$own\b/$suite/g" "$sources"
    # That one has no updates, and comes from one place.
    [ "$suite" != sid ] || sed -i -e 's/ sid-[a-z]*//g' -e '/^$/,$d' "$sources"
    options=()
    for file in /etc/apt/apt.conf.d/*; do
        grep -q "^Acquire" "$file" && options+=("--aptopt=$file")
    done
    mmdebstrap --variant=apt --quiet "${options[@]}" "$suite" "$root" "$sources"
    rm "$sources"
    rm -f "$root"/etc/apt/apt.conf.d/*docker*
fi
rm -rf "$root/given"
cp -r "$folder" "$root/given"

# The mounts end with the shell that made them.
# shellcheck disable=SC2016 # for the inner shell
exec_in_root='mount -t proc proc "$0/proc"; mount --rbind /dev "$0/dev"; mount -t tmpfs tmpfs "$0/tmp"; root=$0
    exec chroot "$root" /usr/bin/env -i HOME=/root PATH=/usr/sbin:/usr/bin:/sbin:/bin LANG=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive sh -c "cd /given && exec \"\$@\"" sh "$@"'
unshare --mount --propagation private bash -c "$exec_in_root" "$root" "$@"
