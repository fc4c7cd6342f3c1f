#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the performance page from the JSON results of the benchmarks, to standard output.

report.py FOLDER: the folder holds a file for each run of each program.
"""
import collections
import datetime
import json
import pathlib
import statistics
import sys

# What is measured, ours, what it is measured against, the budget for the ratio, and why it is there.
ROWS = [
    ("A register read through the port", "portRead", "the producer's GCReadPort, called directly", "bareReadPort", 1.05),
    ("A quiet pass over 1,000 known cameras", "quietPass<1000>", "a bare loop of the same GenTL calls",
     "bareEnumeration<1000>", 1.2),
    ("A quiet pass over 10,000 known cameras", "quietPass<10000>", "one over 1,000", "quietPass<1000>", 11),
    ("The bare loop over 10,000 cameras", "bareEnumeration<10000>", "one over 1,000: what the producer and the "
     "machine's caches make of it", "bareEnumeration<1000>", None),
    ("A description of 16 KB, to a node found by name", "firstLoad<16>", "pugixml with an index by name",
     "pugixmlWithIndex<16>", None),
    ("One of 160 KB", "firstLoad<160>", "pugixml", "pugixmlWithIndex<160>", None),
    ("One of 1.3 MB", "firstLoad<1300>", "pugixml", "pugixmlWithIndex<1300>", 1.5),
    ("Another camera of the model, 16 KB", "furtherLoad<16>", "pugixml", "pugixmlWithIndex<16>", None),
    ("Another of 160 KB", "furtherLoad<160>", "pugixml", "pugixmlWithIndex<160>", None),
    ("Another of 1.3 MB, its bytes compared", "furtherLoad<1300>", "pugixml", "pugixmlWithIndex<1300>", 0.1),
    ("The description of 16 KB", "firstLoad<16>", "Aravis", "aravisLoad<16>", None),
    ("The one of 160 KB", "firstLoad<160>", "Aravis", "aravisLoad<160>", None),
    ("The one of 1.3 MB", "firstLoad<1300>", "Aravis", "aravisLoad<1300>", None),
    ("First read of an integer behind a swiss knife", "firstRead<NodeMapCamera>", "Aravis", "firstRead<AravisCamera>",
     None),
    ("Repeated read, the register cached", "repeatedRead<NodeMapCamera>", "Aravis", "repeatedRead<AravisCamera>", None),
    ("The start of the program, to the first sight of its window", "torvaneWindow", "an empty window of Qt's",
     "emptyWindow", 1.5),
]

# The same for bytes. A budget is a ratio and what each camera may take besides.
CAMERAS = 100
MEMORY_ROWS = [
    ("An opened camera, description of 16 KB", "bytesOfOne<16>", "pugixml", "bytesOfOnePugixml<16>", None),
    ("An opened camera, 160 KB", "bytesOfOne<160>", "pugixml", "bytesOfOnePugixml<160>", None),
    ("An opened camera, 1.3 MB", "bytesOfOne<1300>", "pugixml", "bytesOfOnePugixml<1300>", None),
    ("The one of 16 KB", "bytesOfOne<16>", "Aravis", "bytesOfOneAravis<16>", None),
    ("The one of 160 KB", "bytesOfOne<160>", "Aravis", "bytesOfOneAravis<160>", None),
    ("The one of 1.3 MB", "bytesOfOne<1300>", "Aravis", "bytesOfOneAravis<1300>", None),
    (f"{CAMERAS} opened cameras of one model, 1.3 MB", "bytesOfHundred<1300>", "one", "bytesOfOne<1300>",
     (1.2, 64 * 1024)),
]


def medians(folder):
    """The median time of each benchmark, in nanoseconds, its median of bytes, and the machine that measured."""
    times, memory, machine = collections.defaultdict(list), collections.defaultdict(list), {}
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        run = json.loads(path.read_text())
        machine = run["context"]
        for entry in run["benchmarks"]:
            if entry["run_type"] != "iteration":
                continue
            scale = {"ns": 1, "us": 1e3, "ms": 1e6}[entry["time_unit"]]
            name = entry["run_name"].split("/")[0]
            kind = "real_time" if "manual_time" in entry["run_name"] else "cpu_time"
            times[name].append(entry[kind] * scale)
            if "bytes" in entry:
                memory[name].append(entry["bytes"])
    return medians_of(times), medians_of(memory), machine


# Calls of which the reads of the device are counted.
READ_ROWS = [
    ("The access mode of a selector that depends on eight others", "selectorAccessMode"),
    ("The entries of a pixel format that are there, of thirty", "formatSymbolics"),
    ("A write of the pixel format, its entry checked", "formatWrite"),
]


def print_reads(folder):
    """The table of the reads that one call takes, beside the different registers that it needs."""
    counts = {}
    for path in pathlib.Path(folder).glob("*.json"):
        for entry in json.loads(path.read_text())["benchmarks"]:
            if "reads" in entry:
                counts[entry["run_name"].split("/")[0]] = (entry["reads"], entry["addresses"])
    print("\nReads of the device by the first call in a node map, each a round trip on a camera.\n")
    print("| Call | Reads | Different registers | |")
    print("|---|---|---|---|")
    for what, name in READ_ROWS:
        reads, addresses = counts[name]
        print(f"| {what} | {reads:.0f} | {addresses:.0f} | {verdict(reads == addresses)} |")


def medians_of(values):
    return {name: statistics.median(measured) for name, measured in values.items()}


def readable(value, units):
    for unit, size in units:
        if value >= size:
            break
    return f"{value / size:.3g} {unit}"


def duration(nanoseconds):
    return readable(nanoseconds, (("ms", 1e6), ("µs", 1e3), ("ns", 1)))


def amount(count):
    return readable(count, (("MB", 1e6), ("KB", 1e3), ("bytes", 1)))


def verdict(is_met):
    return "met" if is_met else "**missed**"


def main():
    times, memory, machine = medians(sys.argv[1])
    print("# Performance\n")
    print("Written by `scripts/bench`; not to be edited. Each row was measured side by side in one run: the median of")
    print("25 repetitions in random order, in five processes, in processor time, over simulated cameras and generated")
    print("descriptions; a start of the program in elapsed time, each in a process of its own, on a display of Xvfb.\n")
    print(f"{machine['num_cpus']} processors of {machine['mhz_per_cpu']} MHz, {datetime.date.today().isoformat()}.\n")
    print("| What | Time | Against | Time | Ratio | At most | |")
    print("|---|---|---|---|---|---|---|")
    for what, ours, against, baseline, budget in ROWS:
        ratio = times[ours] / times[baseline]
        outcome = "" if budget is None else verdict(ratio <= budget)
        print(f"| {what} | {duration(times[ours])} | {against} | {duration(times[baseline])} "
              f"| {ratio:.2f} | {budget or ''} | {outcome} |")

    print("\nMemory that is held. An opened camera has its node map and ten features read (or the few that the")
    print("smallest description has); pugixml has the document alone.\n")
    print("| What | Memory | Against | Memory | Ratio | At most | |")
    print("|---|---|---|---|---|---|---|")
    for what, ours, against, baseline, budget in MEMORY_ROWS:
        ratio = memory[ours] / memory[baseline]
        limit, outcome = "", ""
        if budget is not None:
            share, each = budget
            limit = f"{share}, and {each >> 10} KiB a camera"
            outcome = verdict(memory[ours] <= share * memory[baseline] + CAMERAS * each)
        print(f"| {what} | {amount(memory[ours])} | {against} | {amount(memory[baseline])} "
              f"| {ratio:.2f} | {limit} | {outcome} |")
    print_reads(sys.argv[1])


main()
