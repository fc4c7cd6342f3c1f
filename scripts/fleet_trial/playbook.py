# SPDX-License-Identifier: MIT
"""The Ansible collection's playbook over PCs that are reached by SSH, each an sshd of its own on the loopback interface with
namespaces and cameras of its own. One PC is off, and two cameras are held."""
import collections
import contextlib
import dataclasses
import shutil

from controller import Controller
from floor import BUILD, MARK, Camera, Trial, let_go, reason_of
from pc import PRIVILEGE_FOLDER, Pc, key_in, what_is_missing
from watch import SystemLog, Watch

LATENCY_MS = 5
AT_MOST_S = 60
SIZES = (2, 6, 12)  # PCs whose playbook is timed
PAPER_SIZES = (100, 1000)  # PCs of which the controller's own part is


@dataclasses.dataclass
class Stage:
    pcs: list
    controller: Controller
    cameras: list

    def written(self):
        return sum(pc.written() for pc in self.pcs)


@contextlib.contextmanager
def stage(folder, count, cameras_each):
    """So many PCs, which are switched off."""
    keys = folder / "keys"
    keys.mkdir(parents=True)
    for name in ("host", "user"):
        key_in(keys, name)
    had_folder = PRIVILEGE_FOLDER.exists()
    PRIVILEGE_FOLDER.mkdir(exist_ok=True)
    pcs = [Pc(f"cam-pc-{pc:02}", folder / f"cam-pc-{pc:02}", keys,
              [Camera(f"C{pc:02}{n:02}") for n in range(cameras_each)], LATENCY_MS) for pc in range(1, count + 1)]
    try:
        yield Stage(pcs, Controller(folder / "controller", keys), [camera for pc in pcs for camera in pc.cameras])
    finally:
        for pc in pcs:
            pc.switch_off()
        if not had_folder:
            PRIVILEGE_FOLDER.rmdir()


@dataclasses.dataclass
class Twin:
    """A PC under another name."""

    port: int
    name: str = "cam-pc-twin"


def statuses(played):
    return {host: told["status"] for host, told in played.report.get("hosts", {}).items()}


def counted(played):
    return dict(collections.Counter(line["result"] for line in played.lines().values()))


def told(counts):
    return ", ".join(f"{count} {what}" for what, count in sorted(counts.items()))


def cost(played):
    return f"{played.seconds:.1f}; {played.processor_s:.1f}; {played.megabytes:.0f} MB"


def changed_pcs(played):
    return sum(counts["changed"] > 0 for counts in played.recap().values())


def judge_refusals(trial, set_up):
    canary, second = set_up.pcs[:2]
    set_up.controller.inventory([canary, second])
    played = set_up.controller.play(ANSIBLE_PIPELINING="false")
    trial.expect(statuses(played) == {canary.name: "failed", second.name: "not_reached"},
                 f"without pipelining: {statuses(played)}")
    trial.expect("pipelining is off" in played.output, "the refusal does not name pipelining")
    set_up.controller.inventory([canary, second, Twin(second.port)])
    for arguments in ((), ("--tags", "torvane_pcs")):
        played = set_up.controller.play(*arguments)
        trial.expect(f"so nothing was written: {{'{second.cameras[0].serial}': " in played.output,
                     f"a serial on two PCs was not refused {arguments}")
    trial.expect_equal("Without pipelining, and with a serial number on two PCs: writes to cameras", set_up.written(), 0)


def judge_check_mode(trial, set_up):
    played = set_up.controller.play("--check", "--diff")
    answering = sum(len(pc.cameras) for pc in set_up.pcs if pc.process)
    trial.expect_equal("Check mode: cameras", told(counted(played)), f"{answering} would")
    played = set_up.controller.play("--check", "--extra-vars", '{"torvane_select": {"factory": true}}')
    trial.expect_equal("The same for those on the factory password, of which there is none", told(counted(played)) or "none", "none")
    trial.expect("failed" not in statuses(played).values(), f"none on the factory password: {statuses(played)}")
    trial.expect_equal("Check mode: writes to cameras", set_up.written(), 0)


