#!/usr/bin/env bash
# Makes the documents as a site, to be read from the file system or a server. Needs neither a display nor a network, says
# nothing when all is well, and makes the same files of the same sources. Fails at whatever Doxygen warns of, but for public
# names that need no words (check_documented.py).
#
# usage: docs.sh [FOLDER]     FOLDER: of the pages (build/docs/html)
set -euo pipefail
folder=$(realpath -m "${1:-"$(dirname "$0")/../build/docs/html"}")
cd "$(dirname "$0")/.."
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
made=$(mktemp -d)
trap 'rm -rf "$made"' EXIT

{
    cat docs/site/Doxyfile
    printf '%s = "%s"\n' PROJECT_NUMBER "$version" OUTPUT_DIRECTORY "$made" WARN_LOGFILE "$made/warnings.txt"
} | LC_ALL=C.UTF-8 doxygen -
python3 -B scripts/check_documented.py "$made/warnings.txt"

# Doxygen takes a picture that is not there for one elsewhere, and does not copy it.
if missing=$(grep -o 'src="pictures/[^"]*"' "$made"/html/*.html | sed 's|.*/html/||'); then
    printf 'A picture is not there: %s\n' "$missing" >&2
    exit 1
fi

# What is found is shown in pages of their own, which know nothing of the site's look.
cat docs/site/style.css >>"$made/html/search/search.css"
# A folder that was there before keeps nothing of an older site; what holds something else is left alone.
if [ -e "$folder/doxygen.css" ]; then
    rm -rf "$folder"
elif [ -e "$folder" ]; then
    rmdir "$folder"
fi
mkdir -p "$(dirname "$folder")"
mv "$made/html" "$folder"
chmod -R u+rwX,go+rX "$folder"
