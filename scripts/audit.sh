#!/usr/bin/env bash
# Looks at every window of the gallery for what a machine can see to be wrong with it: on two screens, at several text
# scales, in every language, made-up ones too. Prints what it finds, and fails when that is anything at all.
#
# usage: audit.sh GALLERY [LANGUAGE THEME SCALE SCREEN [PIXELS]]   PIXELS: of the screen to one of windows (1)
set -euo pipefail
gallery=$1
shift

if [ $# -ge 4 ]; then
    config=$(mktemp -d)
    trap 'rm -rf "$config"' EXIT
    # Dark is how somebody sees it who has used it: what was chosen, and agreed to, shows more controls.
    [ "$2" = light ] || sed 's|"consent">2<|"consent">1<|' "$(dirname "$0")/../tests/old_versions/3.0.0/preferences.xml" >"$config/preferences.xml"
    for _ in 1 2 3; do # on a busy machine a window may be given the focus too late
        said=$(SCREEN_SIZE=$4 "$(dirname "$0")/with_display.sh" env GDK_DPI_SCALE="$3" GDK_SCALE="${5:-1}" \
            "$gallery" --audit --config-dir "$config" --language "$1" --theme "$2" 2>&1) && code=0 || code=$?
        [[ $said == *"Tab was not tried"* ]] || break
    done
    complaints=$(grep -E '"event":"finding"|WARNING|CRITICAL' <<<"$said" || true)
    [ -z "$complaints" ] || printf '== %s\n%s\n' "$*" "$complaints"
    [ "$code" -eq 0 ] && [ -z "$complaints" ] && exit
    printf '== %s: exit code %d\n' "$*" "$code"
    [ -n "$complaints" ] || tail -n 5 <<<"$said"
    exit 1
fi

mapfile -t spoken < <(basename -s .po "$(dirname "$0")"/../resources/catalogs/*.po)
all=("${spoken[@]}" en_XA ar_XB)
{
    printf '%s light 1 1280x1024\n' "${all[@]}"
    printf '%s dark 1.5 1280x1024\n' "${all[@]}"
    printf '%s light 1.25 800x600\n' "${all[@]}"
    printf '%s dark 2 1280x1024\n' "${spoken[@]}"
    printf '%s light 2 800x600\n' "${all[@]}"
    printf '%s light 1 1280x1024 2\n' "${spoken[@]}"
} | xargs -P 2 -L 1 "$0" "$gallery"
echo "Nothing found"
