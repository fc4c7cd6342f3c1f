# SPDX-License-Identifier: MIT
"""Servers of monitoring, each in a process of its own that ends with its use."""
import contextlib
import getpass
import grp
import os
import shlex
import socket
import subprocess
import time
import urllib.request

PATIENCE_S = 60
CORE_FILES = ("log_file", "object_cache_file", "precached_object_file", "lock_file", "temp_file", "status_file",
              "state_retention_file", "command_file", "query_socket")
OBJECTS = """
define command {{
    command_name check
    command_line {plugin}
}}
define timeperiod {{
    timeperiod_name always
    alias always
{days}
}}
define contact {{
    contact_name nobody
    host_notification_commands check
    service_notification_commands check
    host_notification_period always
    service_notification_period always
}}
define host {{
    host_name pc
    address 127.0.0.1
    max_check_attempts 1
    active_checks_enabled 0
    notifications_enabled 0
    check_period always
    notification_period always
    contacts nobody
}}
define service {{
    host_name pc
    service_description cameras
    check_command check
    max_check_attempts 1
    check_interval 2
    retry_interval 2
    notifications_enabled 0
    check_period always
    notification_period always
    contacts nobody
}}
"""


def until(what, attempt):
    """:return: what the attempt does, as soon as that is something"""
    end = time.monotonic() + PATIENCE_S
    while time.monotonic() < end:
        if found := attempt():
            return found
        time.sleep(0.1)
    raise RuntimeError(f"{what} did not come within {PATIENCE_S} s")


def free_port():
    with socket.socket() as listener:
        listener.bind(("127.0.0.1", 0))
        return listener.getsockname()[1]


@contextlib.contextmanager
def node_exporter(program, folder, user):
    """One that reads the metrics files of the folder as this user and shows nothing else.

    :return: the address of its metrics"""
    url = f"http://127.0.0.1:{free_port()}/metrics"
    more = {"user": user, "extra_groups": []} if os.geteuid() == 0 else {}
    process = subprocess.Popen([program, "--collector.disable-defaults", "--collector.textfile",
                                f"--collector.textfile.directory={folder}",
                                f"--web.listen-address={url.split('/')[2]}"],
                               stderr=subprocess.DEVNULL, cwd="/", **more)

    def answers():
        with contextlib.suppress(OSError):
            return urllib.request.urlopen(url).read()

    try:
        until("The node exporter", answers)
        yield url
    finally:
        process.terminate()
        process.wait()


def core_status(program, folder, plugin, environment):
    """:return: what the core's status file has of a service after it has run the plugin"""
    folder = folder / "core"
    (folder / "results").mkdir(parents=True)
    days = "\n".join(f"    {day} 00:00-24:00" for day in
                     ("sunday", "monday", "tuesday", "wednesday", "thursday", "friday", "saturday"))
    (folder / "objects").write_text(OBJECTS.format(plugin=shlex.join(plugin), days=days))
    keys = {key: folder / key for key in CORE_FILES} | {
        "cfg_file": folder / "objects", "temp_path": folder, "check_result_path": folder / "results",
        "nagios_user": getpass.getuser(), "nagios_group": grp.getgrgid(os.getegid()).gr_name,
        "check_external_commands": 0, "interval_length": 1, "status_update_interval": 1, "use_syslog": 0,
        "illegal_macro_output_chars": "`"}
    (folder / "core.cfg").write_text("".join(f"{key}={value}\n" for key, value in keys.items()))
    process = subprocess.Popen([program, folder / "core.cfg"], env=environment, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL)

    def checked():
        with contextlib.suppress(FileNotFoundError):
            blocks = (folder / "status_file").read_text().split("servicestatus {")
            values = dict(line.strip().split("=", 1) for line in blocks[-1].splitlines() if "=" in line)
            return values if values.get("has_been_checked") == "1" else None

    try:
        return until("The core's first check", checked)
    finally:
        process.terminate()
        process.wait()
