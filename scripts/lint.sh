#!/usr/bin/env bash
# What is wrong with the sources that no compiler says: their format, words, scripts, layers, the public headers'
# independence of each other, and what they and the documents leave unsaid. Changes nothing but build/docs.
#
#   scripts/lint.sh          all files; the headers need a build folder (cmake --preset release)
#   scripts/lint.sh --quick  without compiling: for a hook before each commit
#   scripts/lint.sh --tidy   clang-tidy alone, over every source of the library; needs a build by clang (cmake --preset
#                            fuzz), and some minutes
set -uo pipefail
cd "$(dirname "$0")/.." || exit

quick=false tidy=false
case "${1:-}" in
    "") ;;
    --quick) quick=true ;;
    --tidy) tidy=true ;;
    *) sed -n '2,9s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac

failed=()
check() { # name, command...
    local name=$1
    shift
    local said
    if ! said=$("$@" 2>&1); then
        printf '== %s\n%s\n' "$name" "$said"
        failed+=("$name")
    fi
}

if $tidy; then
    printf '%s\0' commondlg3/src/*/*.cpp | xargs -0 -P 2 -n 4 clang-tidy -p build-fuzz --quiet 2>/dev/null
    exit
fi

mapfile -t sources < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.h')
mapfile -t scripts < <(git ls-files --cached --others --exclude-standard '*.sh' .ci/run)
mapfile -t programs < <(git ls-files --cached --others --exclude-standard '*.py')

wide_comments() { ! LC_ALL=C.UTF-8 grep -nE '^ *//.{110,}' "${sources[@]}"; }
long_files() { ! wc -l "${sources[@]}" "${programs[@]}" | awk '$2 != "total" && $1 > 520 { print $2 ": " $1 " lines" }' | grep .; }

check "format" clang-format --dry-run -Werror "${sources[@]}"
check "width of comments" wide_comments
check "length of files" long_files
check "spelling" codespell
check "shell" shellcheck "${scripts[@]}"
check "python" pyflakes3 "${programs[@]}"
check "layers" python3 -B scripts/check_layers.py .
check "includes" python3 -B scripts/check_includes.py platform commondlg3 gallery tests benchmarks fuzz

# Each header in a unit of its own, and all of them behind and in front of the headers that hosts bring along.
headers_stand_alone() {
    local flags folder
    flags=$(python3 -B scripts/compile_flags.py build commondlg3) || return 1
    folder=$(mktemp -d)
    local theirs='#include <boost/smart_ptr/intrusive_ptr.hpp>\n#include <wx/wx.h>\n'
    local ours=''
    for header in commondlg3/include/commondlg3/*.h; do
        local name=${header#commondlg3/include/}
        printf '#include <%s>\n' "$name" >"$folder/$(basename "$name").cpp"
        ours+="#include <$name>\n"
    done
    # shellcheck disable=SC2059 # the line ends are meant
    printf "$theirs$ours" >"$folder/behind.cpp"
    # shellcheck disable=SC2059
    printf "$ours$theirs" >"$folder/before.cpp"
    # shellcheck disable=SC2086 # flags are words
    find "$folder" -name '*.cpp' -print0 | xargs -0 -P 2 -n 1 g++ $flags -fsyntax-only
    local code=$?
    rm -rf "$folder"
    return $code
}

$quick || check "headers stand alone" headers_stand_alone
$quick || check "documents" scripts/docs.sh
$quick || check "what is needed of the platform" python3 -B scripts/platform_surface.py --exact . \
    build/commondlg3/libcommondlg3.so docs/platform.md

if [ ${#failed[@]} -gt 0 ]; then
    printf '%d of the checks failed: %s\n' ${#failed[@]} "${failed[*]}"
    exit 1
fi
echo "Nothing found"
