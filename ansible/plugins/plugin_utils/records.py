# The Varden Setting Tool's developers; licence: MIT
"""What a rollout keeps of each printer: a folder that outlives the controller.

Each printer has a record (records/HOST.json) and a backup (backups/HOST.json); both are written whole
or not at all. faults holds a line for each printer that a run has failed on.
"""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import fcntl
import json
import os
import shutil
import tempfile
import time
from urllib.parse import quote, unquote

from ansible_collections.varden.printer.plugins.plugin_utils import varden

OK = ("changed", "unchanged", "would-change", "taken-back", "not-touched")
LEFT = 3600  # seconds
FAULTS = ("unreachable", "failed", "person-needed")


def lost_hosts(task_vars):
    """The hosts of the play that Ansible goes on without, whatever task has failed or found them unreachable."""
    return set(task_vars["ansible_play_hosts_all"]) - set(task_vars["ansible_play_hosts"])


def now():
    return time.strftime("%Y-%m-%dT%H:%M:%SZ", time.gmtime())


def run_id():
    """What tells a run of Ansible from others: the controller's process, which has forked this one."""
    number = os.getppid()
    try:
        with open("/proc/%d/stat" % number, encoding="utf-8") as file:
            return "%d-%s" % (number, file.read().rpartition(")")[2].split()[19])  # when it was begun
    except OSError:
        return str(number)


def place_of(target):
    """What of a target tells one printer from another."""
    kind, _, rest = target.partition(":")
    if kind == "lan":
        return "lan:" + (rest[:-5] if rest.endswith(":8000") else rest).lower()
    return "%s:%s" % (kind, rest.partition(",")[0])


def keep_names(folder):
    """What a folder's files are called is on the disk afterwards."""
    number = os.open(folder, os.O_RDONLY)
    try:
        os.fsync(number)
    finally:
        os.close(number)


def write_whole(path, text):
    """A reader sees the file as it was or as it is now, also when the controller loses its power."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    number, name = tempfile.mkstemp(prefix=".", dir=os.path.dirname(path))
    try:
        with os.fdopen(number, "w", encoding="utf-8") as file:
            file.write(text)
            file.flush()
            os.fsync(file.fileno())
        os.chmod(name, 0o644)
        os.replace(name, path)
    except BaseException:
        os.unlink(name)
        raise
    keep_names(os.path.dirname(path))


class Folder:
    """A rollout's folder; what a run in check mode finds out lies beside it, in check/."""

    def __init__(self, folder, check):
        self.folder = folder
        self.base = os.path.join(folder, "check") if check else folder

    def backup(self, host):
        return os.path.join(self.folder, "backups", quote(host, safe="") + ".json")

    def summary(self, kind):
        return os.path.join(self.base, "summary." + kind)

    def _record(self, host):
        return os.path.join(self.base, "records", quote(host, safe="") + ".json")

    def hosts(self):
        """All printers of which there is a record."""
        try:
            names = os.listdir(os.path.join(self.base, "records"))
        except FileNotFoundError:
            return []
        return sorted(unquote(name[:-5]) for name in names if name.endswith(".json") and not name.startswith("."))

    def read(self, host):
        """The printer's record; an empty one when there is none. One that cannot be read is a CannotRun."""
        path = self._record(host)
        try:
            with open(path, encoding="utf-8") as file:
                record = json.load(file)
            if isinstance(record, dict):
                return record
            cause = "it holds something else"
        except FileNotFoundError:
            return {}
        except (OSError, ValueError) as error:
            cause = error
        raise varden.CannotRun("%s is no record: %s; nobody knows any more what the rollout has changed of %s, its "
                               "backup may be %s" % (path, cause, host, self.backup(host)))

    def claim(self, place, run, host):
        """Says that the printer at that place is this host; the name of another one that it is already.

        It is another's when this run has met it there, or when the rollout has changed it under that name.
        """
        path = os.path.join(self.base, "places", quote(place, safe=""))
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "a+", encoding="utf-8") as file:
            fcntl.flock(file, fcntl.LOCK_EX)
            file.seek(0)
            number, _, name = file.read().rstrip("\n").partition(" ")
            if name not in ("", host) and self._is_at(name, place, number == run, run):
                return name
            file.truncate(0)
            file.write("%s %s\n" % (run, host))
        return None

    def _is_at(self, host, place, claimed_now, run):
        record = Folder(self.folder, False).read(host)
        here = place_of(record.get("moved_to") or record.get("target") or "") == place
        if claimed_now:
            return here or record.get("run") != run  # it may not have written its record yet
        return here and bool(record.get("touched"))

    def write(self, host, record):
        write_whole(self._record(host), json.dumps(record, indent=1, ensure_ascii=False) + "\n")

    def sweep(self):
        """Removes what killed tasks have left half written; nobody writes for so long."""
        for part in ("backups", "records"):
            place = os.path.join(self.folder, part)
            for name in os.listdir(place) if os.path.isdir(place) else ():
                path = os.path.join(place, name)
                try:
                    if name.startswith(".") and os.path.getmtime(path) < time.time() - LEFT:
                        (os.unlink if os.path.isfile(path) else shutil.rmtree)(path)
                except OSError:
                    pass  # somebody else was faster

    def locked(self):
        """An open file; who has it is the only one to write the summary, until it is closed."""
        os.makedirs(self.base, exist_ok=True)
        file = open(os.path.join(self.base, "lock"), "w", encoding="utf-8")
        fcntl.flock(file, fcntl.LOCK_EX)
        return file

    def tell_fault(self, run, host):
        os.makedirs(self.base, exist_ok=True)
        with open(os.path.join(self.base, "faults"), "a", encoding="utf-8") as file:
            file.write("%s %s\n" % (run, host))

    def faulty(self, run):
        """The printers that this run has failed on."""
        try:
            with open(os.path.join(self.base, "faults"), encoding="utf-8") as file:
                lines = (line.rstrip("\n").partition(" ") for line in file)
                return {host for number, _, host in lines if number == run}
        except FileNotFoundError:
            return set()
