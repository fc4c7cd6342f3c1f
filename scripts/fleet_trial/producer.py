# SPDX-License-Identifier: MIT
"""The simulated cameras without torvane: other programs that hold them, the bare loop that torvane is measured beside,
and the reading of the simulator's log."""
import ctypes
import dataclasses
import json
import os
import re
import sys
import time

ALL_MS = ctypes.c_uint64(5000)
READ_ONLY, CONTROL = 2, 3
SECRET_REGISTERS = (0x50002000, 0x50002040)  # the new password, the one that opens


@dataclasses.dataclass
class Call:
    """One line of the log that goes to a camera."""

    function: str
    camera: str
    code: int
    flags: int = 0
    address: int = 0
    size: int = 0
    written: bytes = b""


LINE = re.compile(r"(\w+)\((.*)\) = (-?\d+)(?: (.*))?$")


def calls_of(log):
    """The calls of one process to its cameras, in order. Handles lead to the camera that they stand for."""
    cameras = {}
    for line in log.read_text(errors="replace").splitlines():
        match = LINE.match(line)
        if not match:
            continue
        function, arguments, code, output = match[1], match[2].split(", "), int(match[3]), match[4] or ""
        if function == "IFOpenDevice":
            camera = arguments[1].strip('"')
            cameras[output] = camera
            yield Call(function, camera, code, flags=int(arguments[2]))
        elif function == "DevGetPort" and code == 0:
            cameras[output] = cameras[arguments[0]]
        elif function == "DevClose":
            yield Call(function, cameras[arguments[0]], code)
        elif function in ("GCReadPort", "GCWritePort") and arguments[0] in cameras:
            written = bytes.fromhex(output.strip("[]")) if function == "GCWritePort" else b""
            yield Call(function, cameras[arguments[0]], code, address=int(arguments[1], 16),
                       size=int(arguments[2].split(" ")[0]), written=written)
        elif "Stacked" in function:
            raise ValueError("The bare loop knows no stacked port functions.")


class Producer:
    """The first interface of the simulator, by GenTL's own functions."""

    def __init__(self):
        folder = os.environ["GENICAM_GENTL64_PATH"].split(":")[0]
        self.module = ctypes.CDLL(os.path.join(folder, "torvane_sim.cti"))
        changed = ctypes.c_uint8()
        self.interface, layer = ctypes.c_void_p(), ctypes.c_void_p()
        self.call("GCInitLib")
        self.call("TLOpen", ctypes.byref(layer))
        self.call("TLUpdateInterfaceList", layer, ctypes.byref(changed), ALL_MS)
        self.call("TLOpenInterface", layer, b"eth0", ctypes.byref(self.interface))
        self.call("IFUpdateDeviceList", self.interface, ctypes.byref(changed), ALL_MS)

    def call(self, function, *arguments):
        code = getattr(self.module, function)(*arguments)
        if code != 0:
            raise RuntimeError(f"{function}() failed with code {code}")

    def open(self, camera, flags):
        """:return: the camera and its port"""
        device, port = ctypes.c_void_p(), ctypes.c_void_p()
        self.call("IFOpenDevice", self.interface, camera.encode(), flags, ctypes.byref(device))
        self.call("DevGetPort", device, ctypes.byref(port))
        return device, port


def hold():
    producer = Producer()
    for camera in json.loads(sys.stdin.readline()):
        producer.open(camera, CONTROL)
    print("held", flush=True)
    sys.stdin.read()


def replay():
    """The bare loop: what the log on standard input has of opens, register accesses and closes, once more and with
    nothing between them. Prints its seconds."""
    calls = [Call(**(call | {"written": bytes.fromhex(call["written"])})) for call in json.loads(sys.stdin.read())]
    producer = Producer()
    open_cameras, size, buffer = {}, ctypes.c_size_t(), ctypes.create_string_buffer(1 << 20)
    read, write = producer.module.GCReadPort, producer.module.GCWritePort
    begin = time.monotonic()
    for call in calls:
        if call.function == "IFOpenDevice":
            open_cameras[call.camera] = producer.open(call.camera, call.flags)
        elif call.function == "DevClose":
            producer.call("DevClose", open_cameras.pop(call.camera)[0])
        else:
            access, data = (read, buffer) if call.function == "GCReadPort" else (write, call.written)
            size.value = call.size
            code = access(open_cameras[call.camera][1], ctypes.c_uint64(call.address), data, ctypes.byref(size))
            if code != call.code:
                raise RuntimeError(f"{call}: {code} this time")
    print(time.monotonic() - begin)


def bare_loop_seconds(floor, calls):
    """:param floor: one as the cameras of the calls stood at first"""
    told = json.dumps([dataclasses.asdict(call) | {"written": call.written.hex()} for call in calls if call.code == 0
                       or call.function.startswith("GC")])
    process = floor.helper("replay")
    output, _ = process.communicate(told)
    return float(output)


def opens_of(calls):
    """Successful opens by camera."""
    opens = {}
    for call in calls:
        if call.function == "IFOpenDevice" and call.code == 0:
            opens[call.camera] = opens.get(call.camera, 0) + 1
    return opens


def strayed(calls, cameras):
    """The cameras that were sent a secret which is not theirs."""
    own = {camera.id: {camera.old, camera.new} for camera in cameras}
    return sorted({call.camera for call in calls if call.address in SECRET_REGISTERS and call.written
                   and call.written.rstrip(b"\0").decode() not in own[call.camera]})


if __name__ == "__main__":
    {"hold": hold, "replay": replay}[sys.argv[1]]()
