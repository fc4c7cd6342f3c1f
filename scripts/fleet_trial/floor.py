# SPDX-License-Identifier: MIT
"""A floor of simulated cameras in a folder of its own: its configuration, its passwords, runs of torvane over it, and
what is true of it afterwards, which the simulator's state file and log tell and torvane cannot touch up."""
import dataclasses
import json
import os
import pathlib
import subprocess
import sys
import time
import tomllib

HERE = pathlib.Path(__file__).resolve().parent
BUILD = pathlib.Path(os.environ.get("TORVANE_BUILD_FOLDER") or HERE.parent.parent / "build" / "release").resolve()
CTI = BUILD / "simulator" / "torvane_sim.cti"
FACTORY = "mapleoak"
MARK = "zq7Kp"  # begins each secret, so that one search finds any of them
PATIENCE_S = 900


@dataclasses.dataclass
class Trial:
    """What a trial found. Each fault is a broken promise; none means that it passed."""

    title: str
    figures: list[tuple[str, str]] = dataclasses.field(default_factory=list)
    faults: list[str] = dataclasses.field(default_factory=list)

    def tell(self, what, value):
        self.figures.append((what, str(value)))

    def expect(self, is_kept, fault):
        if not is_kept:
            self.faults.append(fault)

    def expect_equal(self, what, found, wanted):
        self.tell(what, found)
        self.expect(found == wanted, f"{what}: {found} instead of {wanted}")


@dataclasses.dataclass
class Camera:
    id: str
    serial: str = ""  # the id
    model: str = "SimCam G5"
    lock: str = "locked"  # "locked", "unlocked", "default", "none"
    access: str = "readwrite"
    more: dict = dataclasses.field(default_factory=dict)
    old: str = ""  # made from the id

    def __post_init__(self):
        self.serial = self.serial or self.id
        self.old = self.old or (FACTORY if self.lock == "default" else f"{MARK}-old-{self.id}")
        self.new = f"{MARK}-new-{self.id}"

    def toml(self):
        keys = {"id": self.id, "serial": self.serial, "model": self.model, "lock": self.lock, "access": self.access}
        keys |= {"password": self.old} if self.lock in ("locked", "unlocked") else {}
        return table("[interface.camera]", keys | self.more)

    def line(self):
        """Its line of a file of passwords. The factory's own is left out, as users would."""
        current = {} if self.lock == "default" else {"current": self.old}
        return json.dumps({"serial": self.serial, "new": self.new} | current)


def table(name, keys):
    lines = [f"{key} = {json.dumps(value, ensure_ascii=False)}" for key, value in keys.items()]
    return "\n".join([f"[{name}]", *lines, ""])


def numbered(count, **keys):
    """So many cameras, each with a MAC address of its own."""
    return [Camera(f"C{n:03}", more={"mac": f"02:00:00:00:{n // 256:02x}:{n % 256:02x}"}, **keys)
            for n in range(count)]


@dataclasses.dataclass
class Ended:
    """A run of torvane that has ended."""

    status: int
    output: bytes
    errors: bytes
    seconds: float

    def objects(self):
        return [json.loads(line) for line in self.output.splitlines()]

    def outcomes(self):
        """By identifier of the camera."""
        return {line["id"]: line for line in self.objects() if "result" in line}

    def told(self):
        return f"status {self.status}; {self.errors.decode(errors='replace').strip()[:400]}"


def reason_of(line):
    return line["reason"]["code"] if line["reason"] else None


class Floor:
    def __init__(self, folder, cameras, latency_ms=0, failures=(), producers=(CTI.parent,)):
        self.folder = folder
        self.cameras = cameras
        self.work = folder / "work"  # where the runs stand
        self.work.mkdir(parents=True)
        self.config = folder / "cameras.toml"
        parts = [table("producer", {"latency_ms": latency_ms}), table("[interface]", {"id": "eth0", "type": "GEV"})]
        self.config.write_text("\n".join(parts + [camera.toml() for camera in cameras]
                                         + [table("[failure]", failure) for failure in failures]))
        self.state_file = folder / "cameras.state"
        self.environment = {key: value for key, value in os.environ.items() if not key.startswith("TORVANE_")}
        self.environment |= {"GENICAM_GENTL64_PATH": ":".join(map(str, producers)), "LC_ALL": "C.UTF-8",
                             "TORVANE_SIM_CONFIG": str(self.config), "TORVANE_SIM_STATE": str(self.state_file),
                             "XDG_STATE_HOME": str(folder / "xdg")}

    def secret_file(self, name, text):
        path = self.folder / name
        path.touch(mode=0o600)
        path.write_text(text)
        return str(path)

    def passwords(self):
        return self.secret_file("passwords", "\n".join(camera.line() for camera in self.cameras))

    def start(self, *arguments, log=None, **options):
        environment = self.environment | ({"TORVANE_SIM_LOG": str(log)} if log else {})
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE}
        return subprocess.Popen([str(BUILD / "fleet" / "torvane"), *arguments], env=environment, cwd=self.work,
                                **(streams | options))

    def run(self, *arguments, log=None):
        begin = time.monotonic()
        process = self.start(*arguments, log=log)
        output, errors = process.communicate(timeout=PATIENCE_S)
        return Ended(process.returncode, output, errors, time.monotonic() - begin)

    def helper(self, word, **options):
        """A Python process that uses the cameras without torvane; see producer.py."""
        return subprocess.Popen([sys.executable, str(HERE / "producer.py"), word], env=self.environment,
                                stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, **options)

    def hold(self, cameras):
        """Another program that has these cameras open. It lets go when its standard input is closed."""
        holder = self.helper("hold")
        holder.stdin.write(json.dumps([camera.id for camera in cameras]) + "\n")
        holder.stdin.flush()
        if holder.stdout.readline() != "held\n":
            raise RuntimeError("The cameras could not be held.")
        return holder

    def truth(self):
        """Password and lock of each camera, by identifier."""
        kept = tomllib.loads(self.state_file.read_text()) if self.state_file.exists() else {}
        truth = {camera.id: (camera.old, camera.lock != "unlocked") for camera in self.cameras}
        return truth | {name: (bytes.fromhex(state["password"]).decode(), bool(state["locked"]))
                        for name, state in kept.items()}

    def journal(self):
        """Its whole lines."""
        path = self.folder / "xdg" / "torvane" / "journal.jsonl"
        text = path.read_bytes() if path.exists() else b""
        return [json.loads(line) for line in text[:text.rfind(b"\n") + 1].splitlines()]


def let_go(holder):
    holder.stdin.close()
    holder.wait()


def agrees(line, camera, truth):
    """Whether what an outcome says of the password is so. "unknown" claims nothing."""
    wanted = {"old": camera.old, "new": camera.new}.get(line["in_force"])
    return wanted is None or truth[camera.id][0] == wanted
