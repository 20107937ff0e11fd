# The Varden Setting Tool's developers; licence: MIT
"""The summary of a rollout, from what its folder holds of each printer."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import os

from ansible.errors import AnsibleActionFail
from ansible.plugins.action import ActionBase

from ansible_collections.varden.printer.plugins.plugin_utils import records, summary


class ActionModule(ActionBase):
    TRANSFERS_FILES = False
    SPEC = {
        "folder": {"type": "path", "required": True},
        "run_id": {"type": "str", "required": True},
        "printers": {"type": "list", "elements": "str", "required": True},
        "batch": {"type": "list", "elements": "str", "default": []},
        "faults_allowed": {"type": "int", "default": 0},
        "title": {"type": "str", "default": "Rollout"},
    }

    def run(self, tmp=None, task_vars=None):
        result = super().run(tmp, task_vars)
        args = self.validate_argument_spec(argument_spec=self.SPEC)[1]
        folder = records.Folder(args["folder"], bool(self._task.check_mode))
        try:
            rows = [self._row(folder, host, args["run_id"]) for host in args["printers"]]
            title = args["title"] + (" (check mode)" if self._task.check_mode else "")
            records.write_whole(folder.summary("csv"), summary.as_csv(rows))
            records.write_whole(folder.summary("html"), summary.as_html(rows, title))
        except OSError as error:
            raise AnsibleActionFail("Cannot keep the summary: %s" % error)
        faults = [row["printer"] for row in rows if row["result"] in records.FAULTS]
        batch = set(args["batch"])
        result.update(
            changed=False, counts=summary.counts(rows), faults=faults,
            stop=not self._task.check_mode and len(faults) > args["faults_allowed"],
            lines=[summary.line(row) for row in rows if row["printer"] in batch],
            csv=folder.summary("csv"), html=folder.summary("html"))
        return result

    @staticmethod
    def _row(folder, host, run_id):
        backup = folder.backup(host)
        return summary.row(host, folder.read(host), run_id, backup if os.path.exists(backup) else "")
