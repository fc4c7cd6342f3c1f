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
from rogue import rogue
from rotation import rotation
from together import together
from truth import truth

TRIALS = {trial.__name__: trial for trial in (truth, rotation, kills, together, rogue, monitoring)}
HEADING = """# Trials of `torvane`

Written by `scripts/trial-fleet`; not to be edited. Whole runs of the release over [simulated cameras](simulator.md);
what is true of a camera is taken from the simulator's state and log, not from the program.

{processors} processors, {date}, seed {seed}{scale}.

Not run: serial numbers that are no UTF-8, which a configuration of the simulator can't hold; a firmware version that is
none stood on the rogue floor.
"""


def page(results, options):
    scale = ", in the short form" if options.short else ""
    print(HEADING.format(processors=os.cpu_count(), date=datetime.date.today(), seed=options.seed, scale=scale))
    missing = [name for name in TRIALS if name not in results]
    if missing:
        print(f"Not run either: {', '.join(missing)}.\n")
    for trial, seconds, about in results.values():
        print(f"## {trial.title}\n\n{about.strip()}\n\n| What | Found |\n|---|---|")
        for what, value in trial.figures:
            print(f"| {what} | {value} |")
        verdict = "None: passed" if not trial.faults else f"**{len(trial.faults)}**"
        print(f"| Faults | {verdict} |\n| Seconds of this trial | {seconds:.0f} |\n")
        for fault in trial.faults:
            print(f"- {fault}")
        if trial.faults:
            print()


def main():
    parser = argparse.ArgumentParser(prog="scripts/trial-fleet", description=__doc__)
    parser.add_argument("trials", nargs="*", metavar="TRIAL", help=f"which of {', '.join(TRIALS)}; all of them if none")
    parser.add_argument("--short", action="store_true", help="a tenth of it, in less than a minute")
    parser.add_argument("--seed", type=int, default=20261125, help="of what is random (default %(default)s)")
    parser.add_argument("--keep", action="store_true", help="keep the folder of the runs")
    options = parser.parse_args()
    if unknown := set(options.trials) - set(TRIALS):
        parser.error(f"there is no trial {', '.join(sorted(unknown))}")
    scratch = pathlib.Path(tempfile.mkdtemp(prefix="torvane-trial-"))
    results = {}
    for name in options.trials or TRIALS:
        print(f"Trial: {name}", file=sys.stderr, flush=True)
        begin = time.monotonic()
        try:
            trial = TRIALS[name](scratch / name, options.seed, options.short)
        except Exception as error:  # a program that crashed gives no JSON, and the other trials are still to be made
            traceback.print_exc()
            trial = Trial(name.capitalize(), faults=[f"broke off: {error!r}"])
        results[name] = trial, time.monotonic() - begin, sys.modules[name].__doc__
        for fault in trial.faults:
            print(f"  fault: {fault}", file=sys.stderr, flush=True)
    page(results, options)
    if options.keep:
        print(f"The runs are kept in {scratch}", file=sys.stderr)
    else:
        shutil.rmtree(scratch)
    return any(trial.faults for trial, _, _ in results.values())


if __name__ == "__main__":
    sys.exit(main())
