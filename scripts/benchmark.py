#!/usr/bin/env python3
"""Runs all benchmarks on a display of their own and prints one Markdown table: what was measured, what it is compared
with in the same run, and what is expected of it.

usage: benchmark.py [--build FOLDER] [--rounds N] [--peers FOLDER] [--lines N]

Each round opens every kind of window first in a process of its own; further openings take turns in one process, so
that whatever else the machine does meets all kinds alike. Medians are compared. --peers names a folder with programs
log_qt and log_gtk, which show the same lines in the text views of other toolkits and print key=value results. --lines
is how many lines the log is closed with. Ends with 1 when something is missed.
"""
import argparse
import collections
import json
import os
import re
import statistics
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
OURS = ("message", "message_check_box", "example")
OTHERS = ("native", "rich", "generic")
PAGES = ("page_result_saving", "page_consent", "result_saving", "consent", "ask", "clipboard")
NAMES = {
    "message": "message window",
    "message_check_box": "message window with a check box",
    "example": "example dialog",
    "native": "wxMessageDialog",
    "rich": "wxRichMessageDialog",
    "generic": "wxGenericMessageDialog",
    "page_result_saving": "page about results inside an open window",
    "page_consent": "page about consent inside an open window",
    "result_saving": "page about results in a dialog",
    "consent": "consent dialog",
    "ask": "ask dialog",
    "clipboard": "clipboard dialog",
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
        kind, _drawn, painted, _ended = line.split()
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


def sections(output):
    """{heading: {what was measured: number}} of log_bench."""
    measured, heading = collections.defaultdict(dict), ""
    for line in output.splitlines():
        if line.startswith("-- "):
            heading = line[3:]
            continue
        match = re.fullmatch(r"(.{44}) +([-\d.]+) ?(\w*)", line)
        if match:
            # A window is made wider and narrower: the slower one counts.
            name, number = match[1].strip(), float(match[2])
            measured[heading][name] = max(number, measured[heading].get(name, number))
        else:
            print(f"log_bench says: {line}", file=sys.stderr)
    return measured


def below(table, what, value, limit, unit, other="", digits=2):
    table.row(what, f"{value:.{digits}f} {unit}", other, expected=f"{limit} {unit} or less", met=value <= limit)


def peer_seconds(folder, program, widget, lines):
    path = os.path.join(folder, program)
    if not os.access(path, os.X_OK):
        return None
    output = run(path, f"--widget={widget}", f"--lines={lines}", "--cap=0", "--steps=40", "--limit=120")
    values = dict(word.split("=", 1) for word in output.split() if "=" in word)
    return float(values.get("settled_s", values.get("after_s", 0))) or None


def log_figures(table, shown, lines):
    million = lines == 1000000
    for name, limit, unit in (("event loop late, p99", 8, "ms"), ("event loop late, most", 16, "ms"),
                              ("resident bytes a line beyond its text", 64, "bytes"),
                              ("page scroll to its frame, p99", 4, "ms"),
                              ("resize, work until the first right frame", 16, "ms"),
                              ("resize, all heights exact", 200 * lines / 1e6 if million else 200, "ms")):
        below(table, f"log of {lines:,} lines: {name}", shown[name], limit, unit)
    if million:
        below(table, "log of 1,000,000 lines: all in and exact", shown["all heights exact"], 0.8, "s")
    below(table, f"log of {lines:,} lines: last 10,000 to first 10,000", shown["last 10,000 lines / first 10,000"],
          1.2, "times")


def log(table, program, peers, closed_lines):
    for lines in (100000, 1000000):
        measured = sections(run(program, str(lines)))
        shown = measured[f"{lines} lines"]
        seconds = shown["all heights exact"]
        others = [("the toolkit's virtual list", measured[""]["the toolkit's virtual list, last one painted"], 1)]
        if peers and lines == 100000:
            others += [("a Qt plain text view", peer_seconds(peers, "log_qt", "qt_plaintext", lines), 1 / 4),
                       ("a GTK text view", peer_seconds(peers, "log_gtk", "gtk_textview", lines), 1 / 50)]
        for name, other, limit in others:
            if other:
                ratio = seconds / other
                judged = lines == 100000
                table.row(f"log of {lines:,} lines: all in and exact", f"{seconds:.3f} s", f"{name} {other:.3f} s",
                          ratio, f"{limit:.2f} or less" if judged else "", ratio <= limit if judged else None)
        log_figures(table, shown, lines)
    entries = measured["10000 entries with HTML body, icon and buttons"]
    below(table, "10,000 entries with a body: added", entries["added"], 0.3, "s")
    below(table, "10,000 entries with a body: page scroll, p99", entries["page scroll to its frame, p99"], 8, "ms")
    file = measured["saving and loading 100000 lines"]
    table.row("log of 100,000 lines: saved, loaded",
              f"{file['saved to a file']:.2f} s, {file['loaded and shown']:.2f} s")
    if closed_lines != lines:
        measured = sections(run(program, "close", str(closed_lines)))
    closed = measured[f"closing a window with {closed_lines} lines"]
    below(table, f"closing a log of {closed_lines:,} lines", closed["closed"], 100, "ms")
    below(table, f"keeping a log of {closed_lines:,} lines: memory on top", closed["memory on top meanwhile"], 16, "MB")


def many_times(table, what, program):
    """The medians that caption_bench, preferences_bench and search_dirs_bench print."""
    for line in run(program).splitlines():
        match = re.fullmatch(r"(.+?) +(\d+) times +median +([\d.]+) +p99 +([\d.]+) +longest +([\d.]+) ms", line)
        if match:
            table.row(f"{what}: {match[1]}, {match[2]} times",
                      f"{match[3]} ms; p99 {match[4]}, longest {match[5]}")


def pages(table, program, rounds):
    times = collections.defaultdict(list)
    for _ in range(max(1, rounds // 2)):
        for kind, more in openings(run(program, "again", "20", *PAGES, "native")).items():
            times[kind] += more
    native = statistics.median(times["native"])
    for kind in PAGES:
        ratio = statistics.median(times[kind]) / native
        table.row(f"{NAMES[kind]}, later openings", f"{statistics.median(times[kind]):.1f} ms",
                  f"{NAMES['native']} {native:.1f} ms", ratio, "0.67 or less", ratio <= 0.67)


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


def long_text(table, program):
    """The text view measures what is not seen when nothing else is to be done: drawn counts."""
    times = [[float(number) for number in run(program, "first", "message_long").split()[1:]] for _ in range(3)]
    drawn, idle = (statistics.median(column) for column in list(zip(*times))[:2])
    table.row("message of 1 MB without a blank, first opening until drawn", f"{drawn:.0f} ms",
              f"idle after {idle:.0f} ms", expected="300 ms or less", met=drawn <= 300)


def memory(table, program):
    for kind in OURS:
        early, late = (int(line.split()[1]) for line in run(program, "memory", kind).splitlines())
        table.row(f"{NAMES[kind]}, memory after 1,000 openings", f"{late} KiB", f"after 200: {early} KiB", late / early,
                  "1.02 or less", late / early <= 1.02)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", default=os.path.join(os.path.dirname(HERE), "build"))
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--peers")
    parser.add_argument("--lines", type=int, default=8000000)
    options = parser.parse_args()
    if not os.environ.get("COMMONDLG3_BENCHMARK_DISPLAY"):
        os.environ["COMMONDLG3_BENCHMARK_DISPLAY"] = "own"
        os.execv(f"{HERE}/with_display.sh", [f"{HERE}/with_display.sh", sys.executable, *sys.argv])
    folder = os.path.join(os.path.abspath(options.build), "benchmarks")
    table = Table()
    without_windows(table, folder)
    windows(table, f"{folder}/open_bench", options.rounds)
    pages(table, f"{folder}/open_bench", options.rounds)
    long_text(table, f"{folder}/open_bench")
    memory(table, f"{folder}/open_bench")
    log(table, f"{folder}/log_bench", options.peers, options.lines)
    many_times(table, "preferences of 50 pages", f"{folder}/preferences_bench")
    many_times(table, "heading of 10,000 messages", f"{folder}/caption_bench")
    many_times(table, "10,000 search directories", f"{folder}/search_dirs_bench")
    return 1 if table.missed else 0


if __name__ == "__main__":
    sys.exit(main())
