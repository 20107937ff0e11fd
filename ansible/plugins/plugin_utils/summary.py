# The Varden Setting Tool's developers; licence: MIT
"""The summary of a rollout: a line a printer, a table for programs, a page for people."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import csv
import html
import io
import os

from ansible_collections.varden.printer.plugins.plugin_utils import records, varden

COLUMNS = ("printer", "target", "result", "settings", "changed_at", "time", "message", "journal", "backup")
WORDS = {
    "changed": "changed", "unchanged": "is as wanted", "would-change": "would be changed",
    "unreachable": "not reachable", "failed": "failed", "person-needed": "a person is needed",
    "not-begun": "not begun", "taken-back": "taken back", "not-touched": "was not touched",
    "begun": "cut off",
}
STYLE = """body{font:15px/1.4 sans-serif;margin:2em;color:#222}table{border-collapse:collapse}
th,td{border:1px solid #bbb;padding:.3em .6em;text-align:left;vertical-align:top}th{background:#eee}
.changed,.taken-back{background:#e2f3e2}.would-change{background:#e4ecfa}.not-begun,.begun{background:#f6f0d8}
.unreachable,.failed,.person-needed{background:#f8d9d6}"""


def _value(value):
    return "(not known)" if value is None else str(value)


def row(host, record, run, backup):
    """A printer's row. What this run has not come to is not begun, whatever an earlier run has done.

    Without a run it is what the last one has done.
    """
    now = run is None or record.get("run") == run
    result = record.get("result") if now else None
    before, after = record.get("before") or {}, record.get("after") or {}
    changes = ["%s: %s -> %s" % (name, _value(before.get(name)), _value(after.get(name)))
               for name in after if name in before]
    return {
        "printer": host,
        "target": record.get("target") or "",
        "result": "not-begun" if result in (None, "prepared") else result,
        "settings": "; ".join(changes),
        "changed_at": record.get("changed_at") or "",
        "time": record.get("time") or "" if now else "",
        "message": record.get("message") or "" if now else "",
        "journal": record.get("journal") or "" if now else "",
        "backup": backup,
    }


def _with_fault(entry, over):
    """The row of a printer that Ansible goes on without, or that nobody works on any more."""
    if entry["result"] == "begun" and over:
        entry.update(result="person-needed", message="its task has ended in the middle of the change; "
                     "varden recover tells how it stands")
    elif entry["result"] not in records.FAULTS + ("begun",):
        entry.update(result="failed", message="a task has failed that has told nothing here; what Ansible has "
                     "printed tells why")
    return entry


def _row_of(folder, host, run, backup):
    """A printer's row; of one whose record cannot be read it says so, which is a fault once it is come to."""
    try:
        return row(host, folder.read(host), run, backup)
    except varden.CannotRun as error:
        result = "failed" if host in folder.faulty(run) else "not-begun"
        return row(host, {"run": run, "result": result, "message": str(error)}, run, backup)


def line(entry):
    """One line for a terminal."""
    text = "%s: %s" % (entry["printer"], WORDS[entry["result"]])
    if entry["result"] in ("changed", "would-change", "taken-back") and entry["settings"]:
        text += ": " + entry["settings"]
    return text + (": " + entry["message"] if entry["message"] else "")


def counts(rows):
    """How many printers have which result, in the order of the words."""
    return {result: sum(each["result"] == result for each in rows)
            for result in WORDS if any(each["result"] == result for each in rows)}


def _inert(value):
    """A cell that no spreadsheet takes for a formula."""
    return "'" + value if value[:1] in ("=", "+", "-", "@", "\t", "\r") else value


def as_csv(rows):
    text = io.StringIO()
    table = csv.DictWriter(text, COLUMNS, lineterminator="\r\n")
    table.writeheader()
    table.writerows({name: _inert(value) for name, value in each.items()} for each in rows)
    return text.getvalue()


def as_html(rows, title):
    """A page that needs nothing beside it; what needs somebody stands first."""
    def order(entry):
        result = entry["result"]
        return 0 if result in records.FAULTS else 1 if result in ("begun", "not-begun") else 2

    escape = html.escape
    numbers = ", ".join("%d %s" % (number, WORDS[result]) for result, number in counts(rows).items())
    head = "".join("<th>%s</th>" % name.replace("_", " ") for name in COLUMNS)
    body = "\n".join(
        '<tr class="%s">%s</tr>' % (each["result"], "".join(
            "<td>%s</td>" % escape(WORDS[each[name]] if name == "result" else each[name])
            for name in COLUMNS))
        for each in sorted(rows, key=order))
    return ('<!DOCTYPE html>\n<html lang="en"><head><meta charset="utf-8"><title>%s</title>\n'
            "<style>%s</style></head>\n<body><h1>%s</h1>\n<p>%d printers: %s. %s</p>\n"
            "<table><thead><tr>%s</tr></thead>\n<tbody>\n%s\n</tbody></table></body></html>\n"
            % (escape(title), STYLE, escape(title), len(rows), numbers, records.now(), head, body))


def write(folder, task_vars, run, title, over):
    """Writes both files from the records as they are now; the rows. It is over when no printer is under way.

    Behind the printers of the play stand those of earlier runs, with what had become of them.
    """
    lost = records.lost_hosts(task_vars)
    with folder.locked():
        rows = []
        for host in task_vars["ansible_play_hosts_all"]:
            backup = folder.backup(host)
            entry = _row_of(folder, host, run, backup if os.path.exists(backup) else "")
            rows.append(_with_fault(entry, over) if host in lost or entry["result"] == "begun" else entry)
        for host in sorted(set(folder.hosts()) - {each["printer"] for each in rows}):
            backup = folder.backup(host)
            rows.append(_row_of(folder, host, None, backup if os.path.exists(backup) else ""))
        records.write_whole(folder.summary("csv"), as_csv(rows))
        records.write_whole(folder.summary("html"), as_html(rows, title))
    return rows
