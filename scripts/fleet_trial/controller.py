# SPDX-License-Identifier: MIT
"""The controller: a home of its own with an inventory, a vault and the collection as it lies in this project, and runs of
its playbook, with what they cost."""
import dataclasses
import json
import os
import pathlib
import re
import resource
import subprocess
import threading
import time

from floor import BUILD, HERE, PATIENCE_S

COLLECTION = HERE.parent.parent / "packaging" / "ansible"
RECAP = re.compile(r"^(\S+)\s+: (ok=.*)$", re.M)


@dataclasses.dataclass
class Played:
    status: int
    output: str
    seconds: float
    processor_s: float  # of the controller's side
    megabytes: float  # most at once, of all its processes, shared pages once
    report: dict

    def recap(self):
        """By host, the numbers of Ansible's last lines."""
        return {host: {key: int(value) for key, value in (pair.split("=") for pair in counts.split())}
                for host, counts in RECAP.findall(self.output)}

    def lines(self):
        """By host and serial number, what became of a camera."""
        return {(host, line["serial"]): line for host, told in self.report.get("hosts", {}).items()
                for line in told["cameras"]}


class Controller:
    def __init__(self, folder, keys):
        self.folder = folder
        self.home = folder / "home"
        collections = self.home / "collections" / "ansible_collections" / "torvane"
        collections.mkdir(parents=True)
        (collections / "cameras").symlink_to(COLLECTION)
        (self.home / "tmp").mkdir()
        self.keys = keys
        self.vault_password = self.home / "vault-password"
        self.vault_password.write_text("of this trial alone\n")
        self.environment = {key: value for key, value in os.environ.items() if not key.startswith("ANSIBLE_")}
        self.environment |= {"HOME": str(self.home), "TMPDIR": str(self.home / "tmp"), "LC_ALL": "C.UTF-8",
                             "ANSIBLE_COLLECTIONS_PATH": str(self.home / "collections"), "ANSIBLE_PIPELINING": "true",
                             "ANSIBLE_VAULT_PASSWORD_FILE": str(self.vault_password), "ANSIBLE_DEPRECATION_WARNINGS": "false",
                             "ANSIBLE_LOG_PATH": str(self.home / "ansible.log")}

    def inventory(self, pcs):
        """The PCs in this order; the first is the canary."""
        host_key = (self.keys / "host.pub").read_text()
        (self.home / "known_hosts").write_text("".join(f"[127.0.0.1]:{pc.port} {host_key}" for pc in pcs))
        common = {"ansible_host": "127.0.0.1", "ansible_user": "root", "ansible_python_interpreter": "/usr/bin/python3",
                  "ansible_ssh_private_key_file": str(self.keys / "user"),
                  "ansible_ssh_common_args": f"-o UserKnownHostsFile={self.home / 'known_hosts'}",
                  "torvane_executable": str(BUILD / "fleet" / "torvane")}
        hosts = {pc.name: {"ansible_port": pc.port} for pc in pcs}
        self.keep({"cameras": {"hosts": hosts, "vars": common}})

    def keep(self, inventory):
        (self.home / "inventory.json").write_text(json.dumps(inventory))

    def vault(self, old, new):
        """Keeps these passwords by serial number, encrypted; in clear they are only on a pipe."""
        text = json.dumps({"torvane_passwords": old, "torvane_new_passwords": new})
        (self.home / "vault.yml").unlink(missing_ok=True)
        subprocess.run(["ansible-vault", "encrypt", "--output", self.home / "vault.yml", "-"], input=text.encode(),
                       env=self.environment, cwd=self.home, check=True, capture_output=True)

    def play(self, *arguments, forks=12, **environment):
        report = self.home / "report.json"
        report.unlink(missing_ok=True)
        command = ["ansible-playbook", "torvane.cameras.change_passwords", "--inventory", "inventory.json",
                   "--extra-vars", "@vault.yml", "--extra-vars", f"torvane_report_path={self.home / 'report'}",
                   "--forks", str(forks), *arguments]
        before, begin = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
        process = subprocess.Popen(command, env=self.environment | environment, cwd=self.home, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        memory = Memory(process)
        output, _ = process.communicate(timeout=PATIENCE_S)
        seconds, after = time.monotonic() - begin, resource.getrusage(resource.RUSAGE_CHILDREN)
        used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
        told = json.loads(report.read_text()) if report.exists() else {}
        return Played(process.returncode, output, seconds, used, memory.most(), told)


class Memory(threading.Thread):
    """Watches a process and its children, four times a second."""

    def __init__(self, process):
        super().__init__(daemon=True)
        self.process, self.kilobytes = process, 0
        self.start()

    def run(self):
        while self.process.returncode is None:
            self.kilobytes = max(self.kilobytes, sum(map(self.of, self.family())))
            time.sleep(0.25)

    def family(self):
        pids = [self.process.pid]
        for pid in pids:
            for children in pathlib.Path(f"/proc/{pid}/task").glob("*/children"):
                try:
                    pids += map(int, children.read_text().split())
                except OSError:  # it has ended
                    continue
        return pids

    @staticmethod
    def of(pid):
        try:
            text = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
        except OSError:
            return 0
        return int(re.search(r"^Pss:\s+(\d+)", text, re.M)[1])

    def most(self):
        self.join()
        return self.kilobytes / 1024
