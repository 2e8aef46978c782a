#!/usr/bin/env bash
# The long lane: lets the monkey loose on the gallery, as released and under the sanitizers, and runs every fuzzer, each
# for its share of the time; before that, all faults that can be made, 10,000 windows, and hands at random on a log under
# ThreadSanitizer, and leaks by whole stacks. Prints how much was done and what was found, and fails when that is anything at all.
#
# usage: torture.sh MINUTES [SEED]     what is found is kept in build/torture/, shortest sequences of events too
set -euo pipefail
cd "$(dirname "$0")/.."
minutes=${1:?usage: torture.sh MINUTES [SEED]}
seed=${2:-$(date +%j)} # another one each day

scripts/setup.sh
for preset in release asan fuzz; do
    cmake --preset "$preset" >/dev/null
    target=commondlg3_gallery
    [ "$preset" != fuzz ] || target=fuzzers
    cmake --build --preset "$preset" --target "$target"
done

cmake --build --preset asan --target test_programs
for preset in release tsan; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target inplace_tests
done
cmake --build --preset release --target window_faults_tests faults_tests
build/tests/torture/faults_tests --gtest_brief=1
MEMORY_ROUNDS=310 scripts/with_display.sh build/tests/torture/window_faults_tests --gtest_brief=1 | grep -v '^{'
TSAN_OPTIONS="suppressions=$PWD/tests/threads.supp:halt_on_error=1" STRESS_ROUNDS=2000 STRESS_SEED=$seed \
    scripts/with_display.sh build-tsan/tests/inplace/inplace_tests --gtest_brief=1 \
    --gtest_filter='InplaceThreads.workers_and_hands_at_random'

printf '\n== What leaks\n'
# Without the toolkit's choosers of files, which lose a good part of what they show, and a text of 10 MB, which takes too
# long where each piece of memory has its whole stack.
left_out='Choosers.*:AskDialog.*:EditorPage.*:MessageReport.*:MessageWindow.TextWithoutBlanks*'
for program in options paths editors caption gui; do
    KEYS_REPEAT=no ASAN_OPTIONS=malloc_context_size=24:fast_unwind_on_malloc=0 G_SLICE=always-malloc \
        LSAN_OPTIONS="suppressions=$PWD/tests/leaks_by_function.supp:print_suppressions=0" \
        scripts/with_display.sh "build-asan/tests/$program/${program}_tests" --gtest_brief=1 --gtest_filter="-$left_out"
done

mkdir -p build/torture
chmod 1777 build/torture
failed=0
share() { awk "BEGIN { print $minutes * $1 }"; }

monkey() { # build folder, name, share
    printf '\n== The monkey with the gallery in %s, seed %s\n' "$1" "$seed"
    scripts/monkey.sh "$1/gallery/commondlg3_gallery" --seed "$seed" --minutes "$(share "$3")" \
        --found "build/torture/$2" || failed=1
}
monkey build released 0.45
monkey build-asan sanitized 0.25

fuzzers=(fuzz/corpus/*)
printf '\n== The fuzzers\n'
FUZZ_FLAGS="-print_final_stats=1 -seed=$seed" scripts/with_display.sh scripts/fuzz.sh \
    "$(awk "BEGIN { print int($minutes * 60 * 0.3 / ${#fuzzers[@]}) + 1 }")" || failed=1

[ "$failed" -eq 0 ] && printf '\nNothing found\n'
exit "$failed"
