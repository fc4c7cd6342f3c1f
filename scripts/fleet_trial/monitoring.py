# SPDX-License-Identifier: MIT
"""What monitoring makes of `torvane check`: Prometheus' checker and node exporter, a wrapper of plugins, a monitoring core
and systemd, each as the distribution has it."""
import collections
import json
import os
import pathlib
import pwd
import re
import shutil
import subprocess
import urllib.request

from floor import BUILD, HERE, Camera, Floor, Trial, numbered
from servers import core_status, node_exporter

PACKAGING = HERE.parent.parent / "packaging"
LABELLED = re.compile(r'(\w+)(?:\{(.*)\})? (\S+)')
LABEL = re.compile(r'(\w+)="((?:[^"\\]|\\.)*)"')
ODD = ['a|b=1', 'a\nTORVANE OK', '"quoted"', 'back\\slash', '\u001b[2J', '\u202eleft', '門 3', 'x' * 255]


def tool(package, path):
    """A program of a package that is installed, or was unpacked for the trials."""
    for root in (pathlib.Path("/"), pathlib.Path(os.environ.get("TORVANE_TRIAL_TOOLS", "/")) / package):
        if (root / path).exists():
            return root / path
    return None


def make_cameras(count):
    """Of all kinds, with odd texts, and two that share serial number and model."""
    cameras = numbered(count)
    for camera, kind in zip(cameras, ("default", "unlocked", "none", "default")):
        camera.lock = kind
    cameras[4].access = "busy"
    cameras[1].serial = cameras[0].serial
    rogues = [Camera(f"R{n}", text, model=text[:32], lock="default", more={"mac": f"02:00:00:00:ff:{n:02x}"})
              for n, text in enumerate(ODD)]
    return cameras + rogues


def series(text):
    """Metric, labels and value of each line of the exposition format."""
    for line in text.splitlines():
        if match := LABELLED.fullmatch(line):
            labels = {name: json.loads(f'"{value}"') for name, value in LABEL.findall(match[2] or "")}
            yield match[1], labels, float(match[3])


def wanted_factory(floor):
    """What `torvane_camera_factory` has to be by a list."""
    wanted = {}
    for camera in floor.run("list", "--json").objects()[0]["cameras"]:
        key = camera["serial"] or "", camera["model"] or ""
        if camera["password"] != "unknown":
            wanted[key] = max(wanted.get(key, 0.0), float(camera["password"] == "factory"))
    return wanted


def judge_promtool(trial, promtool, floor, metrics):
    for what, libraries in (("of all kinds", ()), ("of a check without cameras", ("--library", "none.cti"))):
        floor.run("check", "--textfile", str(metrics), *libraries)
        ended = subprocess.run([promtool, "check", "metrics"], input=metrics.read_bytes(), capture_output=True)
        trial.expect_equal(f"`promtool check metrics`, metrics {what}: status and complaints",
                           f"{ended.returncode} {(ended.stdout + ended.stderr).decode().strip()}".strip(), "0")
    rules = subprocess.run([promtool, "check", "rules", PACKAGING / "prometheus" / "torvane.rules.yml"],
                           capture_output=True)
    trial.expect_equal("`promtool check rules`, status for the alerts that come along", rules.returncode, 0)


def judge_exporter(trial, program, floor, metrics, rounds):
    metrics.unlink(missing_ok=True)
    user = "nobody" if os.geteuid() == 0 else pwd.getpwuid(os.geteuid()).pw_name
    with node_exporter(program, metrics.parent, user) as url:
        def scrape():
            with urllib.request.urlopen(url) as answer:
                return list(series(answer.read().decode()))
        torn = 0
        arguments = ("check", "--textfile", str(metrics))
        status = floor.run(*arguments).status
        whole = len([name for name, _, _ in scrape() if name.startswith("torvane_")])
        for _ in range(rounds):
            process = floor.start(*arguments)
            while process.poll() is None:
                found = [(name, value) for name, _, value in scrape()]
                torn += (("node_textfile_scrape_error", 0.0) not in found
                         or len([name for name, _ in found if name.startswith("torvane_")]) != whole)
        found = {(labels["serial"], labels["model"]): value for name, labels, value in scrape()
                 if name == "torvane_camera_factory"}
        trial.expect_equal("Status of the check", status, 2)
        trial.tell("The node exporter's user", user)
        trial.tell("Series of cameras that it shows over HTTP", len(found))
        trial.expect(found == wanted_factory(floor), f"the exporter shows other cameras than list: {found}")
        trial.expect_equal(f"Answers with less than all while {rounds} checks replaced the file", torn, 0)
        floor.run(*arguments, "--library", "none.cti")
        names = collections.Counter(name for name, _, _ in scrape() if name.startswith("torvane_"))
        stamp = [value for name, _, value in scrape() if name == "torvane_check_timestamp_seconds"]
        trial.expect_equal("After a check that met no camera: series and time", (dict(names), stamp),
                           ({"torvane_check_timestamp_seconds": 1}, [0.0]))


