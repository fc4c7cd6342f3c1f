# SPDX-License-Identifier: MIT
"""Cameras that say of themselves what might steer a command, a terminal or a secret."""
import json
import os
import pty
import re
import shutil

from floor import CTI, Camera, Floor, Trial, agrees, reason_of
from producer import calls_of, strayed

# What the program itself may send to a terminal: line ends and, for its progress, the return and the erasure of a line.
OWN_CONTROLS = re.compile(rb"\r\x1b\[K|\r|\n")
CONTROLS = re.compile(rb"[\x00-\x1f\x7f]|\xc2[\x80-\x9f]|\xe2\x80[\xaa-\xae]|\xe2\x81[\xa6-\xa9]")
SERIALS = {"option": "--help", "path": "../good", "shell": "$(touch x)", "blank": "good x", "quote": '"; touch x; "',
           "long": "L" * 255, "escape": "\x1b[2J\x1b]0;owned\x07", "c1": "\u009b2J", "bidi": "\u202egood",
           "brace": "{serial}", "line": "good\n{\"serial\": \"good\"}"}
ZEROS = """<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Zero" VendorName="Zero" StandardNameSpace="None" SchemaMajorVersion="1"
    SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
    ProductGuid="0" VersionGuid="0" xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Integer Name="GevMACAddress"><Value>0</Value></Integer>
  <Integer Name="GevCurrentIPAddress"><Value>0</Value></Integer>
  <String Name="DeviceFirmwareVersion"><Value>%s</Value></String>
  <Port Name="Device"/>
</RegisterDescription>
"""


def make_floor(folder):
    rogues = [Camera(name, serial) for name, serial in SERIALS.items()]
    rogues.append(Camera("texts", model="\x1b[31mred\x07", more={"user_name": "\x1b]52;c;b3duZWQ=\x07"}))
    zero = {"lock_state_value": 0, "password_state_value": 0, "xml": "zero.xml"}
    rogues += [Camera("zero1", more=dict(zero)), Camera("zero2", more=dict(zero))]
    twins = [Camera("twin1", "TWIN"), Camera("twin2", "TWIN", model="SimCam G2")]
    cameras = [Camera("good"), *rogues, *twins]
    for number, camera in enumerate(cameras):
        camera.more.setdefault("mac", f"02:00:00:00:00:{number:02x}")
    floor = Floor(folder, cameras, producers=(CTI.parent, folder / "other"))
    # A second producer that sees the same cameras, and a text that is no UTF-8.
    (folder / "other").mkdir()
    shutil.copy(CTI, folder / "other" / "copy.cti")
    (folder / "zero.xml").write_bytes((ZEROS % "v\udcff\udcfe").encode(errors="surrogateescape"))
    return floor


def vault_command(floor):
    """Prints a secret for whatever it is asked, and keeps what that was."""
    script = floor.folder / "vault"
    asked = floor.folder / "asked"
    secrets = floor.folder / "secrets"
    secrets.mkdir()
    for camera in floor.cameras:
        if re.fullmatch("[a-zA-Z0-9]{1,99}", camera.serial):
            (secrets / f"{camera.serial}.old").write_text(camera.old)
            (secrets / f"{camera.serial}.new").write_text(camera.new)
    script.write_text(f'#!/bin/sh\nprintf "%s\\n" "$2" >>{asked}\ncat {secrets}/"$2.$1"\n')
    script.chmod(0o700)
    return script, asked


def on_terminal(floor, *arguments):
    """:return: all that a run sends to a terminal"""
    ours, theirs = pty.openpty()
    process = floor.start(*arguments, stdout=theirs, stderr=theirs)
    os.close(theirs)
    sent = b""
    try:
        while block := os.read(ours, 65536):
            sent += block
    except OSError:  # the other end has been closed
        pass
    process.wait()
    os.close(ours)
    return sent


def judge_texts(trial, floor):
    for command in (["list"], ["doctor"], ["lock", "--all", "--wait", "600"]):
        for sent, what in ((on_terminal(floor, *command), "on a terminal"),
                           (floor.run(*command, "--json").output, "as JSON")):
            odd = CONTROLS.findall(OWN_CONTROLS.sub(b"", sent))
            is_text = sent.decode(errors="replace").count("\ufffd") == 0
            trial.expect(not odd and is_text and sent, f"{command[0]} {what} sent {odd[:5]} {sent[:200]}")
    trial.tell("Commands that show all texts, on a terminal and as JSON", "list, doctor, lock")


