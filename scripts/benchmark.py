#!/usr/bin/env python3
"""Runs all benchmarks on a display of their own and prints one Markdown table: what was measured, what it is compared
with in the same run, and what is expected of it.

usage: benchmark.py [--build FOLDER] [--rounds N]

Each round opens every kind of window first in a process of its own; further openings take turns in one process, so
that whatever else the machine does meets all kinds alike. Medians are compared. Ends with 1 when something is missed.
"""
import argparse
import collections
import json
import os
import statistics
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
OURS = ("message", "message_check_box", "example")
OTHERS = ("native", "rich", "generic")
NAMES = {
    "message": "message window",
    "message_check_box": "message window with a check box",
    "example": "example dialog",
    "native": "wxMessageDialog",
    "rich": "wxRichMessageDialog",
    "generic": "wxGenericMessageDialog",
}


class Table:
    def __init__(self):
        self.missed = 0
        print("| measured | result | compared with | ratio | expected | met |")
        print("|---|---:|---|---:|---|---|")

    def row(self, what, result, other="", ratio=None, expected="", met=None):
        self.missed += met is False
        verdict = {None: "", True: "yes", False: "**no**"}[met]
        print(f"| {what} | {result} | {other} | {'' if ratio is None else f'{ratio:.2f}'} | {expected} | {verdict} |",
              flush=True)


def run(program, *arguments):
    done = subprocess.run([program, *arguments], stdout=subprocess.PIPE, text=True, check=True, timeout=900)
    return done.stdout


def openings(output):
    """Milliseconds until painted, by kind."""
    times = collections.defaultdict(list)
    for line in output.splitlines():
        kind, painted, _ended = line.split()
        times[kind].append(float(painted))
    return times


def without_windows(table, folder):
    report = json.loads(run(f"{folder}/commondlg3_bench", "--benchmark_filter=-^open/", "--benchmark_format=json",
                            "--benchmark_repetitions=3"))
    median = {entry["run_name"]: entry for entry in report["benchmarks"] if entry.get("aggregate_name") == "median"}
    # Sizes of 1 and 10 MB: were breaking not linear, bytes a second would fall with the size.
    small, large = (median[f"line_breaking/MB/{size}"]["bytes_per_second"] / 1e6 for size in (1, 10))
    table.row("line breaking, 10 MB", f"{large:.0f} MB/s", expected="200 MB/s or more", met=large >= 200)
    table.row("line breaking, 1 MB", f"{small:.0f} MB/s", "10 MB", small / large, "less than 2: linear",
              small / large < 2)
    for name, what in (("translate_message/two_arguments", "two arguments"), ("translate_message/plural", "a plural")):
        rate = median[name]["items_per_second"]
        table.row(f"messages with {what}", f"{rate / 1000:.0f} thousand/s",
                  expected="500 thousand/s or more" if name.endswith("two_arguments") else "",
                  met=rate >= 500000 if name.endswith("two_arguments") else None)
    nanoseconds = median["signal_with_one_slot"]["real_time"]
    table.row("signal with one slot", f"{nanoseconds:.0f} ns", expected="less than 100 ns", met=nanoseconds < 100)
    for name, what in (("bag_save/real_time", "saving"), ("bag_load/real_time", "loading")):
        table.row(f"{what} a bag of 100,000 records", f"{median[name]['real_time']:.0f} ms")
    for name, what, limit in (("classify_files/1000000", "languages of 1,000,000 file names", 300),
                              ("editors_load/10000", "loading 10,000 editors", 100),
                              ("editors_list/10000", "listing 10,000 editors", 100),
                              ("editors_save/10000", "saving 10,000 editors", 100)):
        milliseconds = median[name]["real_time"]
        table.row(what, f"{milliseconds:.1f} ms", expected=f"less than {limit} ms", met=milliseconds < limit)


def windows(table, program, rounds):
    first = collections.defaultdict(list)
    again = collections.defaultdict(list)
    for _ in range(rounds):
        for kind in OURS + OTHERS:
            first[kind] += openings(run(program, "first", kind))[kind]
        for kind, times in openings(run(program, "again", "20", *OURS, *OTHERS)).items():
            again[kind] += times
    first = {kind: statistics.median(times) for kind, times in first.items()}
    again = {kind: statistics.median(times) for kind, times in again.items()}
    for kind in OURS:
        for other in OTHERS:
            ratio = first[kind] / first[other]
            judged = other == "rich"
            table.row(f"{NAMES[kind]}, first opening", f"{first[kind]:.1f} ms", f"{NAMES[other]} {first[other]:.1f} ms",
                      ratio, "1.00 or less" if judged else "", ratio <= 1 if judged else None)
    for kind in OURS:
        for other in OTHERS:
            ratio = again[kind] / again[other]
            judged = other == "native"
            table.row(f"{NAMES[kind]}, later openings", f"{again[kind]:.1f} ms",
                      f"{NAMES[other]} {again[other]:.1f} ms", ratio, "0.67 or less" if judged else "",
                      ratio <= 2 / 3 if judged else None)


def memory(table, program):
    for kind in OURS:
        early, late = (int(line.split()[1]) for line in run(program, "memory", kind).splitlines())
        table.row(f"{NAMES[kind]}, memory after 1,000 openings", f"{late} KiB", f"after 200: {early} KiB", late / early,
                  "1.02 or less", late / early <= 1.02)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default=os.path.join(os.path.dirname(HERE), "build"))
    parser.add_argument("--rounds", type=int, default=5)
    options = parser.parse_args()
    if not os.environ.get("COMMONDLG3_BENCHMARK_DISPLAY"):
        os.environ["COMMONDLG3_BENCHMARK_DISPLAY"] = "own"
        os.execv(f"{HERE}/with_display.sh", [f"{HERE}/with_display.sh", sys.executable, *sys.argv])
    folder = os.path.join(os.path.abspath(options.build), "benchmarks")
    table = Table()
    without_windows(table, folder)
    windows(table, f"{folder}/open_bench", options.rounds)
    memory(table, f"{folder}/open_bench")
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