def judge_negate(trial, negate, floor):
    torvane = str(BUILD / "fleet" / "torvane")
    for word, rules in (("OK", ("--max-factory", "99")), ("WARNING", ("--warn-factory", "0")),
                        ("CRITICAL", ()), ("UNKNOWN", ("--no-such-option",))):
        status = ("OK", "WARNING", "CRITICAL", "UNKNOWN").index(word)
        other = "CRITICAL" if word == "UNKNOWN" else "UNKNOWN"
        ended = subprocess.run([negate, "-s", "-o", "OK", "-w", "WARNING", "-c", "CRITICAL", "-u", "UNKNOWN",
                                f"--{word.lower()}={other}", torvane, "check", *rules],
                               env=floor.environment, capture_output=True, text=True)
        first = ended.stdout.split("\n")[0]
        trial.expect_equal(f"`negate` of {word}, status {status}, to {other}: status and words",
                           (ended.returncode, first.split(" - ")[0]),
                           ({"UNKNOWN": 3, "CRITICAL": 2}[other], f"TORVANE {other}"))


def judge_core(trial, core, floor, folder):
    plugin = [str(BUILD / "fleet" / "torvane"), "check", "--max-unknown", "0", "--warn-factory", "0"]
    told = floor.run(*plugin[1:]).output.decode().splitlines()
    text, performance = told[0].split(" | ")
    status = core_status(core, folder, plugin, floor.environment)
    long_lines = status["long_plugin_output"].replace("\\\\", "\\").split("\\n")
    trial.expect_equal("A monitoring core: state", status["current_state"], "2")
    trial.expect_equal("Its summary", status["plugin_output"], text)
    trial.expect_equal("Its performance data", status["performance_data"], performance)
    trial.expect_equal("Its lines of cameras that offend", len([line for line in long_lines if line]), len(told) - 1)


def judge_units(trial, analyze, folder):
    units = folder / "units"
    units.mkdir()
    service = (PACKAGING / "systemd" / "torvane-check.service.in").read_text()
    (units / "torvane-check.service").write_text(service.replace("@CMAKE_INSTALL_FULL_BINDIR@", str(BUILD / "fleet")))
    shutil.copy(PACKAGING / "systemd" / "torvane-check.timer", units)
    root = analyze.parents[2]
    environment = os.environ | {"LD_LIBRARY_PATH": ":".join(map(str, root.glob("usr/lib/*/systemd"))),
                                "SYSTEMD_UNIT_PATH": f"{root}/lib/systemd/system:"}
    ended = subprocess.run([analyze, "verify", "--man=no", *sorted(units.iterdir())], env=environment,
                           capture_output=True, text=True)
    trial.expect_equal("`systemd-analyze verify` of the service and the timer: status and complaints",
                       f"{ended.returncode} {ended.stdout}{ended.stderr}".strip(), "0")


def judge_json(trial, floor):
    """By its schema, where there is something to judge by."""
    try:
        import jsonschema
    except ImportError:
        trial.tell("`--json` by its schema", "not tried: the package python3-jsonschema is not here")
        return
    schema = json.loads((HERE.parent.parent / "docs" / "schema" / "check.schema.json").read_text())
    ended = floor.run("check", "--json", "--warn-unlocked", "0", "--max-unknown", "0")
    jsonschema.validate(ended.objects()[0], schema)
    jsonschema.validate(floor.run("check", "--json", "--library", "none.cti").objects()[0], schema)
    trial.expect_equal("`--json` by its schema: status", (ended.status, ended.objects()[0]["status"]), (2, 2))


def monitoring(folder, _seed, is_short):
    trial = Trial("Monitoring")
    floor = Floor(folder, make_cameras(20 if is_short else 300))
    shared = folder / "metrics"
    shared.mkdir()
    for path in (shared, folder, folder.parent):  # the exporter is another user
        path.chmod(0o755)
    metrics = shared / "torvane.prom"
    judge_json(trial, floor)
    for package, path, judge in (
            ("prometheus", "usr/bin/promtool", lambda program: judge_promtool(trial, program, floor, metrics)),
            ("prometheus-node-exporter", "usr/bin/prometheus-node-exporter",
             lambda program: judge_exporter(trial, program, floor, metrics, 10 if is_short else 100)),
            ("monitoring-plugins-common", "usr/lib/nagios/plugins/negate",
             lambda program: judge_negate(trial, program, floor)),
            ("nagios4-core", "usr/sbin/nagios4", lambda program: judge_core(trial, program, floor, folder)),
            ("systemd", "usr/bin/systemd-analyze", lambda program: judge_units(trial, program, folder))):
        if program := tool(package, path):
            judge(program)
        else:
            trial.tell(f"`{pathlib.Path(path).name}`", f"not tried: the package {package} is not here")
    return trial
