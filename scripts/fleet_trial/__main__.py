# SPDX-License-Identifier: MIT
"""Runs the trials of torvane over simulated cameras and writes a page of what they found to standard output. Progress
and faults go to standard error; with a fault the status is 1."""
import argparse
import datetime
import os
import pathlib
import shutil
import sys
import tempfile
import time
import traceback

from floor import Trial
from kills import kills
from monitoring import monitoring
from playbook import playbook
from rogue import rogue
from rotation import rotation
from together import together
from truth import truth

TRIALS = {trial.__name__: trial for trial in (truth, rotation, kills, together, rogue, monitoring)}
ON_DEMAND = {playbook.__name__: playbook}  # what needs more than a build
HEADING = """# Trials of `torvane`

Written by `scripts/trial-fleet`; not to be edited. Whole runs of the release over [simulated cameras](simulator.md);
what is true of a camera is taken from the simulator's state and log, not from the program.

{processors} processors, {date}, seed {seed}{scale}.

Not run: serial numbers that are no UTF-8, which a configuration of the simulator can't hold; a firmware version that is
none stood on the rogue floor.
"""


def heading(options):
    scale = ", in the short form" if options.short else ""
    return HEADING.format(processors=os.cpu_count(), date=datetime.date.today(), seed=options.seed, scale=scale)


def section(trial, seconds, about):
    rows = [*trial.figures, ("Faults", f"**{len(trial.faults)}**" if trial.faults else "None: passed"),
            ("Seconds of this trial", f"{seconds:.0f}")]
    table = "".join(f"| {what} | {value} |\n" for what, value in rows)
    faults = "".join(f"- {fault}\n" for fault in trial.faults)
    text = f"{trial.title}\n\n{about.strip()}\n\n| What | Found |\n|---|---|\n{table}"
    return text + "\n" * bool(faults) + faults


def write_page(results, options):
    """To the page that is named, whose other sections stay; else to standard output."""
    first, sections = heading(options), {}
    if options.page and options.page.exists():
        old_first, *old = options.page.read_text().rstrip("\n").split("\n## ")
        sections = {text.partition("\n")[0]: text.strip() + "\n" for text in old}
        first = first if set(TRIALS) <= set(results) else old_first
    sections |= {result[0].title: section(*result) for result in results.values()}
    text = "\n## ".join([first.rstrip("\n") + "\n", *sections.values()])
    if options.page:
        options.page.write_text(text)
        return
    print(text)
    if missing := [name for name in TRIALS if name not in results]:
        print(f"Not run: {', '.join(missing)}.")


def main():
    parser = argparse.ArgumentParser(prog="scripts/trial-fleet", description=__doc__)
    parser.add_argument("trials", nargs="*", metavar="TRIAL",
                        help=f"which of {', '.join(TRIALS | ON_DEMAND)}; if none, all but {', '.join(ON_DEMAND)}")
    parser.add_argument("--short", action="store_true", help="a tenth of it, in less than a minute")
    parser.add_argument("--seed", type=int, default=20261125, help="of what is random (default %(default)s)")
    parser.add_argument("--page", type=pathlib.Path, help="write into this page instead, in which other sections stay")
    parser.add_argument("--keep", action="store_true", help="keep the folder of the runs")
    options = parser.parse_args()
    if unknown := set(options.trials) - set(TRIALS | ON_DEMAND):
        parser.error(f"there is no trial {', '.join(sorted(unknown))}")
    scratch = pathlib.Path(tempfile.mkdtemp(prefix="torvane-trial-"))
    results = {}
    for name in options.trials or TRIALS:
        print(f"Trial: {name}", file=sys.stderr, flush=True)
        begin = time.monotonic()
        try:
            trial = (TRIALS | ON_DEMAND)[name](scratch / name, options.seed, options.short)
        except Exception as error:  # a program that crashed gives no JSON, and the other trials are still to be made
            traceback.print_exc()
            trial = Trial(name.capitalize(), faults=[f"broke off: {error!r}"])
        results[name] = trial, time.monotonic() - begin, sys.modules[name].__doc__
        for fault in trial.faults:
            print(f"  fault: {fault}", file=sys.stderr, flush=True)
    write_page(results, options)
    if options.keep:
        print(f"The runs are kept in {scratch}", file=sys.stderr)
    else:
        shutil.rmtree(scratch)
    return any(trial.faults for trial, _, _ in results.values())


if __name__ == "__main__":
    sys.exit(main())
