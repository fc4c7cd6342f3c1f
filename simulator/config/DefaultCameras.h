// SPDX-License-Identifier: MIT
// The cameras that stand there without a configuration. Between them they cover the states of a list: locked,
// unlocked, factory default, without a lock, busy, read-only, and one on USB with a zipped description.
// docs/simulator.md names their passwords.
#pragma once

namespace simulator {

inline constexpr char defaultCameras[] = R"toml(
[[interface]]
id = "sim-eth0"
name = "Simulated Ethernet"
type = "GEV"

[[interface.camera]]
id = "sim-gev-locked"
model = "SimCam G5"
serial = "G5-0001"
user_name = "Gate"
ip = "192.168.0.11"
mac = "00:11:22:33:44:01"
lock = "locked"
password = "hunter22"

[[interface.camera]]
id = "sim-gev-unlocked"
model = "SimCam G5"
serial = "G5-0002"
user_name = "Yard"
ip = "192.168.0.12"
mac = "00:11:22:33:44:02"
lock = "unlocked"
password = "sunnyday7"

[[interface.camera]]
id = "sim-gev-default"
model = "SimCam G2"
serial = "G2-0003"
ip = "192.168.0.13"
mac = "00:11:22:33:44:03"
lock = "default"

[[interface.camera]]
id = "sim-gev-nolock"
model = "SimCam G1"
serial = "G1-0004"
ip = "192.168.0.14"
mac = "00:11:22:33:44:04"
lock = "none"

[[interface.camera]]
id = "sim-gev-busy"
model = "SimCam G2"
serial = "G2-0005"
ip = "192.168.0.15"
mac = "00:11:22:33:44:05"
access = "busy"

[[interface.camera]]
id = "sim-gev-readonly"
model = "SimCam G2"
serial = "G2-0006"
ip = "192.168.0.16"
mac = "00:11:22:33:44:06"
access = "readonly"

[[interface]]
id = "sim-usb0"
name = "Simulated USB"
type = "U3V"

[[interface.camera]]
id = "sim-u3v-locked"
model = "SimCam U3"
serial = "U3-0007"
lock = "locked"
password = "hunter22"
description = "zipped"
)toml";

} // namespace simulator
