# SPDX-License-Identifier: MIT
"""Refuses the task while its secrets are still on the controller, if Ansible would print them or make a file on the PC."""
import datetime
from collections.abc import Mapping

from ansible import constants as C
from ansible.plugins.action import ActionBase

IN_FILE = "The passwords would stand in a file on the PC:"
MEND = "Set ansible_pipelining: true for these hosts, or pipelining = true in the section [connection] of ansible.cfg."
NO_TEXTS = (type(None), bool, int, float, datetime.date, Mapping, list, tuple)


class ActionModule(ActionBase):
    TRANSFERS_FILES = False

    def run(self, tmp=None, task_vars=None):
        refusal = self.fault_of_connection() or self.fault_of_passwords()
        if refusal:
            return {"failed": True, "changed": False, "msg": refusal, "cameras": []}
        result = super().run(tmp, task_vars)
        result.update(self._execute_module(task_vars=task_vars))
        return result

    def fault_of_connection(self):
        become = self._connection.become
        reasons = {
            "ANSIBLE_DEBUG would print the passwords.": C.DEFAULT_DEBUG,
            f"{IN_FILE} async runs a file.": self._task.async_val,
            f"{IN_FILE} ANSIBLE_KEEP_REMOTE_FILES is set.": C.DEFAULT_KEEP_REMOTE_FILES,
            f"{IN_FILE} become_method su can't be pipelined to; use sudo.": become and become.name == "su",
            f"{IN_FILE} pipelining is off. {MEND}": not self._is_pipelining_enabled("new", bool(self._task.async_val)),
        }
        return next((reason for reason, holds in reasons.items() if holds), None)

    def fault_of_passwords(self):
        """YAML makes 83 of 0123, and a date of 2027-01-01: neither is what was meant, and both would lock somebody out."""
        for name in ("passwords", "new_passwords"):
            passwords = self._task.args.get(name) or {}
            if not isinstance(passwords, Mapping):
                return f"{name} is no dictionary of passwords by serial number."
            for serial, password in passwords.items():
                if not isinstance(serial, str):
                    return f"{name}: the serial number {serial!r} is no text. Put it into quotes."
                if isinstance(password, NO_TEXTS):
                    return f"{name}: the password of {serial} is no text. Put it into quotes."
        return None