def judge_canary(trial, set_up, what, *arguments):
    """Something is wrong on the canary, so the others are left alone."""
    canary, *others = set_up.pcs
    before = sum(pc.written() for pc in others)
    played = set_up.controller.play(*arguments)
    wanted = {canary.name: "failed"} | {pc.name: "not_reached" for pc in others}
    trial.expect(statuses(played) == wanted, f"{what}: {statuses(played)}")
    trial.expect_equal(f"{what}: writes to cameras of the others", sum(pc.written() for pc in others) - before, 0)


def judge_held_canary(trial, set_up):
    canary = set_up.pcs[0]
    holder = canary.hold(canary.cameras[:1])
    judge_canary(trial, set_up, "A held camera on the canary")
    let_go(holder)


def judge_broken_canary(trial, set_up):
    canary = set_up.pcs[0]
    broken = canary.folder / "broken"
    broken.write_text(f"""#!/bin/sh
[ "$(hostname) $1" != "{canary.name} change" ] || {{ printf '{{"serial": "C'; exit 139; }}
exec {BUILD / "fleet" / "torvane"} "$@"
""")
    broken.chmod(0o755)
    judge_canary(trial, set_up, "A program that breaks on the canary", "--extra-vars", f"torvane_executable={broken}")


def judge_run(trial, what, played, set_up, held):
    """:param held: identifiers; what was neither held nor on a PC that is off is on its new password"""
    off = [pc.name for pc in set_up.pcs if not pc.process]
    trial.tell(f"{what}: seconds", f"{played.seconds:.1f}")
    trial.tell(f"{what}: cameras", told(counted(played)))
    trouble = {pc.name: "failed" for pc in set_up.pcs if set(held) & {camera.id for camera in pc.cameras}}
    trouble |= dict.fromkeys(off, "unreachable")
    wanted = {pc.name: trouble.get(pc.name, "ok") for pc in set_up.pcs}
    trial.expect(statuses(played) == wanted, f"{what}: the report has {statuses(played)} instead of {wanted}")
    recap = played.output[played.output.find("TASK [Tell what"):]
    nameless = [name for name in (*held, *off) if name not in recap]
    trial.expect(not nameless, f"{what}: the recap does not name {nameless}")
    trial.expect((played.status != 0) == bool(trouble), f"{what}: status {played.status}")
    lines = played.lines()
    wrong = [line["serial"] for line in lines.values() if (reason_of(line) == "held") != (line["serial"] in held)]
    trial.expect(not wrong, f"{what}: told wrongly of {wrong}")
    for pc in set_up.pcs:
        truth = pc.truth()
        for camera in pc.cameras:
            secret = camera.old if camera.id in held or pc.name in off else camera.new
            trial.expect(truth[camera.id] == (secret, True), f"{what}: {camera.id} is on another password, or open")


def judge_secrecy(trial, watch, log, played, set_up):
    report = watch.report
    trial.tell("Looks at arguments, environments and files, mean and longest interval",
               f"{report['looks']}, {report['mean_ms']} ms, {report['longest_ms']} ms")
    trial.expect(not report["found"], f"a secret was seen: {report['found'][:5]}")
    _, marked = watch.system_logs()
    trial.expect(not marked, f"a secret is in {marked}")
    if log.socket:
        trial.expect(log.text.count(b"Invoked with") >= len(set_up.pcs), "the modules were not seen in the system's log")
    count = played.output.count(MARK) + log.text.count(MARK.encode())
    trial.expect_equal("Secrets in the output of -vvv, in logs, arguments, environments and files",
                       count + len(report["found"]), 0)


def watched(set_up):
    """Places that no secret may come to. The simulator's own files have them all."""
    return ["/tmp/*ansible*", "/var/tmp/*ansible*", str(set_up.controller.folder),
            *(str(pc.folder / name) for pc in set_up.pcs for name in ("home", "tmp", "xdg", "sshd.log"))]


def run_loudly(trial, set_up, what, held):
    with Watch(MARK, watched(set_up)) as watch, SystemLog() as log:
        played = set_up.controller.play("-vvv", "--diff")
    judge_run(trial, f"{what} with -vvv", played, set_up, held)
    judge_secrecy(trial, watch, log, played, set_up)
    return played