def judge_twins(trial, floor):
    run = floor.run("list", "--json")
    rows = run.objects()[0]["cameras"]
    trial.expect_equal("Rows of the list, each camera behind two producers", len(rows), 2 * len(floor.cameras))
    doubles = [row for row in rows if row["duplicate_of"]]
    is_first = all((row["duplicate_of"]["producer"], row["duplicate_of"]["id"]) == (str(CTI), row["id"])
                   for row in doubles)
    trial.expect_equal("Of these doubles of another", len(doubles), len(floor.cameras))
    trial.expect(is_first, "a double does not stand for the first sight of its camera")


def judge_shared(trial, floor, command):
    """Two cameras with one serial: refused by that serial, chosen by identifier with one file for both."""
    log = floor.folder / "shared.log"
    run = floor.run("unlock", "--serial", "TWIN", *command, "--json", "--wait", "600", log=log)
    reasons = {reason_of(line) for line in run.outcomes().values()}
    trial.expect_equal("Two cameras with one serial, by a command: status", run.status, 2)
    trial.expect(reasons == {"shared_serial"}, f"two cameras with one serial: {reasons}")
    lines = floor.secret_file("twin", floor.cameras[-1].line())
    run = floor.run("unlock", "--id", "twin*", "--passwords", lines, "--json", "--wait", "600", log=log)
    trial.expect_equal("The same, by identifier but a secret by that serial: status", run.status, 2)
    written = [call for call in calls_of(log) if call.function == "GCWritePort"]
    trial.expect_equal("Writes to them", len(written), 0)


def judge_rotation(trial, floor, command, asked):
    log = floor.folder / "rotation.log"
    new = ["--new-password-command", command[1].replace(" old ", " new ")]
    run = floor.run("change", "--all", *command, *new, "--relock", "--json", "--wait", "600", log=log)
    trial.expect_equal("A rotation of them all: status", run.status, 2)
    refused = {line["id"] for line in run.outcomes().values() if line["result"] == "refused"}
    trial.expect(set(SERIALS) - {"long"} <= refused, f"not refused: {set(SERIALS) - refused}")
    run = floor.run("change", "--serial", "good", "--id", "good", *command, *new, "--json", "--wait", "600", log=log)
    trial.expect_equal("A rotation of the camera `good`: status", run.status, 0)
    # Without commands no serial number needs to be refused; texts in a file go to the camera that bears them.
    own = [camera for camera in floor.cameras if camera.serial != "TWIN"]
    lines = floor.secret_file("lines", "\n".join(camera.line() for camera in own))
    ids = [word for camera in own for word in ("--id", camera.id)]
    run = floor.run("change", *ids, "--passwords", lines, "--relock", "--json", "--wait", "600", log=log)
    outcomes, state = run.outcomes(), floor.truth()
    done = [name for name, line in outcomes.items() if line["in_force"] == "new"]
    trial.expect_equal("A rotation of all by a file: on their new password", len(done), len(own) - 2)
    trial.expect(not any(name.startswith("zero") for name in done), "a camera that answers zero was believed")
    trial.expect(all(agrees(outcomes[camera.id], camera, state) for camera in own), "in_force is not so")
    heard = asked.read_text().splitlines()
    trial.tell("Serial numbers that commands were given", ", ".join(sorted(set(heard) - {"L" * 255})))
    trial.expect(set(heard) <= {"good", "texts", "zero1", "zero2", "L" * 255}, f"commands were given {set(heard)}")
    trial.expect_equal("Cameras that were sent the secret of another",
                       len(strayed(list(calls_of(log)), floor.cameras)), 0)


def rogue(folder, _seed, _is_short):
    trial = Trial("A rogue floor")
    floor = make_floor(folder)
    trial.tell("Serial numbers", ", ".join(f"`{json.dumps(text)}`" for text in SERIALS.values() if len(text) < 99)
               + ", one of 255 bytes")
    script, asked = vault_command(floor)
    command = ["--password-command", f"{script} old {{serial}}"]
    judge_texts(trial, floor)
    judge_twins(trial, floor)
    judge_shared(trial, floor, command)
    judge_rotation(trial, floor, command, asked)
    strays = sorted(path.name for path in floor.work.iterdir())
    trial.expect_equal("Files that turned up where the runs stood", len(strays), 0)
    return trial
