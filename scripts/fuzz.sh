#!/usr/bin/env bash
# Runs the fuzzers one after the other, each until its time is over or something was found; what was found is kept in
# build-fuzz/. Needs a display: see with_display.sh.
#
# usage: fuzz.sh SECONDS [NAME...]
#
# FUZZ_KEEP: a folder for what is worth going on from, which the next run finds there (none)
# FUZZ_FLAGS: further options of each, as "-runs=1000 -print_final_stats=1"
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=$1
shift
names=("$@")
[ $# -gt 0 ] || mapfile -t names < <(ls fuzz/corpus)

# An input may take 10 ms and 64 MB. Sanitizers take twenty times as long at the least, on a busy machine ten times that;
# a single piece of memory is as large as without them, of all together they keep what was freed.
limits=(-timeout=2 -malloc_limit_mb=64 -rss_limit_mb=1024)
export ASAN_OPTIONS="${ASAN_OPTIONS:-malloc_context_size=3}:quarantine_size_mb=64"
export LSAN_OPTIONS="${LSAN_OPTIONS:-suppressions=$PWD/tests/leaks.supp:print_suppressions=0}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1}"
# shellcheck disable=SC2206 # several options
flags=(${FUZZ_FLAGS:-})

scratch=$(mktemp -d -p /dev/shm)
trap 'rm -rf "$scratch"' EXIT
export TMPDIR=$scratch
for name in "${names[@]}"; do
    echo "fuzz_$name for $seconds s"
    kept=${FUZZ_KEEP:-$scratch}/$name
    mkdir -p "$kept"
    "build-fuzz/fuzz/fuzz_$name" -max_total_time="$seconds" "${limits[@]}" -verbosity=0 -dict=fuzz/markup.dict \
        -artifact_prefix="build-fuzz/" "${flags[@]}" "$kept" "fuzz/corpus/$name"
done
