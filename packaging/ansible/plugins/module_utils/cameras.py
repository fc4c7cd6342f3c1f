# SPDX-License-Identifier: MIT
"""What became of each camera of a task that took several calls of torvane: one line, what changed, and why not."""
GOOD = ("done", "unchanged", "would")
CHANGED = ("done", "would")
BAD = ("failed", "refused", "not_proved")
CHANGE_BY = {"change": {"password": ("old", "new")}, "lock": {"lock": ("unlocked", "locked")},
             "unlock": {"lock": ("locked", "unlocked")}}


def place_of(line):
    return line["producer"], line["interface"], line["id"]


def merged(before, line):
    """A later line of the same camera. What it did not look at is as the earlier one told."""
    known = {key: before[key] for key, value in line.items() if key != "reason" and value in (None, "unknown")}
    result = line["result"]
    if result == "unchanged" and before["result"] in CHANGED:
        result = before["result"]
    return {**line, **known, "result": result, "ms": before["ms"] + line["ms"]}


class Cameras:
    def __init__(self):
        self.line_of = {}  # by place
        self.changes = {}  # by place, what of it went from what to what

    def lines(self):
        return list(self.line_of.values())

    def take(self, lines):
        for line in lines:
            place = place_of(line)
            self.line_of[place] = merged(self.line_of[place], line) if place in self.line_of else line
            changes = self.changes.setdefault(place, {})
            if line["result"] in CHANGED:
                changes |= CHANGE_BY[line["action"]]

    def take_proofs(self, lines):
        """Lines of a verify of the new passwords as lines of a change that finds them in force."""
        self.take(line | ({"action": "change", "in_force": "new", "result": "unchanged"} if line["result"] in GOOD
                          else {"action": "change", "in_force": "unknown"}) for line in lines)

    def take_list(self, rows):
        """Rows of a list as lines of a change that is about the factory password alone."""
        results = {"user": "unchanged", "none": "skipped", "unknown": "failed"}
        self.take({**row, "action": "change", "result": results[row["password"]], "in_force": None, "ms": 0, "run": None}
                  for row in rows)

    def spare(self, rows):
        """Takes back that the locks of these would change."""
        for place in map(place_of, rows):
            if self.changes.get(place, {}).pop("lock", None) and not self.changes[place]:
                self.line_of[place] = self.line_of[place] | {"result": "unchanged"}

    def fit(self):
        """Those that nothing stood against so far."""
        return [line for line in self.lines() if line["result"] in GOOD]

    def unfit_serials(self):
        return {line["serial"] for line in self.lines() if line["result"] not in GOOD}

    def changed_to(self, new_passwords):
        """Of the new passwords those that are in force, or would be."""
        serials = {line["serial"] for line in self.lines() if line["in_force"] == "new" or line["result"] == "would"}
        return {serial: new for serial, new in new_passwords.items() if serial in serials}

    @property
    def is_changed(self):
        return any(self.changes.values())

    def diff(self):
        """For `--diff`; it tells whose password is in force, never a password."""
        texts = ([], [])
        for place, changes in self.changes.items():
            line = self.line_of[place]
            for what, states in changes.items():
                for text, state in zip(texts, states):
                    text.append(f"{line['serial'] or line['id']}: {what}: {state}\n")
        return {"before": "".join(texts[0]), "after": "".join(texts[1])}

    def failure(self):
        """Each camera that failed, with its reason; empty if none did."""
        bad = [line for line in self.lines() if line["result"] in BAD]
        if not bad:
            return ""
        return "\n".join([f"{len(bad)} of {len(self.line_of)} cameras failed:", *map(reason_line, bad)])


def reason_line(line):
    reason = line["reason"] or {"code": line["result"], "text": "", "next": ""}
    hint = "(In a task: resume: true.)" if reason["code"] == "journal" else ""
    words = " ".join(filter(None, (reason["text"], reason["next"], hint)))
    return f"{line['serial'] or line['id']}: {reason['code']}: {words}"
