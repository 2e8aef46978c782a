#!/usr/bin/env bash
# Lets the monkey loose on a display of its own, and for root as a user who may write nowhere: what is clicked at random
# in a chooser of files can also rename and delete them.
#
# usage: monkey.sh GALLERY [OPTION...]     options: see tests/torture/monkey.py
set -euo pipefail
here=$(dirname "$0")
harmless=()
[ "$(id -u)" -ne 0 ] || harmless=(setpriv --reuid=65534 --regid=65534 --clear-groups)
exec "${harmless[@]}" "$here/with_display.sh" /usr/bin/python3 -B "$here/../tests/torture/monkey.py" "$@"
