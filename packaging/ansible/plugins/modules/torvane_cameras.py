#!/usr/bin/python
# SPDX-License-Identifier: MIT
DOCUMENTATION = r"""
module: torvane_cameras
short_description: Change passwords of cameras, lock and unlock them
version_added: 1.0.0
description:
  - Each camera is changed, then locked or unlocked, and each outcome is proved by reading it back. A camera that is so
    already is unchanged.
  - A camera that fails does not keep the others from being tried; then the task fails, and names each with its reason.
    Faults of the secrets are told together before anything is written.
  - Pipelining is required, and the task is refused on the controller without it, since the module would be a file on the
    PC then, and the secrets in it. For the same reason it can't be run with C(async), with C(ANSIBLE_KEEP_REMOTE_FILES) or
    through C(become_method=su).
options:
  passwords:
    description:
      - The passwords in force, by serial number. A camera on its factory password needs none to be changed.
      - Entries of cameras that are not chosen are passed over.
    type: dict
  new_passwords:
    description:
      - The passwords to come, by serial number, each of 3 to 64 bytes. Where the camera is on it already, it is unchanged.
      - Give the same until a run has told that it is in force, so store them before. One made up anew at each run locks you
        out of a camera at the first power cut.
    type: dict
  update_password:
    description:
      - C(always) changes the cameras whose password is another than the new one, C(on_factory) those alone which are on the
        factory password.
    type: str
    choices: [always, on_factory]
    default: always
  state:
    description: What the locks are to be, after the passwords. Without it they are left as they were.
    type: str
    choices: [locked, unlocked]
  select:
    description: If it is missing, the cameras that are named in I(passwords) and I(new_passwords).
  relock:
    description:
      - Change the passwords of unlocked cameras too, which are locked to prove the old one. A wrong old one then leaves the
        camera locked. I(state=locked) implies it.
    type: bool
    default: false
  resume:
    description:
      - First settle what a run has left that was killed, with the same secrets. Until that is done, a change of such a
        camera is refused with the reason C(journal). It goes by what that run was about, whatever I(select) says.
      - The journal is that of the user on the PC, so always become the same one.
    type: bool
    default: false
  allow_shared:
    description: Several cameras may get the same new password.
    type: bool
    default: false
  wait:
    description: Seconds to wait for another run on the PC to end.
    type: int
    default: 0
  audit:
    description: A file on the PC that gets a line for each camera of each call that may write.
    type: path
extends_documentation_fragment: torvane.cameras.program
author:
  - The Torvane developers (!UNKNOWN)
"""

EXAMPLES = r"""
- name: Give all cameras of this PC their new passwords
  torvane.cameras.torvane_cameras:
    passwords: "{{ vault_camera_passwords }}"
    new_passwords: "{{ vault_camera_new_passwords }}"
    select:
      all: true
    state: locked
  vars:
    ansible_pipelining: true

- name: Get what is on the factory password off it
  torvane.cameras.torvane_cameras:
    new_passwords:
      "24500019": "{{ vault_camera_24500019 }}" # in quotes, or YAML makes numbers of serials and of passwords
    update_password: on_factory
  vars:
    ansible_pipelining: true
"""

RETURN = r"""
cameras:
  description:
    - A line for each camera, as the program prints it. Where the camera was changed and locked or unlocked, C(result) is
      C(done) if either was, C(in_force) is that of the change, and C(ms) is the sum.
    - In check mode C(result) is C(would). No password is tried then, so that a camera which is on its new one already counts
      as one that would be changed.
    - With I(update_password=on_factory) the lines of cameras which are not on it come from a list.
    - C(model), C(user_name), C(firmware) and the text of the reason are hidden where a secret is part of them.
  returned: always
  type: list
  elements: dict
  sample: [{"serial": "24500017", "action": "change", "result": "done", "in_force": "new", "lock": "locked", "reason": null}]
status:
  description: The exit status of the program, of the first call that did not end with 0.
  returned: always
  type: int
"""

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.torvane.cameras.plugins.module_utils.cameras import Cameras
from ansible_collections.torvane.cameras.plugins.module_utils.program import (
    UNEXPECTED, Fault, Program, argument_spec, exactly, finish, selection,
)

REFUSED = 2
DONE_IN_PART = 3


