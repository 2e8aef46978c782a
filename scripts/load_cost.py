#!/usr/bin/env python3
"""What loading libraries costs, as a table: time and memory of a process of its own, over those of the toolkit that it
stands on and with it; relocations, exported names, size.

usage: load_cost.py [--rounds N] NAME=LIBRARY[+LIBRARY...][:TOOLKIT] ...

    load_cost.py commondlg3=build/commondlg3/libcommondlg3.so.3:libwx_gtk3u_xrc-3.2.so.0 \\
                 KF5=libKF5WidgetsAddons.so.5:libQt5Widgets.so.5 Adwaita=libadwaita-1.so.0:libgtk-4.so.1

Times are medians of the rounds, taken by turns. Relocations that are packed are not counted. What a library's constructors
of static objects take is the time between two lines of the loader's own account of them, as strace sees them, less what it
is for libraries that have none.
"""
import argparse
import os
import re
import shutil
import statistics
import subprocess
import sys
import tempfile

PROGRAM = r"""
#include <dlfcn.h>
#include <stdio.h>
#include <string.h>
#include <time.h>

static double now(void)
{
    struct timespec t;
    clock_gettime(CLOCK_MONOTONIC, &t);
    return t.tv_sec * 1e3 + t.tv_nsec / 1e6;
}

/* Kilobytes that are this process's alone. */
static long own_memory(void)
{
    char line[256];
    long sum = 0, part;
    FILE* file = fopen("/proc/self/smaps_rollup", "r");
    while (file && fgets(line, sizeof line, file))
        if (sscanf(line, "Private_Dirty: %ld", &part) == 1 || sscanf(line, "Private_Clean: %ld", &part) == 1)
            sum += part;
    if (file)
        fclose(file);
    return sum;
}

int main(int count, char** names)
{
    for (int i = 1; i < count; ++i) {
        long before = own_memory();
        double start = now();
        if (!dlopen(names[i], RTLD_NOW | RTLD_GLOBAL)) {
            fprintf(stderr, "%s\n", dlerror());
            return 1;
        }
        double took = now() - start;
        printf("%s %f %ld\n", names[i], took, own_memory() - before);
    }
    return 0;
}
"""


def output(*command, **variables):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True,
                          env={**os.environ, **variables}).stdout


def path_of(library):
    if os.path.exists(library):
        return os.path.realpath(library)
    found = re.search(rf"^\s*{re.escape(library)} .*=> (.*)$", output("ldconfig", "-p"), re.MULTILINE)
    if not found:
        sys.exit(f"{library}: no such library")
    return os.path.realpath(found[1])


def constructors(program, library):
    """Milliseconds from the loader's line about the static objects of each library to its next one."""
    with tempfile.NamedTemporaryFile("r") as account:
        subprocess.run(["strace", "-f", "-r", "--seccomp-bpf", "-e", "trace=write,writev", "-s", "300", "-o", account.name,
                        program, library], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                       env={**os.environ, "LD_DEBUG": "files"})
        times, last = {}, None
        for line in account:
            if not (found := re.match(r"\d+\s+(\d+\.\d+) (.*)", line)):
                continue
            if last:
                times[last] = 1e3 * float(found[1])
            init = re.search(r'calling init: ", .*?iov_base="([^"]+)"', found[2])
            last = os.path.basename(init[1]) if init else None
    least = statistics.median_low(times.values())  # most libraries have none: that is what being traced costs
    return {name: max(0, taken - least) for name, taken in times.items()}


class Subject:
    def __init__(self, text):
        self.name, libraries = text.split("=", 1)
        libraries, _, self.toolkit = libraries.partition(":")
        self.libraries = [path_of(library) for library in libraries.split("+")]
        self.with_all, self.alone, self.memory, self.memory_alone = [], [], [], []

    def measure(self, program):
        line, = output(program, self.libraries[0]).splitlines()
        self.with_all.append(float(line.split()[1]))
        self.memory.append(int(line.split()[2]))
        if self.toolkit:
            line = output(program, path_of(self.toolkit), self.libraries[0]).splitlines()[1]
            self.alone.append(float(line.split()[1]))
            self.memory_alone.append(int(line.split()[2]))

    def brought(self):
        """The libraries that come with it besides what its toolkit loads."""
        loaded = lambda *names: set(re.findall(r"^\s*(?:\S+ => )?(/\S+)", "".join(output("ldd", name) for name in names),
                                               re.MULTILINE))
        return loaded(self.libraries[0]) - loaded(path_of(self.toolkit)) if self.toolkit else set()

    def row(self, program, folder):
        relocations = symbolic = exported = size = 0
        for library in self.libraries:
            kinds = re.findall(r"R_X86_64_(\w+)", output("readelf", "-rW", library))
            relocations += len(kinds)
            symbolic += sum(kind != "RELATIVE" for kind in kinds)
            exported += len(output("nm", "-D", "--defined-only", library).splitlines())
            stripped = shutil.copy(library, os.path.join(folder, "stripped"))
            subprocess.run(["strip", "--strip-unneeded", stripped], check=True)
            size += os.path.getsize(stripped)
        # Whatever else the machine does comes on top: the least of some runs is theirs.
        runs = [constructors(program, self.libraries[0]) for _ in range(9)]
        own = sum(min(times.get(os.path.basename(library), times.get(soname(library), 0)) for times in runs)
                  for library in self.libraries)
        middle = lambda values, unit=1: f"{statistics.median(values) / unit:.1f}" if values else "–"
        return (f"| {self.name} | {middle(self.with_all)} | {middle(self.alone)} | {len(self.brought())} "
                f"| {middle(self.memory, 1024)} | {middle(self.memory_alone, 1024)} | {own:.2f} "
                f"| {relocations} | {symbolic} | {exported} | {size / 1024:.0f} |")


def soname(library):
    return re.search(r"SONAME.*\[(.*)\]", output("readelf", "-d", library))[1]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--rounds", type=int, default=21)
    parser.add_argument("subjects", nargs="+")
    options = parser.parse_args()
    subjects = [Subject(text) for text in options.subjects]
    with tempfile.TemporaryDirectory() as folder:
        program = os.path.join(folder, "load")
        subprocess.run(["cc", "-O1", "-xc", "-", "-o", program, "-ldl"], input=PROGRAM, text=True, check=True)
        for _ in range(options.rounds):
            for subject in subjects:
                subject.measure(program)
        print("| | loaded with all, ms | over its toolkit, ms | libraries over it | memory of its own with all, MB "
              "| over its toolkit, MB | static objects, ms | relocations | by name | exported names | size, KB |")
        print("|---|" + "---:|" * 10)
        for subject in subjects:
            print(subject.row(program, folder))


if __name__ == "__main__":
    main()
