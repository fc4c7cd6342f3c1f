# SPDX-License-Identifier: MIT
"""What the documentation of the modules shares."""


class ModuleDocFragment:
    DOCUMENTATION = r"""
options:
  select:
    description:
      - Which cameras, by the options of the program. Values of one option are alternatives, different options narrow;
        C(*) stands for any text.
    type: dict
    suboptions:
      serial:
        description: By serial number. One without C(*) that no camera has fails the task before anything is written.
        type: list
        elements: str
        default: []
      id:
        description: By the identifier that the producer gives it.
        type: list
        elements: str
        default: []
      model:
        description: By model.
        type: list
        elements: str
        default: []
      interface:
        description: By the interface it hangs on.
        type: list
        elements: str
        default: []
      mac:
        description: By MAC address, in any usual spelling.
        type: list
        elements: str
        default: []
      from:
        description: By the serial numbers in a file on the PC, one a line.
        type: path
      factory:
        description: Those on the factory password.
        type: bool
        default: false
      locked:
        description: Those that are locked.
        type: bool
        default: false
      unlocked:
        description: Those that are unlocked.
        type: bool
        default: false
      all:
        description: All cameras that the others leave.
        type: bool
        default: false
  library:
    description:
      - Producer files to use instead of those in C(GENICAM_GENTL64_PATH). The environment of an SSH session often lacks that
        variable; a play sets it by C(environment).
    type: list
    elements: path
    default: []
  executable:
    description: The program on the PC, as a path or to be found in the search path.
    type: str
    default: torvane
notes:
  - The module does no work of its own. It calls the program C(torvane) on the PC, which has to be installed there, and hands
    on its lines.
"""