def judge_again(trial, set_up, held):
    played = set_up.controller.play()
    judge_run(trial, "The same again", played, set_up, held)
    trial.expect_equal("The same again: PCs that changed", changed_pcs(played), 0)


def time_sizes(trial, set_up):
    """:return: a line of a camera, as the last run told it"""
    secrets = {camera.serial: camera.new for camera in set_up.cameras}
    for size in SIZES:
        chosen = set_up.pcs[:size]
        serials = [camera.serial for pc in chosen for camera in pc.cameras]
        set_up.controller.inventory(chosen)
        set_up.controller.vault(secrets, new := {serial: f"{MARK}-{size}-{serial}" for serial in serials})
        played = set_up.controller.play()
        trial.expect(counted(played) == {"done": len(serials)}, f"{size} PCs: {counted(played)}")
        trial.tell(f"{size} PCs, {len(serials)} cameras: seconds; the controller's processor seconds; its memory", cost(played))
        secrets |= new
    return next(iter(played.lines().values()))


def time_controller(trial, controller, line, cameras_each):
    """What is left for the controller where the PCs have told their results already, so that none is asked."""
    for size in PAPER_SIZES:
        names = [f"pc-{number:04}" for number in range(size)]
        results = {name: {"status": 0, "changed": True, "cameras": [line | {"serial": f"{name}-{camera}"}
                                                                    for camera in range(cameras_each)]} for name in names}
        serials = [camera["serial"] for result in results.values() for camera in result["cameras"]]
        controller.keep({"cameras": {"hosts": {name: {"torvane_looked": result, "torvane_changed": result}
                                               for name, result in results.items()}}})
        controller.vault(*({serial: f"{MARK}-{word}-{serial}" for serial in serials} for word in ("old", "new")))
        played = controller.play("--skip-tags", "torvane_pcs", forks=50)
        trial.expect(counted(played) == {"done": len(serials)}, f"{size} PCs on paper: {counted(played)}")
        trial.tell(f"{size} PCs, {len(serials)} cameras, without asking a PC, 50 forks: the same", cost(played))


def playbook(folder, _seed, is_short):
    trial = Trial("The playbook over SSH")
    missing = what_is_missing() or ("" if shutil.which("ansible-playbook") else "there is no ansible-playbook")
    if missing:
        trial.tell("Not run", missing)
        return trial
    with stage(folder, *((2, 5) if is_short else (12, 25))) as set_up:
        set_up.controller.vault({camera.serial: camera.old for camera in set_up.cameras},
                                {camera.serial: camera.new for camera in set_up.cameras})
        for pc in set_up.pcs if is_short else set_up.pcs[:-1]:
            pc.switch_on()
        judge_refusals(trial, set_up)
        set_up.controller.inventory(set_up.pcs)
        judge_check_mode(trial, set_up)
        if is_short:
            run_loudly(trial, set_up, "A run", [])
            judge_again(trial, set_up, [])
            judge_broken_canary(trial, set_up)
        else:
            whole(trial, set_up)
    return trial


def whole(trial, set_up):
    held = [set_up.pcs[4].cameras[7].id, set_up.pcs[8].cameras[0].id]
    holders = [pc.hold([camera for camera in pc.cameras if camera.id in held]) for pc in (set_up.pcs[4], set_up.pcs[8])]
    played = set_up.controller.play()
    judge_run(trial, "A run, one PC off, two cameras held", played, set_up, held)
    trial.expect(played.seconds <= AT_MOST_S, f"a run took more than {AT_MOST_S} s")
    judge_again(trial, set_up, held)
    for holder in holders:
        let_go(holder)
    set_up.pcs[-1].switch_on()
    played = run_loudly(trial, set_up, "What was left", [])
    trial.expect_equal("What was left: PCs that changed", changed_pcs(played), 3)
    judge_held_canary(trial, set_up)
    judge_broken_canary(trial, set_up)
    line = time_sizes(trial, set_up)
    time_controller(trial, set_up.controller, line, len(set_up.pcs[0].cameras))
