# SPDX-License-Identifier: MIT
"""Writes the report on the controller. It takes the results from where Ansible keeps them: through a template they would be
turned into text and parsed again, which takes minutes for those of 1,000 PCs."""
import json
import os

from ansible.plugins.action import ActionBase
from ansible_collections.torvane.cameras.plugins.plugin_utils.floor import report, table


def write(path, text):
    """As a whole, for its owner alone."""
    with open(os.open(f"{path}.new", os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600), "w", encoding="utf-8") as file:
        file.write(text)
    os.replace(f"{path}.new", path)


class ActionModule(ActionBase):
    TRANSFERS_FILES = False
    _requires_connection = False

    def run(self, tmp=None, task_vars=None):
        result = super().run(tmp, task_vars)
        _, options = self.validate_argument_spec({
            "path": {"type": "path", "required": True}, "looked": {"type": "str", "required": True},
            "changed": {"type": "str", "required": True}, "expected": {"type": "str"}})
        kept = {host: task_vars["hostvars"].raw_get(host) for host in task_vars["ansible_play_hosts_all"]}
        looked, changed = ({host: results.get(options[name], {}) for host, results in kept.items()}
                           for name in ("looked", "changed"))
        told = report(looked, changed, self.serials([results.get(options["expected"]) for results in kept.values()]))
        write(f"{options['path']}.json", json.dumps(told) + "\n")
        write(f"{options['path']}.txt", "\n".join(table(told)) + "\n")
        return {**result, "changed": False, "trouble": table(told, only_trouble=True), "summary": told["summary"]}

    def serials(self, dictionaries):
        """Of all hosts; often it is one dictionary for all."""
        for dictionary in {id(dictionary): dictionary for dictionary in dictionaries}.values():
            yield from (self._templar.template(dictionary) if isinstance(dictionary, str) else dictionary) or {}
