# SPDX-License-Identifier: MIT
"""A PC with cameras: an sshd of its own on a port of the loopback interface, in namespaces of its own, so that it has a host
name, processes and a /run/lock of its own as PCs have; on one machine their rotations would else wait for each other."""
import os
import pathlib
import shlex
import socket
import subprocess
import time

from floor import Floor

SSHD = "/usr/sbin/sshd"
PRIVILEGE_FOLDER = pathlib.Path("/run/sshd")  # where sshd insists on an empty folder
PATIENCE_S = 20


def what_is_missing():
    """Why no such PC can be had here, or nothing."""
    if not os.access(SSHD, os.X_OK):
        return "there is no sshd"
    if subprocess.run(["unshare", "--mount", "--uts", "--pid", "--fork", "true"], capture_output=True).returncode:
        return "it needs root, and namespaces of its own for each PC"
    return ""


def key_in(folder, name):
    subprocess.run(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", folder / name], check=True)
    return folder / name


class Pc(Floor):
    """A floor that is reached by SSH alone. Its sessions have the environment of its cameras."""

    def __init__(self, name, folder, keys, cameras, latency_ms):
        super().__init__(folder, cameras, latency_ms)
        self.name, self.process = name, None
        # A PC that is off: what stands before it may take a connection, and nobody ever says a word.
        self.silence = socket.create_server(("127.0.0.1", 0))
        self.port = self.silence.getsockname()[1]
        self.log = folder / "simulator.log"
        for private in ("home", "tmp"):
            (folder / private).mkdir()
        own = {key: self.environment[key] for key in self.environment if key.startswith(("TORVANE_", "GENICAM_", "XDG_STATE"))}
        own |= {"TORVANE_SIM_LOG": str(self.log), "HOME": str(folder / "home"), "TMPDIR": str(folder / "tmp"),
                "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", "")}
        settings = " ".join(f'"{key}={value}"' for key, value in own.items())
        (folder / "sshd_config").write_text(
            f"Port {self.port}\nListenAddress 127.0.0.1\nHostKey {keys / 'host'}\nAuthorizedKeysFile {keys / 'user.pub'}\n"
            f"StrictModes no\nUsePAM no\nPasswordAuthentication no\nPidFile none\nLogLevel VERBOSE\nSetEnv {settings}\n")

    def switch_on(self):
        self.silence.close()
        script = (f"mount -t tmpfs tmpfs /run/lock && hostname {self.name} && exec {SSHD} -D -e -f "
                  + shlex.quote(str(self.folder / "sshd_config")))
        with open(self.folder / "sshd.log", "ab") as log:
            self.process = subprocess.Popen(
                ["unshare", "--mount", "--uts", "--pid", "--fork", "--kill-child", "--mount-proc", "sh", "-c", script],
                stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        end = time.monotonic() + PATIENCE_S
        while socket.socket().connect_ex(("127.0.0.1", self.port)) != 0:
            if self.process.poll() is not None or time.monotonic() > end:
                raise RuntimeError(f"{self.name} does not start: {(self.folder / 'sshd.log').read_text()[-500:]}")
            time.sleep(0.05)

    def switch_off(self):
        """All its processes end with it."""
        self.silence.close()
        if self.process:
            self.process.kill()
            self.process.wait()

    def written(self):
        """How often a camera has been written to."""
        return self.log.read_text().count("GCWritePort(") if self.log.exists() else 0
