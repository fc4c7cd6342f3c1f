# SPDX-License-Identifier: MIT
"""The modules of the Ansible collection as programs, over simulated cameras: what they make of options, and what they tell.
The playbook over SSH is tried by scripts/fleet_trial/playbook.py."""
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "scripts" / "fleet_trial"))
from floor import BUILD, CTI, FACTORY, Camera, Floor  # noqa: E402

PYTHON = "/usr/bin/python3"  # the one that has Ansible


class ModulesTest(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="torvane-modules-")
        self.addCleanup(scratch.cleanup)
        self.folder = pathlib.Path(scratch.name)
        (self.folder / "ansible_collections" / "torvane").mkdir(parents=True)
        (self.folder / "ansible_collections" / "torvane" / "cameras").symlink_to(ROOT / "packaging" / "ansible")

    def stand_on(self, *cameras, latency_ms=0):
        self.floor = Floor(self.folder / "floor", cameras, latency_ms)
        self.log = self.folder / "simulator.log"

    def module(self, name="torvane_cameras", check=False, **options):
        arguments = {"executable": str(BUILD / "fleet" / "torvane"), "_ansible_check_mode": check} | options
        arguments |= {"wait": 600} if name == "torvane_cameras" else {}  # other tests run on the PC too
        path = f"{self.folder}:/usr/lib/python3/dist-packages"
        done = subprocess.run(
            [PYTHON, str(ROOT / "packaging" / "ansible" / "plugins" / "modules" / f"{name}.py")],
            input=json.dumps({"ANSIBLE_MODULE_ARGS": arguments}), capture_output=True, text=True, check=False,
            env=self.floor.environment | {"PYTHONPATH": path, "TORVANE_SIM_LOG": str(self.log)})
        self.assertTrue(done.stdout.strip(), done.stderr)
        return json.loads(done.stdout.strip())

    def results(self, told):
        return {line["serial"]: line["result"] for line in told["cameras"]}

    def test_results_stay_readable_whatever_the_passwords(self):
        """Passwords that are words of the results, or the serial number; and a camera whose user name is its password."""
        self.stand_on(Camera("A1", old="done"), Camera("A2", old="A2x"),
                      Camera("A3", more={"user_name": "wall of zq7Kp-old-A3"}))
        new = {"A1": "locked", "A2": "new", "A3": "user"}
        told = self.module(passwords={"A1": "done", "A2": "A2x", "A3": "zq7Kp-old-A3"}, new_passwords=new)
        self.assertEqual([(line["serial"], line["result"], line["in_force"], line["lock"]) for line in told["cameras"]],
                         [(serial, "done", "new", "locked") for serial in new])
        self.assertEqual(told["cameras"][2]["user_name"], "(hidden: a secret is part of it)")
        self.assertNotIn("zq7Kp", json.dumps(told))
        self.assertEqual(set(told["invocation"]["module_args"]["new_passwords"].values()),
                         {"VALUE_SPECIFIED_IN_NO_LOG_PARAMETER"})

    def test_a_change_then_a_lock(self):
        """One line each of two calls. The unlocked one is proved by locking it, since it is to be locked."""
        self.stand_on(Camera("A1"), Camera("A2", lock="unlocked"), Camera("A3", old="unknown to us"),
                      Camera("A4", lock="default"))
        passwords = {camera.serial: camera.old for camera in self.floor.cameras[:2]} | {"A3": "wrong one"}
        new = {camera.serial: camera.new for camera in self.floor.cameras}
        for wanted, is_changed in (("done", True), ("unchanged", False)):
            told = self.module(passwords=passwords, new_passwords=new, select={"all": True}, state="locked")
            self.assertEqual(self.results(told), {"A1": wanted, "A2": wanted, "A3": "failed", "A4": wanted})
            self.assertEqual((told["failed"], told["changed"], told["status"]), (True, is_changed, 3))
            self.assertIn("1 of 4 cameras failed:\nA3: wrong_password: ", told["msg"])
        truth = self.floor.truth()
        self.assertEqual([truth[name] for name in ("A1", "A2", "A4")], [(new[name], True) for name in ("A1", "A2", "A4")])
        told = self.module(passwords=passwords | {"A1": new["A1"], "A4": FACTORY}, state="unlocked",
                           new_passwords={"A1": "zq7Kp-3", "A4": new["A4"]})
        self.assertEqual(self.results(told), {"A1": "done", "A4": "done", "A2": "failed", "A3": "failed"})
        self.assertEqual({line["serial"]: line["in_force"] for line in told["cameras"]}["A1"], "new")
        self.assertEqual(told["diff"]["after"].splitlines(), ["A1: password: new", "A1: lock: unlocked", "A4: lock: unlocked"])

    def test_off_the_factory_password_alone(self):
        self.stand_on(Camera("A1"), Camera("A2", lock="default"), Camera("A3", lock="none"),
                      Camera("A4", access="busy"))
        new = {camera.serial: camera.new for camera in self.floor.cameras}
        told = self.module(new_passwords=new, update_password="on_factory", select={"all": True})
        self.assertEqual(self.results(told), {"A1": "unchanged", "A2": "done", "A3": "skipped", "A4": "failed"})
        self.assertEqual(told["status"], 3)
        self.assertIn("A4: held: ", told["msg"])
        for select in (None, {"factory": True}):  # nobody is left on it, which is no fault
            told = self.module(new_passwords={"A2": new["A2"]}, update_password="on_factory", select=select)
            self.assertEqual((told.get("failed"), told["changed"]), (None, False), told.get("msg"))

    def test_check_mode_and_refusals_write_nothing(self):
        self.stand_on(Camera("A1"), Camera("A2", lock="unlocked"))
        old = {camera.serial: camera.old for camera in self.floor.cameras}
        told = self.module(check=True, passwords=old, select={"all": True}, state="unlocked")
        self.assertEqual(self.results(told), {"A1": "would", "A2": "unchanged"})
        self.assertEqual(told["diff"], {"before": "A1: lock: locked\n", "after": "A1: lock: unlocked\n"})
        told = self.module(check=True, passwords=old, new_passwords={"A1": "zq7Kp-1"}, state="unlocked")
        self.assertEqual(self.results(told), {"A1": "would", "A2": "unchanged"})
        for options, words in (
                ({"passwords": old, "new_passwords": {"A1": "zq7Kp-1", "A2": "zq7Kp-1"}, "relock": True},
                 "A2: rule: Another camera"),
                ({"new_passwords": {"A1": "zq7Kp-1", "B*": "zq7Kp-2"}}, "'B*' can't be chosen by its name"),
                ({"new_passwords": {"A1": "zq7Kp-1", "B7": "zq7Kp-2"}}, "No camera matches --serial B7."),
                ({"state": "locked", "select": {"serial": ["B7"], "unlocked": True}}, "No camera matches --serial B7."),
                ({"state": "locked"}, "No camera is chosen"),
                ({"new_passwords": {}, "select": {"all": True}, "relock": True}, "A1: no_secret: ")):
            told = self.module(**options)
            self.assertTrue(told.get("failed") and told["status"], told)
            self.assertIn(words, told["msg"])
        self.assertNotIn("GCWritePort", self.log.read_text())

    def test_what_a_killed_run_has_left_is_resumed(self):
        self.stand_on(Camera("A1"), Camera("A2"), latency_ms=40)
        process = self.floor.start("change", "--all", "--passwords", self.floor.passwords(), "--wait", "600")
        while not any(line["event"] == "intent" for line in self.floor.journal()) and process.poll() is None:
            time.sleep(0.01)
        process.send_signal(signal.SIGKILL)
        process.communicate()
        secrets = {"passwords": {camera.serial: camera.old for camera in self.floor.cameras},
                   "new_passwords": {camera.serial: camera.new for camera in self.floor.cameras}}
        told = self.module(**secrets)
        self.assertTrue(told.get("failed"), told)
        self.assertIn("A1: journal: A change of this camera was begun and has no outcome. Run change --resume first. "
                      "(In a task: resume: true.)", told["msg"])
        for is_changed in (True, False):  # nothing is left the second time, which is no fault
            told = self.module(resume=True, **secrets)
            self.assertEqual((told.get("failed"), told["changed"]), (None, is_changed), told.get("msg"))
        self.assertEqual(set(self.floor.truth().values()), {(camera.new, True) for camera in self.floor.cameras})

    def test_a_producer_that_fails(self):
        """The cameras of the others are changed, and it is told."""
        self.stand_on(Camera("A1", lock="default"))
        bad = self.folder / "bad.cti"
        bad.write_text("nothing")
        told = self.module(new_passwords={"A1": "zq7Kp-1"}, update_password="on_factory", library=[str(CTI), str(bad)])
        self.assertEqual((self.results(told), told["status"]), ({"A1": "done"}, 1))
        self.assertIn("bad.cti", told["msg"])

    def test_a_program_that_breaks_off(self):
        """What it told by then is handed on. Status 0 without its last line is no success."""
        self.stand_on(Camera("A1"))
        program = self.folder / "breaks"
        for cut, status, wanted in (("head -1; printf '{\"ser'; exit 139", 139, {"A1": "unchanged"}),
                                    ("head -1; exit 0", 1, {"A1": "unchanged"}), ("head -0; exit 0", 1, {})):
            program.write_text(f"#!/bin/sh\n{BUILD / 'fleet' / 'torvane'} \"$@\" | {cut}\n")
            program.chmod(0o755)
            told = self.module(executable=str(program), state="locked", select={"all": True})
            self.assertEqual((told.get("failed"), told["status"], self.results(told)), (True, status, wanted))
            self.assertIn("The program broke off", told["msg"])

    def test_the_list(self):
        self.stand_on(Camera("A1"), Camera("A2", lock="default"))
        for select, status, serials in ((None, 0, ["A1", "A2"]), ({"factory": True}, 0, ["A2"]), ({"unlocked": True}, 4, []),
                                        ({"serial": ["B7"]}, 4, []), ({"serial": ["B7"], "factory": True}, 4, [])):
            told = self.module("torvane_cameras_info", select=select)
            self.assertEqual((told["status"], [row["serial"] for row in told["cameras"]]), (status, serials))
            self.assertEqual(told.get("failed", False), bool(select and "serial" in select), told)


if __name__ == "__main__":
    unittest.main()
