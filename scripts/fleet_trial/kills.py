# SPDX-License-Identifier: MIT
"""Rotations that are ended at random instants, by a signal that nobody can heed and by one that asks, and resumed."""
import collections
import random
import shutil
import signal
import time

from floor import PATIENCE_S, Camera, Floor, Trial, agrees, reason_of

LATENCY_MS = 2
# With unlocked cameras a run needs --relock; without, a camera that a kill left open must be locked again all the same.
LOCKS = (("locked", "unlocked", "default", "locked", "locked", "unlocked"),
         ("locked", "locked", "default", "locked", "locked", "default"))


def new_floor(folder, locks):
    cameras = [Camera(f"C{n}", lock=lock, more={"mac": f"02:00:00:00:00:{n:02x}"}) for n, lock in enumerate(locks)]
    return Floor(folder, cameras, LATENCY_MS)


def change(floor, which):
    relock = ["--relock"] if any(camera.lock == "unlocked" for camera in floor.cameras) else []
    return ["change", which, *relock, "--passwords", floor.passwords(), "--json", "--wait", "600"]


def phase(journal, count):
    """Where the run was when it ended."""
    events = collections.Counter(line["event"] for line in journal)
    if not events["run"]:
        return "before the first write"
    if events["intent"] > events["outcome"]:
        return "with a camera in hand"
    return "between two cameras" if events["outcome"] < count else "after the last camera"


class Round:
    def __init__(self, trial, name, floor):
        self.trial, self.name, self.floor = trial, name, floor

    def expect(self, is_kept, fault):
        self.trial.expect(is_kept, f"{self.name}: {fault}")

    def interrupt(self, how, after_s):
        """:return: the phase in which it ended"""
        process = self.floor.start(*change(self.floor, "--all"))
        time.sleep(after_s)
        process.send_signal(how)
        process.communicate(timeout=PATIENCE_S)
        journal = self.floor.journal()
        if how == signal.SIGTERM:
            # Before the program can heed a signal it ends by it, and has touched nothing.
            heeded = process.returncode in (0, 130) or (process.returncode == -how and not journal)
            self.expect(heeded, f"status {process.returncode} after SIGTERM")
            self.expect_locks()
        return phase(journal, len(self.floor.cameras))

    def expect_locks(self):
        state = self.floor.truth()
        moved = [camera.id for camera in self.floor.cameras if state[camera.id][1] != (camera.lock != "unlocked")]
        self.expect(not moved, f"locks not as they were: {moved}")

    def resume(self):
        has_begun = any(line["event"] == "run" for line in self.floor.journal())
        run = self.floor.run(*change(self.floor, "--resume" if has_begun else "--all"))
        self.expect(run.status == 0, f"--resume: {run.told()}; "
                    f"{[(name, line['result'], reason_of(line)) for name, line in run.outcomes().items()]}")
        unknown = [name for name, line in run.outcomes().items() if line["in_force"] not in ("old", "new")]
        self.expect(not unknown, f"in_force unknown after --resume: {unknown}")
        return run

    def judge(self):
        outcomes = collections.defaultdict(list)
        for line in self.floor.journal():
            if line["event"] == "outcome":
                outcomes[line["id"]].append(line)
        state = self.floor.truth()
        for camera in self.floor.cameras:
            told = outcomes[camera.id]
            self.expect(len(told) == 1, f"{camera.id} has {len(told)} outcomes")
            self.expect(all(agrees(line, camera, state) for line in told), f"{camera.id}: the journal is wrong")
            self.expect(state[camera.id][0] == camera.new, f"{camera.id} was not changed in the end")
        self.expect_locks()


def kills(folder, seed, is_short):
    trial = Trial("Kills")
    rounds = 5 if is_short else 100
    whole = new_floor(folder / "whole", LOCKS[0])
    duration = whole.run(*change(whole, "--all")).seconds
    trial.tell("A whole run, seconds", f"{duration:.2f}")
    chance = random.Random(seed)
    for how in (signal.SIGKILL, signal.SIGTERM):
        phases = collections.Counter()
        for number in range(rounds):
            place = folder / f"{how.name}-{number}"
            found = len(trial.faults)
            one = Round(trial, place.name, new_floor(place, LOCKS[number % len(LOCKS)]))
            phases[one.interrupt(how, chance.uniform(0, duration))] += 1
            one.resume()
            one.judge()
            if len(trial.faults) == found:
                shutil.rmtree(place)
        trial.tell(f"{how.name}, rounds", rounds)
        for name, count in sorted(phases.items()):
            trial.tell(f"{how.name} {name}", count)
    return trial
