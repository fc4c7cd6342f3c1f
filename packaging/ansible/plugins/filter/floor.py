# SPDX-License-Identifier: MIT
"""What a playbook over many PCs asks of the registered results of the two modules."""
import collections

from ansible.errors import AnsibleFilterError
from ansible_collections.torvane.cameras.plugins.plugin_utils.floor import outcome_of

DOCUMENTATION = r"""
name: floor
short_description: Questions to the results of many PCs
description:
  - C(on_two_hosts) gives the serial numbers that more than one host has, each with these hosts.
  - C(of_serials) leaves of a dictionary by serial number what belongs to these, so that a host is sent no other's secret.
  - C(outcome) gives the status of one host and its message.
author: The Torvane developers
"""


def on_two_hosts(looked):
    """:param looked: results of torvane_cameras_info by host"""
    hosts = collections.defaultdict(set)
    for host, result in looked.items():
        for camera in result.get("cameras", []):
            hosts[camera["serial"]].add(host)
    return {serial: sorted(having) for serial, having in sorted(hosts.items()) if serial and len(having) > 1}


def of_serials(by_serial, result):
    if numbers := [serial for serial in by_serial if not isinstance(serial, str)]:
        raise AnsibleFilterError(f"The serial number {numbers[0]!r} is no text. Put it into quotes.")
    serials = {camera["serial"] for camera in result.get("cameras", [])}
    return {serial: value for serial, value in by_serial.items() if serial in serials}


class FilterModule:
    def filters(self):
        return {"on_two_hosts": on_two_hosts, "of_serials": of_serials, "outcome": outcome_of}
