# SPDX-License-Identifier: MIT
"""What became of the PCs and cameras of a playbook, from the registered results of the two modules."""
import collections

HEADINGS = ("PC", "SERIAL", "MODEL", "RESULT", "IN FORCE", "REASON")


def outcome_of(looked, changed):
    """A host's status and message. Nothing was tried on one that the canary's failure kept back."""
    for result in (looked, changed):
        if result.get("unreachable") or result.get("failed"):
            status = "unreachable" if result.get("unreachable") else "failed"
            return {"status": status, "msg": str(result.get("msg", "")).strip()}
    if "status" not in changed:
        return {"status": "not_reached", "msg": "The canary failed, so this PC was left alone."}
    return {"status": "ok", "msg": ""}


def report(looked, changed, expected):
    """:param looked: results of torvane_cameras_info by host
    :param changed: results of torvane_cameras by host
    :param expected: the serial numbers that somebody should have"""
    hosts = {host: outcome_of(result, changed[host]) | {"cameras": changed[host].get("cameras", [])}
             for host, result in looked.items()}
    seen = {camera["serial"] for result in looked.values() for camera in result.get("cameras", [])}
    results = collections.Counter(camera["result"] for outcome in hosts.values() for camera in outcome["cameras"])
    return {"schema": 1, "hosts": hosts, "missing": sorted(set(expected) - seen),
            "summary": {"hosts": dict(collections.Counter(outcome["status"] for outcome in hosts.values())),
                        "cameras": dict(results)}}


def rows(told):
    for host, outcome in told["hosts"].items():
        if outcome["status"] != "ok" and not outcome["cameras"]:
            yield host, "", "", outcome["status"], "", outcome["msg"]
        for camera in outcome["cameras"]:
            reason = camera["reason"] or {"code": "", "text": ""}
            told_reason = ": ".join(filter(None, (reason["code"], reason["text"])))
            yield (host, camera["serial"] or camera["id"], camera["model"] or "", camera["result"],
                   camera["in_force"] or "", told_reason)
    for serial in told["missing"]:
        yield "", serial, "", "missing", "", "Not among the chosen cameras of a PC that answered."


def table(told, only_trouble=False):
    good = ("done", "unchanged", "would", "skipped")
    chosen = [row for row in rows(told) if not only_trouble or row[3] not in good]
    cells = [HEADINGS, *([" ".join(str(cell).split()) for cell in row] for row in chosen)]
    widths = [max(map(len, column)) for column in zip(*cells)]
    lines = ["  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip() for row in cells]
    counts = [f"{count} {status}" for status, count in sorted(told["summary"]["hosts"].items())]
    counts_of_cameras = [f"{count} {result}" for result, count in sorted(told["summary"]["cameras"].items())]
    sums = [f"PCs: {', '.join(counts)}. Cameras: {', '.join(counts_of_cameras) or 'none'}."]
    return lines * bool(chosen) + [""] * bool(chosen) + sums
