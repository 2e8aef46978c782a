#!/usr/bin/env bash
# Writes pictures of every window of the gallery: FOLDER/<language>-<theme>/<window>.png
#
# usage: screenshots.sh GALLERY FOLDER [LANGUAGE...]
set -euo pipefail
gallery=$1 folder=$2
shift 2
languages=("$@")
here=$(dirname "$0")
[ ${#languages[@]} -gt 0 ] || mapfile -t languages < <(basename -s .po "$here"/../resources/catalogs/*.po)

for language in "${languages[@]}"; do
    for theme in light dark; do
        "$here/with_display.sh" "$gallery" --language "$language" --theme "$theme" \
            --screenshots "$folder/$language-$theme" >/dev/null
    done
done
echo "$(find "$folder" -name '*.png' | wc -l) pictures are in $folder/"
