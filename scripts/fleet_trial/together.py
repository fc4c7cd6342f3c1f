# SPDX-License-Identifier: MIT
"""A rotation beside 40 lists and other rotations, which wait or are refused."""
import collections
import concurrent.futures
import time

from floor import PATIENCE_S, Floor, Trial, numbered

LATENCY_MS = 8  # so that the first rotation takes longer than the last instant below
AT_ONCE = 8  # lists


def end_of(process):
    output, errors = process.communicate(timeout=PATIENCE_S)
    return process.returncode, output.decode(), errors.decode()


def await_lock(floor):
    """Until the first rotation has begun to write."""
    for _ in range(PATIENCE_S * 100):
        if floor.journal():
            return
        time.sleep(0.01)
    raise RuntimeError("The first rotation never began.")


def together(folder, _seed, is_short):
    trial = Trial("Together")
    count, lists, instants = (20, 8, (0,)) if is_short else (300, 40, (0, 35))
    floor = Floor(folder, numbered(count), LATENCY_MS)
    change = ["change", "--all", "--passwords", floor.passwords(), "--json"]
    with concurrent.futures.ThreadPoolExecutor(AT_ONCE + 2) as pool:
        first = pool.submit(floor.run, *change, "--wait", "600")
        await_lock(floor)
        begin = time.monotonic()
        listed = [pool.submit(floor.run, "list", "--json") for _ in range(lists)]
        for instant in instants:
            time.sleep(max(0.0, begin + instant - time.monotonic()))
            is_going = not first.done()
            second = end_of(floor.start(*change))
            trial.expect(is_going, f"the first rotation had ended after {instant} s, too early for this trial")
            trial.expect_equal(f"A second rotation, {instant} s after the first began: status", second[0], 6)
        waiting = pool.submit(floor.run, *change, "--wait", "600")
        is_going = not first.done()
        third, run = waiting.result(), first.result()
    trial.expect(is_going, "the first rotation had ended before the third came")
    results = collections.Counter(line["result"] for line in run.outcomes().values())
    trial.tell("The first rotation, seconds", f"{run.seconds:.1f}")
    trial.expect_equal("The first rotation, status", run.status, 0)
    trial.expect_equal("Cameras that it changed", results["done"], count)
    results = collections.Counter(line["result"] for line in third.outcomes().values())
    trial.expect_equal("A rotation that waits for it: status", third.status, 0)
    trial.expect_equal("Cameras that it found changed", results["unchanged"], count)
    state = floor.truth()
    trial.expect(all(state[camera.id] == (camera.new, True) for camera in floor.cameras),
                 "a camera is not on its new password, or open")
    judge_lists(trial, [job.result() for job in listed], count)
    return trial


def judge_lists(trial, runs, count):
    trial.tell("Lists", len(runs))
    trial.expect_equal("Lists with another status than 0", sum(run.status != 0 for run in runs), 0)
    rows = [row for run in runs for row in run.objects()[0]["cameras"]]
    trial.expect_equal("Rows of cameras", len(rows), count * len(runs))
    trial.expect_equal("Rows that say `none`", sum("none" in (row["lock"], row["password"]) for row in rows), 0)
    unknown = [row for row in rows if row["lock"] == "unknown"]
    trial.tell("Rows that say `unknown`, for another run held the camera", len(unknown))
    trial.expect(all(row["reason"]["code"] == "held" for row in unknown), "a healthy camera was called anything else")
