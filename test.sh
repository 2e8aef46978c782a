#!/usr/bin/env bash
# Installs what is missing, builds, and tests.
#
#   ./test.sh        everything as released
#   ./test.sh all    also what a screen reader says, windows whose look changes while they are open, failing calls of the
#                    system, machines that lack something, memory, windows under Wayland, an audit of every window, the
#                    linters, a monkey at keyboard and mouse, AddressSanitizer and UndefinedBehaviorSanitizer, the thread
#                    tests under ThreadSanitizer, the gallery by another compiler, and each fuzzer for a short while
#
# FUZZ_SECONDS: how long each fuzzer runs (20; 0 leaves them out)
set -euo pipefail
cd "$(dirname "$0")"

case "${1:-}" in
    "") all=false ;;
    all) all=true ;;
    *) sed -n '2,11s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
esac

if $all; then scripts/setup.sh packages; else scripts/setup.sh; fi

begun=$SECONDS
step() { printf '\n== %s (after %d s)\n' "$1" $((SECONDS - begun)); }

build() { # preset, targets...
    local preset=$1
    shift
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target "$@"
}

run_tests() { # preset, options of ctest...
    local preset=$1
    shift
    scripts/with_display.sh ctest --preset "$preset" "$@"
}

# A short stack: further down every stack passes through the event loop, and its suppressions would match ours too. The
# long lane has whole ones, which take several times as long: scripts/torture.sh.
export ASAN_OPTIONS=detect_leaks=1:malloc_context_size=3
export LSAN_OPTIONS="suppressions=$PWD/tests/leaks.supp:print_suppressions=0"
export UBSAN_OPTIONS=print_stacktrace=1
export TSAN_OPTIONS="suppressions=$PWD/tests/threads.supp:halt_on_error=1"

step "Building as released"
build release test_programs
step "Tests as released"
run_tests release -LE "speech|long"

if $all; then
    step "What a screen reader says"
    # Which of two things said at once comes first is the reader's own race now and then: what is lost is lost twice.
    run_tests release -L speech --repeat until-pass:2

    step "Windows whose look changes while they are open, failing calls, odd machines, memory"
    run_tests release -L long

    step "Windows under Wayland"
    scripts/with_wayland.sh /usr/bin/python3 -B tests/gallery/test_wayland.py build/gallery/commondlg3_gallery
    WAYLAND_SHELL=kiosk-shell.so scripts/with_wayland.sh /usr/bin/python3 -B tests/gallery/test_wayland.py \
        build/gallery/commondlg3_gallery Mouse
    scripts/with_wayland.sh build/tests/caption/caption_tests --gtest_brief=1 \
        --gtest_filter='CaptionLayout.*:CaptionMessages.*:AdvancedPanel.*_header_*:SimpleMessage.*cut_off*:-*mouse*'

    step "An audit of every window"
    scripts/audit.sh build/gallery/commondlg3_gallery

    step "Linters"
    scripts/lint.sh

    step "Debian packages, the border, a clean Debian"
    scripts/package.sh --install

    step "A monkey at keyboard and mouse"
    scripts/monkey.sh build/gallery/commondlg3_gallery --replay tests/torture/kept/*.events --whole
    scripts/monkey.sh build/gallery/commondlg3_gallery --seed 5 --launches 4 --events 500 --whole

    step "Building under AddressSanitizer and UndefinedBehaviorSanitizer"
    build asan test_programs
    export G_SLICE=always-malloc # or what the toolkit has freed is not seen to be used
    step "Tests under AddressSanitizer and UndefinedBehaviorSanitizer"
    run_tests asan
    step "The monkey under them"
    scripts/monkey.sh build-asan/gallery/commondlg3_gallery --seed 5 --launches 2 --events 500 --whole

    step "Building under ThreadSanitizer"
    build tsan thread_test_programs
    step "Thread tests under ThreadSanitizer"
    run_tests tsan

    fuzz_seconds=${FUZZ_SECONDS:-20}
    if [ "$fuzz_seconds" -gt 0 ]; then
        step "Building the fuzzers, and the gallery, with clang"
        build fuzz fuzzers commondlg3_gallery
        step "clang-tidy"
        scripts/lint.sh --tidy
        step "Each fuzzer for $fuzz_seconds s"
        scripts/with_display.sh scripts/fuzz.sh "$fuzz_seconds"
    fi
fi

step "All passed"
