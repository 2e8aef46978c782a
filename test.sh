#!/usr/bin/env bash
# Installs what is missing, builds, and runs all tests: as released, under AddressSanitizer and
# UndefinedBehaviorSanitizer, the thread tests under ThreadSanitizer, and each fuzzer for a short while.
#
# FUZZ_SECONDS: how long each fuzzer runs (20; 0 leaves them out)
set -euo pipefail
cd "$(dirname "$0")"

scripts/setup.sh

step() { printf '\n== %s (%s)\n' "$1" "$(date +%H:%M:%S)"; }

build() {
    cmake --preset "$1" >/dev/null
    cmake --build "$2"
}

# A short stack: further down every stack passes through the event loop, and its suppressions would match ours too.
export ASAN_OPTIONS=detect_leaks=1:malloc_context_size=3
export LSAN_OPTIONS="suppressions=$PWD/tests/leaks.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS="suppressions=$PWD/tests/threads.supp:halt_on_error=1:report_mutex_bugs=0"

step "Building as released"
build release build
step "Tests as released"
scripts/with_display.sh ctest --test-dir build --output-on-failure --timeout 300 -j2

step "Building under AddressSanitizer and UndefinedBehaviorSanitizer"
build asan build-asan
step "Tests under AddressSanitizer and UndefinedBehaviorSanitizer"
scripts/with_display.sh ctest --test-dir build-asan --output-on-failure --timeout 600 -j2 -LE installs

step "Building under ThreadSanitizer"
build tsan build-tsan
step "Thread tests under ThreadSanitizer"
scripts/with_display.sh ctest --test-dir build-tsan --output-on-failure --timeout 600 -R Threads

fuzz_seconds=${FUZZ_SECONDS:-20}
if [ "$fuzz_seconds" -gt 0 ]; then
    step "Building the fuzzers"
    cmake --preset fuzz >/dev/null
    cmake --build build-fuzz --target fuzzers
    for corpus in fuzz/corpus/*; do
        fuzzer=build-fuzz/fuzz/fuzz_$(basename "$corpus")
        step "$(basename "$fuzzer") for $fuzz_seconds s"
        new_inputs=$(mktemp -d)
        "$fuzzer" -max_total_time="$fuzz_seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=0 -verbosity=0 \
            -artifact_prefix="build-fuzz/" "$new_inputs" "$corpus"
        rm -rf "$new_inputs"
    done
fi

step "All passed"
