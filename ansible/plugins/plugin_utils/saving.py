# The Varden Setting Tool's developers; licence: MIT
"""Settings of a printer into a file of the controller, all or nothing."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import json
import os
import tempfile

from ansible.errors import AnsibleActionFail

from ansible_collections.varden.printer.plugins.plugin_utils import records

KINDS = (".dt1", ".dt2", ".json")
# What the printer measures, and what is therefore never the same for long.
SENSORS = ("ambient-sensor", "reflective-sensor", "thermal-head-sensor", "transmissive-sensor")


def _bytes_of(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except FileNotFoundError:
        return None


def _settings_of(path):
    """What a settings file in JSON holds but for the sensors; None when it is none."""
    try:
        settings = json.loads(_bytes_of(path))["settings"]
        return {name: value for name, value in settings.items() if name not in SENSORS}
    except (TypeError, ValueError, KeyError, AttributeError):
        return None


def _same(read, dest):
    """Whether a file that is there holds what was read."""
    if _bytes_of(read) == _bytes_of(dest):
        return True
    return dest.endswith(".json") and _settings_of(dest) is not None and _settings_of(read) == _settings_of(dest)


def save(action, args, dest, force):
    """Reads the printer and replaces the file when it holds anything else; a task's result.

    The file stays as it is when nothing is new; what sensors measure is no news. Without force a file that is there stays, and the
    printer is not asked.
    """
    if not dest.endswith(KINDS):
        raise AnsibleActionFail("%s: a settings file's name ends with %s" % (dest, ", ".join(KINDS)))
    result = {"changed": False, "dest": dest, "target": args["target"]}
    if not force and os.path.exists(dest):
        result["msg"] = "%s is there already" % dest
        return result
    folder = os.path.dirname(os.path.abspath(dest))
    try:
        if not action.check_mode():
            os.makedirs(folder, exist_ok=True)
        with tempfile.TemporaryDirectory(prefix=".varden-", dir=None if action.check_mode() else folder) as place:
            read = os.path.join(place, "read" + os.path.splitext(dest)[1])
            outcome = action.varden(args, "read", ["--save=" + read])
            result.update(outcome.result())
            if outcome.code:
                return result
            result["filled"] = outcome.data["saved"]["filled"]
            result["changed"] = not _same(read, dest)
            if result["changed"] and not action.check_mode():
                os.replace(read, dest)
                records.keep_names(folder)
    except OSError as error:
        raise AnsibleActionFail("Cannot keep %s: %s" % (dest, error))
    return result
