# SPDX-License-Identifier: MIT
"""A rotation of 300 cameras of 5 ms a register with faults of five kinds, and others that were not chosen."""
import random

from floor import MARK, Camera, Floor, Trial, agrees, let_go, numbered, reason_of
from producer import bare_loop_seconds, calls_of, opens_of, strayed
from watch import Watch, files_with

AT_MOST = 1.2
HELD_WAIT_S = 5
LATENCY_MS = 5
LOCK_STATE, NEW_PASSWORD, UNLOCK = 0x50001000, 0x50002000, 0x50002040
# What each kind has to end with: reason, and what may be in force.
WANTED = {"healthy": (None, {"new"}), "held": ("held", {"old"}), "read-only": ("read_only", {"old"}),
          "wrong old password": ("wrong_password", {"unknown"}), "reads fail": ("read_failed", {"old"}),
          "reads fail on the way": ("read_failed", {"old", "unknown"}),
          "new password does not arrive": ("write_failed", {"old"}),
          "old password does not arrive": ("write_failed", {"old"})}


def assign(cameras, each, chance):
    """:return: the kind of each camera by its identifier, and the failures of the simulator that make it so"""
    faulty = [kind for kind in WANTED if kind != "healthy" for _ in range(each)]
    kinds = faulty + ["healthy"] * (len(cameras) - len(faulty))
    chance.shuffle(kinds)
    failures = []
    for camera, kind in zip(cameras, kinds):
        fault = {"id": camera.id, "code": -1011, "count": 0}
        if kind == "read-only":
            camera.access = "readonly"
        elif kind.startswith("reads fail"):
            first = chance.randint(2, 6) if kind.endswith("way") else 1
            failures.append(fault | {"function": "GCReadPort", "address": LOCK_STATE, "first": first})
        elif kind.endswith("arrive"):
            address = NEW_PASSWORD if kind.startswith("new") else UNLOCK
            failures.append(fault | {"function": "GCWritePort", "address": address, "first": 1})
    return {camera.id: kind for camera, kind in zip(cameras, kinds)}, failures


def make_vault(floor, kind_of):
    """A file for each secret, which the commands print."""
    vault = floor.folder / "vault"
    vault.mkdir(mode=0o700)
    for camera in floor.cameras:
        wrong = "-wrong" if kind_of.get(camera.id) == "wrong old password" else ""
        (vault / f"{camera.serial}.old").write_text(camera.old + wrong + "\n")
        (vault / f"{camera.serial}.new").write_text(camera.new + "\n")
    return vault


def judge_outcomes(trial, run, floor, kind_of):
    outcomes, state = run.outcomes(), floor.truth()
    trial.expect_equal("Status", run.status, 3)
    for kind, (reason, in_force) in WANTED.items():
        of_kind = [camera for camera in floor.cameras if kind_of.get(camera.id) == kind]
        right = [camera for camera in of_kind if (line := outcomes.get(camera.id)) and reason_of(line) == reason
                 and line["in_force"] in in_force and line["result"] == ("failed" if reason else "done")]
        trial.expect_equal(f"{kind.capitalize()}: told rightly of {len(of_kind)}", len(right), len(of_kind))
    liars = [camera.id for camera in floor.cameras
             if camera.id in outcomes and not agrees(outcomes[camera.id], camera, state)]
    trial.expect(not liars, f"in_force is not so: {liars}")
    unproved = [camera.id for camera in floor.cameras
                if kind_of.get(camera.id) == "healthy" and state[camera.id] != (camera.new, True)]
    trial.expect(not unproved, f"healthy cameras without the new password, or open: {unproved}")
    open_ones = [name for name, (_, is_locked) in state.items() if not is_locked]
    trial.expect(not open_ones, f"left open: {open_ones}")


def judge_traffic(trial, calls, floor, kind_of):
    opens = opens_of(calls)
    trial.tell("Most successful opens of a chosen camera", max(opens.values()))
    trial.expect(max(opens.values()) <= 2, "a camera was opened more than twice")
    trial.expect_equal("Opens of cameras that were not chosen", len(set(opens) - set(kind_of)), 0)
    own = [camera for camera in floor.cameras if kind_of.get(camera.id) != "wrong old password"]
    others = {camera.id for camera in floor.cameras} - {camera.id for camera in own}
    trial.expect_equal("Cameras that were sent the secret of another",
                       len(strayed([call for call in calls if call.camera not in others], own)), 0)


def judge_secrecy(trial, watch, run, floor):
    report = watch.report
    trial.tell("Looks at all processes' arguments and environment, mean and longest interval",
               f"{report['looks']}, {report['mean_ms']} ms, {report['longest_ms']} ms")
    trial.expect(not report["found"], f"a secret was seen: {report['found']}")
    where = files_with(MARK, floor.folder, {"simulator.log", "cameras.state", "cameras.toml"})
    where = [name for name in where if not name.endswith((".old", ".new"))]
    where += [name for name, text in (("output", run.output), ("errors", run.errors)) if MARK.encode() in text]
    logs, marked = watch.system_logs()
    trial.expect_equal("Secrets in output, errors, journal, audit and system's log", len(where + marked), 0)
    trial.tell("Logs of the system that were written meanwhile", ", ".join(logs) or "none")


def rotation(folder, seed, is_short):
    trial = Trial("Rotation")
    chosen, each, others = (30, 1, 3) if is_short else (300, 5, 10)
    cameras = numbered(chosen)
    kind_of, failures = assign(cameras, each, random.Random(seed))
    unchosen = [Camera(f"X{n}", model="SimCam G2") for n in range(others)]
    floor = Floor(folder, cameras + unchosen, LATENCY_MS, failures)
    vault = make_vault(floor, kind_of)
    holder = floor.hold([camera for camera in cameras if kind_of[camera.id] == "held"])
    log, audit = folder / "simulator.log", folder / "audit.jsonl"
    with Watch(MARK) as watch:
        run = floor.run("change", "--model", "SimCam G5", "--password-command", f"cat {vault}/{{serial}}.old",
                        "--new-password-command", f"cat {vault}/{{serial}}.new", "--audit", str(audit), "--json",
                        "--wait", "600", log=log)
        let_go(holder)
        calls = list(calls_of(log))
        bare = bare_loop_seconds(Floor(folder / "bare", cameras + unchosen, LATENCY_MS, failures), calls)
    judge_outcomes(trial, run, floor, kind_of)
    judge_traffic(trial, calls, floor, kind_of)
    judge_secrecy(trial, watch, run, floor)
    trial.expect_equal("Lines of the audit", len(audit.read_text().splitlines()), chosen)
    ours = run.seconds - HELD_WAIT_S
    trial.tell("Register accesses", sum(call.function.startswith("GC") for call in calls))
    trial.tell("Seconds, without the wait for held cameras", f"{ours:.2f}")
    trial.tell("Seconds of the bare loop of the same opens, accesses and closes", f"{bare:.2f}")
    trial.tell(f"Ratio, at most {AT_MOST}", f"{ours / bare:.2f}")
    trial.expect(ours <= bare * AT_MOST, f"{ours / bare:.2f} times the bare loop")
    return trial