class Task:
    """The calls that a task comes to, in order: resume, change, lock or unlock."""

    def __init__(self, module):
        self.params = module.params
        self.is_check = module.check_mode
        self.program = Program(module)
        self.old = module.params["passwords"] or {}
        self.new = module.params["new_passwords"] or {}
        self.cameras = Cameras()
        self.status = 0
        self.faults = []  # what standard error told of calls that failed
        self.remarks = []  # of those that did not

    def run(self):
        params = self.params
        if params["resume"] and not self.act("change", ["--resume"], self.new_lines()):
            return
        if params["resume"] and self.is_check and self.cameras.lines():
            self.remarks.append("What else would be done is only known once the earlier run is settled.")
            return
        if params["new_passwords"] is not None and not self.change():
            return
        if params["state"]:
            self.set_state()

    def call(self, command, arguments, lines=()):
        ended = self.program.run(command, arguments, lines)
        if ended.status and self.program.is_only_in_no_such_state(ended, self.params["select"]):
            ended.status = 0
        self.status = self.status or ended.status
        (self.faults if ended.status else self.remarks).extend(ended.errors.splitlines())
        return ended

    def act(self, command, arguments, lines):
        """:return: False where the whole call failed, so that nothing more may be tried"""
        params = self.params
        words = [*arguments, f"--wait={params['wait']}"]
        words += ["--passwords=-"] if command != "lock" else []
        if command in ("change", "verify"):
            words += ["--relock"] * (params["relock"] or params["state"] == "locked")
        words += ["--allow-shared"] * (command == "change" and params["allow_shared"])
        words += ["--dry-run"] * self.is_check
        words += [f"--audit={params['audit']}"] if params["audit"] else []
        ended = self.call(command, words, lines)
        (self.cameras.take_proofs if command == "verify" else self.cameras.take)(ended.lines)
        return ended.status == 0 or (bool(ended.lines) and ended.status != REFUSED)

    def choice(self, serials):
        if self.params["select"]:
            return selection(self.params["select"])
        if not serials:
            raise Fault("No camera is chosen: name some in passwords or new_passwords, or by select.")
        return exactly("serial", serials)

    def new_lines(self, with_current=True):
        current = self.old if with_current else {}
        return [{"serial": serial, "new": new} | ({"current": current[serial]} if serial in current else {})
                for serial, new in self.new.items()]

    def change(self):
        chosen = self.choice(self.new)
        is_for_factory = self.params["update_password"] == "on_factory"
        without_old = self.new.keys() - self.old.keys()
        if not is_for_factory and not without_old:
            return self.act("change", chosen, self.new_lines())
        listed = self.call("list", chosen)
        if listed.status not in (0, UNEXPECTED) or not listed.rows:
            return False
        rows = [row for row in listed.rows if not row["duplicate_of"]]
        return self.change_factory(chosen, rows) if is_for_factory else self.change_or_prove(chosen, rows, without_old)

    def change_factory(self, chosen, rows):
        self.cameras.take_list(row for row in rows if row["password"] != "factory")
        if self.cameras.failure():
            self.status = DONE_IN_PART
        if not any(row["password"] == "factory" for row in rows):
            return True
        return self.act("change", [*chosen, "--factory"], self.new_lines(with_current=False))

    def change_or_prove(self, chosen, rows, without_old):
        """A camera that has left the factory password, and whose old one is not given, can only be on its new one already."""
        left = [row for row in rows if row["serial"] in without_old and row["password"] == "user"]
        if not left:
            return self.act("change", chosen, self.new_lines())
        select = self.params["select"]
        passed_over = [row for row in rows if row["lock"] == "none" and select and select["all"]]
        self.cameras.take_list(passed_over)
        others = [row["id"] for row in rows if row not in left and row not in passed_over]
        if others and not self.act("change", exactly("id", others), self.new_lines()):
            return False
        return self.act("verify", exactly("id", [row["id"] for row in left]),
                        [{"serial": row["serial"], "current": self.new[row["serial"]]} for row in left])

    def set_state(self):
        command = {"locked": "lock", "unlocked": "unlock"}[self.params["state"]]
        chosen = self.choice_after_change()
        if not chosen:
            return
        current = self.old | self.cameras.changed_to(self.new)
        self.act(command, chosen, [{"serial": serial, "current": password} for serial, password in current.items()])
        if self.is_check:  # a dry run of these does not look at the locks
            self.cameras.spare(row for row in self.call("list", chosen).rows if row["lock"] == self.params["state"])

    def choice_after_change(self):
        """Without the cameras whose change failed, and by name, since what was selected by its state has left it."""
        serials = list(dict.fromkeys([*self.new, *self.old]))
        if not self.cameras.lines():
            return self.choice(serials)
        if self.params["select"]:
            return exactly("id", [line["id"] for line in self.cameras.fit()])
        unfit = self.cameras.unfit_serials()
        return exactly("serial", [serial for serial in serials if serial not in unfit])


def main():
    spec = argument_spec(
        passwords={"type": "dict", "no_log": True},
        new_passwords={"type": "dict", "no_log": True},
        update_password={"type": "str", "choices": ["always", "on_factory"], "default": "always", "no_log": False},
        state={"type": "str", "choices": ["locked", "unlocked"]},
        relock={"type": "bool", "default": False},
        resume={"type": "bool", "default": False},
        allow_shared={"type": "bool", "default": False},
        wait={"type": "int", "default": 0},
        audit={"type": "path"},
    )
    module = AnsibleModule(spec, supports_check_mode=True)
    task = Task(module)
    failure = None
    try:
        task.run()
    except Fault as fault:
        failure = str(fault)
        task.cameras.take(fault.lines)
        task.status = task.status or fault.status
    for remark in task.remarks:
        module.warn(remark)
    if task.status:
        failure = failure or task.cameras.failure() or "\n".join(task.faults) or f"torvane ended with status {task.status}."
    finish(module, failure, changed=task.cameras.is_changed, diff=task.cameras.diff(), cameras=task.cameras.lines(),
           status=task.status)


if __name__ == "__main__":
    main()
