#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the performance page from the JSON results of the benchmarks, to standard output.

report.py FOLDER: the folder holds one file for each program.
"""
import datetime
import json
import pathlib
import sys

# What is measured, ours, what it is measured against, the budget for the ratio, and why it is there.
ROWS = [
    ("A register read through the port", "portRead", "the producer's GCReadPort, called directly", "bareReadPort", 1.05),
    ("A quiet pass over 1,000 known cameras", "quietPass<1000>", "a bare loop of the same GenTL calls",
     "bareEnumeration<1000>", 1.2),
    ("A quiet pass over 10,000 known cameras", "quietPass<10000>", "one over 1,000", "quietPass<1000>", 11),
    ("The bare loop over 10,000 cameras", "bareEnumeration<10000>", "one over 1,000: what the producer and the "
     "machine's caches make of it", "bareEnumeration<1000>", None),
]


def medians(folder):
    """The median time of each benchmark, in nanoseconds, and the machine that measured."""
    times, machine = {}, {}
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        run = json.loads(path.read_text())
        machine = run["context"]
        for entry in run["benchmarks"]:
            if entry.get("aggregate_name") == "median":
                scale = {"ns": 1, "us": 1e3, "ms": 1e6}[entry["time_unit"]]
                times[entry["run_name"].split("/")[0]] = entry["cpu_time"] * scale
    return times, machine


def readable(nanoseconds):
    for unit, size in (("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def main():
    times, machine = medians(sys.argv[1])
    print("# Performance\n")
    print("Written by `scripts/bench`; not to be edited. Each row was measured side by side in one run: the median of")
    print("15 repetitions in random order, in processor time, over the simulated cameras.\n")
    print(f"{machine['num_cpus']} processors of {machine['mhz_per_cpu']} MHz, {datetime.date.today().isoformat()}.\n")
    print("| What | Time | Against | Time | Ratio | At most | |")
    print("|---|---|---|---|---|---|---|")
    for what, ours, against, baseline, budget in ROWS:
        ratio = times[ours] / times[baseline]
        verdict = "" if budget is None else "met" if ratio <= budget else "**missed**"
        print(f"| {what} | {readable(times[ours])} | {against} | {readable(times[baseline])} "
              f"| {ratio:.2f} | {budget or ''} | {verdict} |")


main()
