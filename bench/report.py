#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the performance page from the JSON results of the benchmarks, to standard output.

report.py FOLDER: the folder holds a file NAME.RUN.json for each run of each program.
"""
import collections
import dataclasses
import datetime
import json
import pathlib
import statistics
import sys


@dataclasses.dataclass
class Row:
    """What is measured, the benchmark that does so, what it is measured against, and that benchmark."""

    what: str
    ours: str
    against: str
    baseline: str
    at_most: float | None = None  # times the baseline
    besides: float = 0  # what may come on top of that, in the unit of the table
    besides_text: str = ""


@dataclasses.dataclass
class Table:
    """Rows of one measure: "time", or a counter that the benchmarks set, with the units for its values."""

    intro: str
    heading: str
    measure: str
    units: tuple[tuple[str, float], ...]
    rows: list[Row]


CAMERAS = 100

TABLES = [
    Table("", "Time", "time", (("s", 1e9), ("ms", 1e6), ("µs", 1e3), ("ns", 1)), [
        Row("A register read through the port", "portRead", "the producer's GCReadPort, called directly",
            "bareReadPort", 1.05),
        Row("A quiet pass over 1,000 known cameras", "quietPass<1000>", "a bare loop of the same GenTL calls",
            "bareEnumeration<1000>", 1.2),
        Row("A quiet pass over 10,000 known cameras", "quietPass<10000>", "one over 1,000", "quietPass<1000>", 11),
        Row("The bare loop over 10,000 cameras", "bareEnumeration<10000>", "one over 1,000: what the producer and the "
            "machine's caches make of it", "bareEnumeration<1000>"),
        Row(f"The first sight of {CAMERAS} cameras: list, probe, rows", "firstSight",
            "a bare loop of the same GenTL calls", "bareFirstSight", 1.1),
        Row("The same, of cameras that take 1 ms for a register, in elapsed time", "firstSightElapsed",
            "the bare loop", "bareFirstSightElapsed", 1.1),
        Row("`torvane_console --list-devices` over 10 cameras, the whole process", "listDevices",
            "a bare program of the same GenTL calls", "bareList", 1.2),
        Row("A description of 16 KB, to a node found by name", "firstLoad<16>", "pugixml with an index by name",
            "pugixmlWithIndex<16>"),
        Row("One of 160 KB", "firstLoad<160>", "pugixml", "pugixmlWithIndex<160>"),
        Row("One of 1.3 MB", "firstLoad<1300>", "pugixml", "pugixmlWithIndex<1300>", 1.5),
        Row("Another camera of the model, 16 KB", "furtherLoad<16>", "pugixml", "pugixmlWithIndex<16>"),
        Row("Another of 160 KB", "furtherLoad<160>", "pugixml", "pugixmlWithIndex<160>"),
        Row("Another of 1.3 MB, its bytes compared", "furtherLoad<1300>", "pugixml", "pugixmlWithIndex<1300>", 0.1),
        Row("That one from its bytes alone", "furtherLoadOfBytes<1300>", "a bare comparison of the same bytes",
            "bareComparison<1300>", 1.2),
        Row("The same from a text of its own, as the port hands it over", "furtherLoad<1300>",
            "a bare copy and comparison", "bareCopyAndComparison<1300>"),
        Row("The description of 16 KB", "firstLoad<16>", "Aravis", "aravisLoad<16>"),
        Row("The one of 160 KB", "firstLoad<160>", "Aravis", "aravisLoad<160>"),
        Row("The one of 1.3 MB", "firstLoad<1300>", "Aravis", "aravisLoad<1300>"),
        Row("First read of an integer behind a swiss knife", "firstRead<NodeMapCamera>", "Aravis",
            "firstRead<AravisCamera>"),
        Row("Repeated read, the register cached", "repeatedRead<NodeMapCamera>", "Aravis",
            "repeatedRead<AravisCamera>"),
        Row("The start of the program, to the first sight of its window", "torvaneWindow", "an empty window of Qt's",
            "emptyWindow", 1.5),
    ]),
    Table("Memory that is held. An opened camera has its node map and ten features read (or the few that the\n"
          "smallest description has); pugixml has the document alone.",
          "Memory", "bytes", (("MB", 1e6), ("KB", 1e3), ("bytes", 1)), [
        Row("An opened camera, description of 16 KB", "bytesOfOne<16>", "pugixml", "bytesOfOnePugixml<16>"),
        Row("An opened camera, 160 KB", "bytesOfOne<160>", "pugixml", "bytesOfOnePugixml<160>"),
        Row("An opened camera, 1.3 MB", "bytesOfOne<1300>", "pugixml", "bytesOfOnePugixml<1300>"),
        Row("The one of 16 KB", "bytesOfOne<16>", "Aravis", "bytesOfOneAravis<16>"),
        Row("The one of 160 KB", "bytesOfOne<160>", "Aravis", "bytesOfOneAravis<160>"),
        Row("The one of 1.3 MB", "bytesOfOne<1300>", "Aravis", "bytesOfOneAravis<1300>"),
        Row(f"{CAMERAS} opened cameras of one model, 1.3 MB", "bytesOfHundred<1300>", "one", "bytesOfOne<1300>",
            1.2, CAMERAS * 64 * 1024, ", and 64 KiB a camera"),
    ]),
]


class Results:
    """What was measured: by measure and benchmark, the values of each run. Times are in nanoseconds."""

    def __init__(self, folder):
        self.values = collections.defaultdict(lambda: collections.defaultdict(list))
        self.machine = {}
        for path in sorted(pathlib.Path(folder).glob("*.json")):
            results = json.loads(path.read_text())
            self.machine = results["context"]
            run = path.name.split(".")[1]
            for entry in results["benchmarks"]:
                if entry["run_type"] == "iteration" and not entry.get("error_occurred"):
                    self.add(entry, run)

    def add(self, entry, run):
        name = entry["run_name"].split("/")[0]
        scale = {"ns": 1, "us": 1e3, "ms": 1e6}[entry["time_unit"]]
        kind = "real_time" if "manual_time" in entry["run_name"] else "cpu_time"
        self.values["time", name][run].append(entry[kind] * scale)
        for table in TABLES:
            if table.measure in entry:
                self.values[table.measure, name][run].append(entry[table.measure])

    def median(self, measure, name):
        return statistics.median(value for run in self.values[measure, name].values() for value in run)

    def ratios(self, measure, ours, baseline):
        """The ratio of the medians of each process that ran both, ascending."""
        own, other = self.values[measure, ours], self.values[measure, baseline]
        return sorted(statistics.median(own[run]) / statistics.median(other[run]) for run in own if run in other)


def readable(value, units):
    for unit, size in units:
        if value >= size:
            break
    return f"{value / size:.3g} {unit}"


def line_of(row, table, results):
    ours, baseline = (results.median(table.measure, name) for name in (row.ours, row.baseline))
    ratios = results.ratios(table.measure, row.ours, row.baseline)
    limit, outcome = "", ""
    if row.at_most is not None:
        limit = f"{row.at_most}{row.besides_text}"
        outcome = "met" if ours <= row.at_most * baseline + row.besides else "**missed**"
    cells = (row.what, readable(ours, table.units), row.against, readable(baseline, table.units),
             f"{ours / baseline:.2f}", f"{ratios[0]:.2f} to {ratios[-1]:.2f}", limit, outcome)
    return "| " + " | ".join(cells) + " |"


def main():
    results = Results(sys.argv[1])
    print("# Performance\n")
    print("Written by `scripts/bench`; not to be edited. Each row was measured side by side in one run: the median of")
    print("25 repetitions in random order, in five processes, in processor time, over simulated cameras and generated")
    print("descriptions; a start of the program in elapsed time, each in a process of its own, on a display of Xvfb.")
    print("\"Of each process\" is the least and the greatest ratio that one of the five has by itself.\n")
    print(f"{results.machine['num_cpus']} processors of {results.machine['mhz_per_cpu']} MHz, "
          f"{datetime.date.today().isoformat()}.")
    for table in TABLES:
        if table.intro:
            print(f"\n{table.intro}")
        print(f"\n| What | {table.heading} | Against | {table.heading} | Ratio | Of each process | At most | |")
        print("|---|---|---|---|---|---|---|---|")
        for row in table.rows:
            print(line_of(row, table, results))


main()
