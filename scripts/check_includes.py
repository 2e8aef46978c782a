#!/usr/bin/env python3
"""Checks that each file includes the standard headers of what it uses, so that no other header has to bring them.

usage: check_includes.py [--mend] FOLDER...

A source may leave to its own header what that one includes. --mend adds what is missing.
"""
import argparse
import os
import re
import sys

from source_format import Source, files_below, report

HEADERS = {
    "algorithm": "all_of any_of none_of find_if find_if_not find_first_of count_if copy_if remove_if replace_if sort "
                 "stable_sort transform max_element min_element min max clamp lower_bound upper_bound unique reverse "
                 "rotate equal_range binary_search generate partition for_each max_element search is_sorted",
    "array": "array",
    "atomic": "atomic atomic_bool atomic_int memory_order_relaxed",
    "chrono": "chrono",
    "condition_variable": "condition_variable",
    "cstdint": "int8_t int16_t int32_t int64_t uint8_t uint16_t uint32_t uint64_t uintptr_t",
    "deque": "deque",
    "exception": "exception_ptr current_exception rethrow_exception terminate",
    "filesystem": "filesystem",
    "fstream": "ifstream ofstream fstream",
    "functional": "function hash less greater",
    "future": "future shared_future promise async packaged_task",
    "initializer_list": "initializer_list",
    "iterator": "back_inserter make_move_iterator istreambuf_iterator ostream_iterator distance",
    "limits": "numeric_limits",
    "list": "list",
    "locale": "locale",
    "map": "map multimap",
    "memory": "unique_ptr shared_ptr weak_ptr make_unique make_shared enable_shared_from_this",
    "mutex": "mutex lock_guard unique_lock once_flag call_once recursive_mutex scoped_lock",
    "numeric": "accumulate iota",
    "optional": "optional nullopt make_optional",
    "queue": "queue priority_queue",
    "random": "mt19937 mt19937_64 uniform_int_distribution random_device",
    "set": "set multiset",
    "sstream": "ostringstream istringstream stringstream",
    "stdexcept": "runtime_error logic_error invalid_argument out_of_range",
    "string": "string to_string getline stoi stoul",
    "string_view": "string_view",
    "system_error": "error_code system_error errc",
    "thread": "thread this_thread",
    "tuple": "tuple tie make_tuple apply",
    "type_traits": "enable_if_t is_same_v is_base_of_v decay_t conditional_t is_convertible_v invoke_result_t "
                   "is_enum_v underlying_type_t",
    "unordered_map": "unordered_map unordered_multimap",
    "unordered_set": "unordered_set",
    "utility": "move forward pair swap exchange make_pair index_sequence",
    "variant": "variant visit holds_alternative monostate",
    "vector": "vector",
}
HEADER_OF = {name: header for header, names in HEADERS.items() for name in names.split()}
INCLUDE = re.compile(r'^\s*#\s*include\s+[<"]([^>"]+)[>"]', re.MULTILINE)
USE = re.compile(r"\bstd\s*::\s*(\w+)")
# What a header may be had by.
ALSO = {"string_view": {"string"}, "initializer_list": {"vector", "string", "map", "set", "array"},
        "utility": {"map", "memory", "tuple", "vector"}, "iterator": {"string", "vector"}, "type_traits": {"tuple"},
        "exception": {"stdexcept"}, "system_error": {"filesystem", "mutex"}, "cstdint": set()}


def includes_of(path):
    with open(path, encoding="utf-8") as file:
        return set(INCLUDE.findall(file.read()))


def own_header(path):
    """The header that a source implements: the first one that it includes under its own name."""
    name = os.path.splitext(os.path.basename(path))[0]
    for included in INCLUDE.findall(open(path, encoding="utf-8").read()):
        if os.path.splitext(os.path.basename(included))[0] == name:
            folder = os.path.dirname(path)
            while folder:
                for base in (folder, os.path.join(folder, "include")):
                    if os.path.isfile(os.path.join(base, included)):
                        return os.path.join(base, included)
                folder = os.path.dirname(folder)
    return None


def missing_in(path):
    """{header: (line, name)}"""
    source = Source(path)
    had = includes_of(path)
    if path.endswith(".cpp"):
        header = own_header(path)
        if header:
            had |= includes_of(header)
    missing = {}
    for match in USE.finditer(source.code):
        header = HEADER_OF.get(match[1])
        if header and header not in had and not ALSO.get(header, set()) & had:
            missing.setdefault(header, (source.line(match.start()), match[1]))
    return missing


def mend(path, headers):
    with open(path, encoding="utf-8") as file:
        lines = file.read().split("\n")
    added = [f"#include <{header}>" for header in sorted(headers)]
    standard = [i for i, line in enumerate(lines) if re.fullmatch(r"#include <[a-z_]+>", line)]
    others = [i for i, line in enumerate(lines) if INCLUDE.match(line)]
    if standard:
        lines[standard[-1] + 1:standard[-1] + 1] = added
    elif others:
        lines[others[-1] + 1:others[-1] + 1] = ["", *added]
    else:
        at = next(i for i, line in enumerate(lines) if line.startswith("#pragma once")) + 1
        lines[at:at] = ["", *added]
    with open(path, "w", encoding="utf-8") as file:
        file.write("\n".join(lines))


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--mend", action="store_true")
    parser.add_argument("folders", nargs="+")
    options = parser.parse_args()
    findings = []
    for path in files_below(options.folders, (".cpp", ".h")):
        missing = missing_in(path)
        if missing and options.mend:
            mend(path, missing)
        findings += [(path, line, f"std::{name} without <{header}>") for header, (line, name) in missing.items()]
    return report(sorted(findings))


if __name__ == "__main__":
    sys.exit(main())
