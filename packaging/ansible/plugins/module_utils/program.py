# SPDX-License-Identifier: MIT
"""Runs of torvane for the modules: arguments from a task's options, secrets on standard input, and its lines as they are.

A secret is in no argument, environment or file, and the program puts none into its lines or messages."""
import json
import os
import subprocess

VALUES = ("serial", "id", "model", "interface", "mac")
STATES = ("factory", "locked", "unlocked")
UNEXPECTED, NO_CAMERA = 1, 4  # exit statuses
HIDDEN = "(hidden: a secret is part of it)"


def argument_spec(**more):
    values = {name: {"type": "list", "elements": "str", "default": []} for name in VALUES}
    flags = {name: {"type": "bool", "default": False} for name in (*STATES, "all")}
    return {
        "select": {"type": "dict", "options": {**values, "from": {"type": "path"}, **flags}},
        "library": {"type": "list", "elements": "path", "default": []},
        "executable": {"type": "str", "default": "torvane"},
    } | more


class Fault(Exception):
    """What the user of a module has to mend; the text holds no secret. `lines` are those of cameras that a run has told of
    before it broke off, `status` is its own where it has failed."""

    def __init__(self, text, lines=(), status=0):
        super().__init__(text)
        self.lines = list(lines)
        self.status = status or UNEXPECTED


def exactly(option, values):
    """Arguments that choose these texts, and nothing that they would stand for as patterns."""
    for value in values:
        if "*" in value:
            raise Fault(f"{value!r} can't be chosen by its name, since * stands for any text.")
    return [f"--{option}={value}" for value in values]


def selection(select):
    """The program's arguments of a task's `select`."""
    arguments = [f"--{name}={value}" for name in VALUES for value in select[name]]
    arguments += [f"--from={select['from']}"] if select["from"] else []
    return arguments + [f"--{name}" for name in (*STATES, "all") if select[name]]


class Run:
    """A run that has ended: `lines` of an action, or `rows` and `producers` of a list."""

    def __init__(self, status, objects, errors):
        listed = next((entry for entry in objects if "cameras" in entry), {})
        self.status = status
        self.lines = [entry for entry in objects if "result" in entry]
        self.rows = listed.get("cameras", [])
        self.producers = listed.get("producers", [])
        self.errors = errors


class Program:
    def __init__(self, module):
        self.path = module.get_bin_path(module.params["executable"], required=True)
        self.common = ["--json", *(f"--library={file}" for file in module.params["library"])]
        self.secrets = {secret for secret in module.no_log_values if secret}

    def run(self, command, arguments, lines=()):
        """:param lines: objects for `--passwords -`"""
        given = "".join(json.dumps(line) + "\n" for line in lines)
        done = subprocess.run([self.path, command, *self.common, *arguments], input=given.encode(),
                              capture_output=True, check=False, env={**os.environ, "LC_ALL": "C.UTF-8"})
        errors = "\n".join(map(self.shown, done.stderr.decode("utf-8", "replace").splitlines()))
        objects = []
        try:
            for line in done.stdout.splitlines():
                objects.append(self.handed_on(json.loads(line)))
        except (ValueError, TypeError, AttributeError):
            objects.append({})
        run = Run(done.returncode, objects, errors)
        has_end = objects and {"summary", "cameras"} & objects[-1].keys()
        if not has_end and (objects or run.status == 0):
            raise Fault(f"The program broke off, or is not torvane: it has status {run.status}, and its output no end. "
                        f"{errors}".strip(), run.lines, run.status)
        return run

    def is_only_in_no_such_state(self, ended, select):
        """True if no camera was chosen for its state alone: then there is nothing to do. The program has one status for that
        and for a camera that is not there."""
        if ended.status != NO_CAMERA or not select or not any(select[state] for state in STATES):
            return False
        return self.run("list", ["--quick", *selection(select | dict.fromkeys(STATES, False))]).status == 0

    def shown(self, text):
        """The text, or that it is hidden, if a secret is part of it."""
        return HIDDEN if text and any(secret in text for secret in self.secrets) else text

    def handed_on(self, entry):
        """An object as a task may return it. Texts that a camera or a producer chooses may repeat a secret, by a user's
        carelessness or on purpose. Names by which it is chosen and the words of the program stay, also where a password equals
        one."""
        shown = entry | {key: self.shown(entry[key]) for key in ("model", "user_name", "firmware") if key in entry}
        if entry.get("reason"):
            shown["reason"] = entry["reason"] | {key: self.shown(entry["reason"][key]) for key in ("text", "next")}
        if "cameras" in entry:
            shown["cameras"] = [self.handed_on(camera) for camera in entry["cameras"]]
        return shown


def finish(module, failure, **results):
    """Ends the module with results of `Program`. Ansible would blank all that equals a `no_log` value in them: a password
    "old" would make `in_force` unreadable, and by that be told. So the secrets are taken out here, where they stand."""
    hidden = {name: dict.fromkeys(module.params[name] or {}, "VALUE_SPECIFIED_IN_NO_LOG_PARAMETER")
              for name in ("passwords", "new_passwords") if name in module.params}
    results["invocation"] = {"module_args": module.params | hidden}
    module.no_log_values = set()
    if failure:
        module.fail_json(msg=failure, **results)
    module.exit_json(**results)
