#!/usr/bin/env python3
"""Says how many lines of each fuzzed unit the fuzzers reach: builds them with clang's coverage into build-coverage/, runs
what is kept in fuzz/corpus/ and a short, seeded search from it. Fails below 90 %.

usage: with_display.sh fuzz_coverage.py [RUNS]     inputs of each fuzzer beyond those that are kept (2000)
"""
import glob
import json
import os
import subprocess
import sys
import tempfile

LEAST = 90
# The units whose lines count, and why one may stay below.
UNITS = {
    "platform/gen_helpers2/src": ["bag_reader", "bag_writer", "variant_bag_file", "strings"],
    "platform/cpil/src": ["catalog", "message_pattern", "mo_catalog"],
    "platform/vdx/src": ["body_reader", "font_metrics", "height_index", "html_body", "html_markup", "html_tokens",
                         "line_store", "log_filter", "log_layout", "log_places", "log_search", "shown_text",
                         "text_shaper"],
    "platform/wx_helpers1/src": ["image_loader", "label", "resource_file", "wrap_text"],
    "commondlg3/src": ["inplace_ctrl/contents", "inplace_ctrl/event_entry", "inplace_ctrl/file_loader",
                       "inplace_ctrl/inplace_message", "inplace_ctrl/xpm", "editors/editor_data_storage",
                       "editors/language_info", "options/feature_config", "paths/name_chars", "paths/path_info",
                       "result_saving/name_template", "search_dirs/search_dirs_data"],
}
EXCUSED = {
    "html_body": "draws",
    "inplace_ctrl/contents": "hands much over to a worker, and tells what the disk refuses",
    "inplace_ctrl/inplace_message": "has the buttons of the host's messages",
    "editors/editor_data_storage": "writes traces",
}


def run(*command, **options):
    return subprocess.run(command, check=True, **options)


def main():
    os.chdir(os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
    runs = sys.argv[1] if len(sys.argv) > 1 else "2000"
    run("cmake", "--preset", "coverage", stdout=subprocess.DEVNULL)
    run("cmake", "--build", "--preset", "coverage", "--target", "fuzzers", "--", "-j2", stdout=subprocess.DEVNULL)
    with tempfile.TemporaryDirectory(dir="/dev/shm") as folder:
        environment = dict(os.environ, TMPDIR=folder, LLVM_PROFILE_FILE=folder + "/%m-%p.profraw")
        for name in sorted(os.listdir("fuzz/corpus")):
            fuzzer = ["build-coverage/fuzz/fuzz_" + name, "-runs=" + runs, "-seed=1", "-dict=fuzz/markup.dict",
                      "-artifact_prefix=build-coverage/", tempfile.mkdtemp(dir=folder), "fuzz/corpus/" + name]
            ended = subprocess.run(fuzzer, env=environment, stderr=subprocess.PIPE, text=True, errors="replace")
            if ended.returncode:
                sys.exit(ended.stderr[-5000:])
        run("llvm-profdata", "merge", "-o", folder + "/all", *glob.glob(folder + "/*.profraw"))
        libraries = glob.glob("build-coverage/**/*.so", recursive=True)
        exported = run("llvm-cov", "export", "-summary-only", "-instr-profile=" + folder + "/all", libraries[0],
                       *("-object=" + library for library in libraries[1:]), stdout=subprocess.PIPE)
    reached = {os.path.relpath(file["filename"]): file["summary"]["lines"]
               for file in json.loads(exported.stdout)["data"][0]["files"]}
    low = []
    print(f"{'unit':52} lines covered")
    for place, names in UNITS.items():
        for name in names:
            lines = reached[f"{place}/{name}.cpp"]
            excuse = EXCUSED.get(name, "")
            print(f"{place + '/' + name:52} {lines['count']:5} {lines['percent']:6.1f} %  {excuse}".rstrip())
            if lines["percent"] < LEAST and not excuse:
                low.append(name)
    if low:
        sys.exit(f"below {LEAST} %: " + ", ".join(low))


main()
