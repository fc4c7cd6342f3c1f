#!/usr/bin/python
# SPDX-License-Identifier: MIT
DOCUMENTATION = r"""
module: torvane_cameras_info
short_description: List the cameras of a PC, their locks and whose password they are on
version_added: 1.0.0
description:
  - Each camera is opened once, read-only, and nothing is written to it. A camera that another program holds is not
    disturbed, its lock and its password are C(unknown) then.
options:
  quick:
    description: Open no camera. What needs a look is C(unknown).
    type: bool
    default: false
extends_documentation_fragment: torvane.cameras.program
author:
  - The Torvane developers (!UNKNOWN)
"""

EXAMPLES = r"""
- name: Which cameras are still on the factory password?
  torvane.cameras.torvane_cameras_info:
    select:
      factory: true
  environment:
    GENICAM_GENTL64_PATH: /opt/vendor/cti
  register: found

- name: Tell them
  ansible.builtin.debug:
    msg: "{{ found.cameras | map(attribute='serial') }}"
"""

RETURN = r"""
cameras:
  description:
    - A row for each camera, as the program prints it. One that is seen on two ways has two rows, and the second tells in
      C(duplicate_of) which one it doubles.
    - Empty, without a failure, where I(select) asks for a state and no camera is in it.
  returned: always
  type: list
  elements: dict
  sample: [{"serial": "24500017", "model": "SimCam G5", "access": "free", "lock": "locked", "password": "user"}]
producers:
  description: A row for each producer. One that failed has a C(reason), and is a warning.
  returned: where the program could list
  type: list
  elements: dict
status:
  description: The exit status of the program.
  returned: always
  type: int
"""

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.torvane.cameras.plugins.module_utils.program import (
    Fault, Program, argument_spec, finish, selection,
)

PRODUCER_FAILED = 1


def main():
    module = AnsibleModule(argument_spec(quick={"type": "bool", "default": False}), supports_check_mode=True)
    select = module.params["select"]
    program = Program(module)
    try:
        run = program.run("list", (selection(select) if select else []) + ["--quick"] * module.params["quick"])
        is_none_left = program.is_only_in_no_such_state(run, select)
    except Fault as fault:
        module.fail_json(msg=str(fault), cameras=[])
    is_listed = run.status == 0 or is_none_left or (run.status == PRODUCER_FAILED and run.rows)
    if is_listed:
        for line in run.errors.splitlines():
            module.warn(line)
    failure = None if is_listed else run.errors or f"torvane ended with status {run.status}."
    finish(module, failure, changed=False, status=run.status, cameras=run.rows, producers=run.producers)


if __name__ == "__main__":
    main()
