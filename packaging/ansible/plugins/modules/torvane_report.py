#!/usr/bin/python
# SPDX-License-Identifier: MIT
DOCUMENTATION = r"""
module: torvane_report
short_description: Write what became of the cameras of all PCs of a play, on the controller
version_added: 1.0.0
description:
  - It collects what tasks have registered on all hosts of the play, also on those that failed or did not answer, so run it
    once. It asks no host, and writes in check mode too.
options:
  path:
    description: Where to, without the suffix. C(.json) is for programs, C(.txt) for people; their mode is 0600.
    type: path
    required: true
  looked:
    description: Name of the variable in which M(torvane.cameras.torvane_cameras_info) was registered.
    type: str
    required: true
  changed:
    description: Name of the variable in which M(torvane.cameras.torvane_cameras) was registered.
    type: str
    required: true
  expected:
    description: Name of a variable with a dictionary by serial number. Those that no PC has are told.
    type: str
author:
  - The Torvane developers (!UNKNOWN)
"""

EXAMPLES = r"""
- name: Report
  torvane.cameras.torvane_report:
    path: ./cameras
    looked: looked
    changed: changed
  run_once: true
"""

RETURN = r"""
trouble:
  description: The lines of the table about what is not as it should be, and the sums.
  returned: success
  type: list
  elements: str
summary:
  description: How many hosts and cameras came to which end.
  returned: success
  type: dict
"""
# The action plugin of this name does the work, on the controller.
