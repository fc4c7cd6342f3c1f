# SPDX-License-Identifier: MIT
"""Measures `torvane list` and `torvane change` for 1 to 10,000 simulated cameras beside a bare program of the same GenTL
calls, and writes the figures into the page that is named, between its marks."""
import dataclasses
import datetime
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import time

from floor import BUILD, CTI, Floor, numbered

OLD = "hunter22"
RUNS = {1: 9, 10: 9, 100: 9, 1000: 5, 10_000: 3}  # the fewer, the longer they take
EARLIER = 4  # rotations of the same cameras in the journal: those of a year
BARE = str(BUILD / "bench" / "bare_fleet")
TORVANE = str(BUILD / "fleet" / "torvane")
MARKS = "<!-- written by scripts/trial-fleet --scale -->", "<!-- end of what scripts/trial-fleet --scale writes -->"
PAGE = """
{processors} processors, {date}; the load of the machine was {load}. Whole processes from start to end, the least of
{runs} runs by turns; the cameras answer at once, so that nothing hides what is not theirs. "Processor" is user and system
time together; memory is the most that the process had, the simulated cameras in it included.

{tables}
"""


@dataclasses.dataclass
class Cost:
    elapsed: float  # seconds
    processor: float  # seconds
    memory: float  # MiB

    def least(self, other):
        return Cost(*map(min, dataclasses.astuple(self), dataclasses.astuple(other)))


def cost_of(floor, *command, log=None):
    environment = floor.environment | ({"TORVANE_SIM_LOG": str(log)} if log else {})
    begin = time.monotonic()
    process = subprocess.Popen(command, env=environment, cwd=floor.work, stdin=subprocess.DEVNULL,
                               stdout=subprocess.DEVNULL)
    _, status, used = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise RuntimeError(f"{command} ended with status {process.returncode}")
    return Cost(time.monotonic() - begin, used.ru_utime + used.ru_stime, used.ru_maxrss / 1024)


def sync_seconds(folder, lines):
    """What the journal's lines cost by themselves: each is appended and synced."""
    path = folder / "synced"
    begin = time.monotonic()
    with open(path, "ab", buffering=0) as file:
        for _ in range(lines):
            file.write(b"x" * 230)
            os.fsync(file.fileno())
    path.unlink()
    return time.monotonic() - begin


def calls_of(log):
    """Functions and arguments, in order, but for handles and what the producer tells of itself."""
    calls = [line.split(" = ")[0] for line in log.read_text().splitlines() if not line.startswith("GCGetInfo")]
    return [re.sub(r"\bh\d+", "h", call) for call in calls]


class Scale:
    def __init__(self, folder, count):
        cameras = numbered(count, old=OLD)
        for camera in cameras:
            camera.new = f"new-{camera.id}"
        self.floor = Floor(folder, cameras)
        del self.floor.environment["TORVANE_SIM_STATE"]  # written anew at each change, as long as the floor
        self.ours = {"list": (TORVANE, "list", "--json"),
                     "change": (TORVANE, "change", "--all", "--passwords", self.floor.passwords(), "--json", "--wait",
                                "900")}
        self.bare = {"list": (BARE, str(CTI), "list"), "change": (BARE, str(CTI), "change", OLD)}
        self.journal = folder / "xdg" / "torvane" / "journal.jsonl"

    def compare(self):
        """That the bare program makes the same calls."""
        for command in self.ours:
            logs = [self.floor.folder / f"{command}.{side}" for side in ("ours", "bare")]
            for log, line in zip(logs, (self.ours[command], self.bare[command])):
                cost_of(self.floor, *line, log=log)
            if calls_of(logs[0]) != calls_of(logs[1]):
                raise RuntimeError(f"{command}: the bare program makes other calls than torvane: {logs}")

    def measure(self, command):
        self.journal.unlink(missing_ok=True)
        return cost_of(self.floor, *self.ours[command]), cost_of(self.floor, *self.bare[command])


def seconds(value):
    return f"{value:.3g} s" if value >= 1 else f"{value * 1000:.3g} ms"


def row(count, ours, bare, *more):
    cells = (f"{count:,}", seconds(ours.elapsed), seconds(bare.elapsed), *more, seconds(ours.processor),
             seconds(bare.processor), f"{ours.processor / bare.processor:.1f}", f"{ours.memory:.0f} MiB",
             f"{bare.memory:.0f} MiB")
    return "| " + " | ".join(cells) + " |"


def heading(command, *more):
    cells = ("Cameras", f"`{command}`", "bare", *more, "processor", "bare", "ratio", "memory", "bare")
    return "| " + " | ".join(cells) + " |\n|" + "---|" * len(cells)


def measure_all(scratch):
    lists, changes = [heading("list --json")], [heading("change", "as many syncs alone")]
    for count, runs in RUNS.items():
        print(f"{count} cameras", file=sys.stderr, flush=True)
        scale = Scale(scratch / str(count), count)
        if count <= 100:
            scale.compare()
        ours, bare = {}, {}
        synced = float("inf")
        for _ in range(runs):
            for command in scale.ours:
                one, other = scale.measure(command)
                ours[command] = ours.get(command, one).least(one)
                bare[command] = bare.get(command, other).least(other)
            synced = min(synced, sync_seconds(scale.floor.folder, 2 * count))
        lists.append(row(count, ours["list"], bare["list"]))
        changes.append(row(count, ours["change"], bare["change"], seconds(synced)))
    scale.journal.unlink()
    *_, last = (cost_of(scale.floor, *scale.ours["change"]) for _ in range(EARLIER + 1))
    size = scale.journal.stat().st_size / 2**20
    return "\n".join(lists), "\n".join(changes), (
        f"With {EARLIER} earlier rotations of the same {count:,} cameras in the journal, {size:.0f} MiB at the end, a "
        f"`change` of them takes {seconds(last.processor)} of the processor and {last.memory:.0f} MiB.")


def main():
    page = pathlib.Path(sys.argv[1])
    before, rest = page.read_text().split(MARKS[0])
    after = rest.split(MARKS[1])[1]
    load = os.getloadavg()[1]
    with tempfile.TemporaryDirectory(prefix="torvane-scale-") as scratch:
        tables = measure_all(pathlib.Path(scratch))
    told = PAGE.format(processors=os.cpu_count(), date=datetime.date.today(), tables="\n\n".join(tables),
                       load=f"{load:.1f} before and {os.getloadavg()[1]:.1f} after",
                       runs=", ".join(map(str, sorted(set(RUNS.values()), reverse=True))))
    page.write_text(before + MARKS[0] + told + MARKS[1] + after)


if __name__ == "__main__":
    main()
