#!/usr/bin/env bash
# Builds the Debian packages of this tree, as it is committed, into build-packages/, and looks at them.
#
#   package.sh                builds; lintian finds nothing; the border is that of the last version, or wider
#   package.sh --install      also installs them into a clean Debian, runs what a newcomer runs, removes them again
#   package.sh --reproduce    also builds once more, in another folder at another time: the same bytes
#   package.sh --release      keeps the border as that of the version in CHANGELOG.md, and the names in the symbols file
#
# SUITE: the Debian of the clean root (bookworm)
set -euo pipefail
cd "$(dirname "$0")/.."
tree=$PWD
out=$tree/build-packages

install=false reproduce=false release=false
for option in "$@"; do
    case $option in
        --install) install=true ;;
        --reproduce) reproduce=true ;;
        --release) release=true ;;
        *) sed -n '2,9s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
    esac
done

scripts/setup.sh packages

version=$(sed -n 's/^project(commondlg3 VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
packaged=$(sed -n '1s/^commondlg3 (\(.*\)).*/\1/p' packaging/debian/changelog)
if [ "$version" != "$packaged" ]; then
    echo "packaging/debian/changelog is about $packaged, and the tree about $version" >&2
    exit 1
fi

# Nothing that lies about in the tree gets into a package.
build() { # folder
    rm -rf "$1"
    mkdir -p "$1/commondlg3-$version"
    git archive "$revision" | tar -x -C "$1/commondlg3-$version"
    cp -r "$1/commondlg3-$version/packaging/debian" "$1/commondlg3-$version/debian"
    # Compiled a second time, what is the same would come out of a cache, and would be no proof. And a cache has its own
    # way to write the paths of what it compiled.
    (cd "$1/commondlg3-$version" && DEB_BUILD_OPTIONS="parallel=$(nproc)" CCACHE=${2:-OFF} \
        dpkg-buildpackage --build=binary --no-sign >"$1/build.log" 2>&1) ||
        { tail -n 60 "$1/build.log" >&2; exit 1; }
}

revision=$(git rev-parse HEAD)
echo "Building packages of $revision"
$release && export NEW_BORDER=1
cache=OFF
$reproduce || cache=$(command -v ccache || echo OFF)
build "$out" "$cache"
built=$out/commondlg3-$version
ls "$out"/*.deb

if $release; then
    scripts/border.py --write "$built"
    scripts/border.py --names "$built/debian/libcommondlg3-3" packaging/debian/libcommondlg3-3.symbols "$version"
    echo "Review, and commit: packaging/border packaging/debian/libcommondlg3-3.symbols"
    exit 0
fi

echo "What desktops show"
desktop-file-validate packaging/desktop/*.desktop
appstreamcli validate --no-net packaging/desktop/*.metainfo.xml

echo "lintian"
lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$out"/commondlg3_*.changes

echo "The border"
scripts/border.py "$built"

if $reproduce; then
    echo "Once more, elsewhere and later"
    again=$(mktemp -d)/another-folder
    build "$again"
    differs=false
    for package in "$out"/*.deb; do
        cmp "$package" "$again/${package##*/}" || differs=true
    done
    ! $differs || { echo "Look with: diffoscope $out $again" >&2; exit 1; }
    rm -rf "${again%/*}"
    echo "The same bytes"
fi

if $install; then
    echo "In a clean Debian"
    given=$(mktemp -d)
    cp -r "$out"/*.deb tests/client/project tests/client/in_clean_root.sh "$given"
    rm "$given"/*-dbgsym_*
    scripts/clean_root.sh "${SUITE:-bookworm}" "$given" ./in_clean_root.sh
    rm -rf "$given"
fi
