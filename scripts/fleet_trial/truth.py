# SPDX-License-Identifier: MIT
"""300 cameras in all states: do list and verify tell the truth of each?"""
import collections
import random

from floor import FACTORY, Floor, Trial, let_go, numbered, reason_of


def truth(folder, seed, is_short):
    trial = Trial("Truth")
    scale = 10 if is_short else 1
    shares = {"factory": 92, "factory_held": 4, "held": 12, "none": 12, "factory_word": 3, "user": 177}
    if is_short:
        shares = {name: -(-count // scale) for name, count in shares.items()}
    cameras = numbered(sum(shares.values()))
    kinds = [name for name, count in shares.items() for _ in range(count)]
    random.Random(seed).shuffle(kinds)
    kind_of = {camera.id: kind for camera, kind in zip(cameras, kinds)}
    for camera in cameras:
        kind = kind_of[camera.id]
        camera.lock = {"factory": "default", "factory_held": "default", "none": "none"}.get(kind, "locked")
        camera.old = FACTORY if kind.startswith("factory") else camera.old
    floor = Floor(folder, cameras)
    holder = floor.hold([camera for camera in cameras if kind_of[camera.id].endswith("held")])
    held = shares["factory_held"] + shares["held"]

    listed = floor.run("list", "--json")
    rows = {camera["id"]: camera for camera in listed.objects()[0]["cameras"]}
    trial.expect_equal("`list`, status", listed.status, 0)
    counts = collections.Counter(row["password"] for row in rows.values())
    for word, wanted in (("factory", shares["factory"]), ("none", shares["none"]), ("unknown", held),
                         ("user", shares["user"] + shares["factory_word"])):
        trial.expect_equal(f"`list`, password `{word}`", counts[word], wanted)
    shown = {"factory": "factory", "none": "none", "factory_held": "unknown", "held": "unknown"}
    wrong = [name for name, kind in kind_of.items() if rows[name]["password"] != shown.get(kind, "user")]
    trial.expect_equal("`list`, cameras told wrongly", len(wrong), 0)
    trial.tell("`list`, seconds", f"{listed.seconds:.2f}")

    word = floor.secret_file("word", FACTORY)
    verified = floor.run("verify", "--all", "--password-file", word, "--json", "--wait", "600")
    outcomes = verified.outcomes()
    results = collections.Counter((line["result"], reason_of(line)) for line in outcomes.values())
    for what, wanted in ((("done", None), shares["factory"] + shares["factory_word"]),
                         (("failed", "wrong_password"), shares["user"]), (("failed", "held"), held),
                         (("skipped", "no_lock"), shares["none"])):
        trial.expect_equal(f"`verify` with the factory's word: {what[1] or what[0]}", results[what], wanted)
    trial.expect_equal("`verify`, status", verified.status, 3)
    wanted = {"factory": "done", "factory_word": "done", "none": "skipped"}
    wrong = [name for name, kind in kind_of.items() if outcomes[name]["result"] != wanted.get(kind, "failed")]
    trial.expect_equal("`verify`, cameras told wrongly", len(wrong), 0)
    trial.tell("`verify`, seconds, 5 of them for held cameras", f"{verified.seconds:.2f}")
    let_go(holder)
    state = floor.truth()
    trial.expect(all(state[camera.id] == (camera.old, True) for camera in cameras if camera.lock != "none"),
                 "verify changed a password or left a lock open")
    return trial
