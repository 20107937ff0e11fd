# The Varden Setting Tool's developers; licence: MIT
"""The summary of a rollout, from what its folder holds of each printer."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible.errors import AnsibleActionFail
from ansible.plugins.action import ActionBase

from ansible_collections.varden.printer.plugins.plugin_utils import records, summary


class ActionModule(ActionBase):
    TRANSFERS_FILES = False
    SPEC = {
        "folder": {"type": "path", "required": True},
        "faults_allowed": {"type": "int", "default": 0},
        "title": {"type": "str", "default": "Rollout"},
    }

    def run(self, tmp=None, task_vars=None):
        run_id = records.run_id()
        result = super().run(tmp, task_vars)
        args = self.validate_argument_spec(argument_spec=self.SPEC)[1]
        folder = records.Folder(self._loader.path_dwim(args["folder"]), bool(self._task.check_mode))
        try:
            if not self._task.check_mode:
                folder.sweep()
            rows = summary.write(folder, task_vars, run_id, args["title"], True)
        except OSError as error:
            raise AnsibleActionFail("Cannot keep the summary: %s" % error)
        play = set(task_vars["ansible_play_hosts_all"])
        faults = [row["printer"] for row in rows if row["printer"] in play and row["result"] in records.FAULTS]
        batch = set(task_vars["ansible_play_batch"])
        result.update(
            changed=False, counts=summary.counts(rows), faults=faults,
            stop=not self._task.check_mode and len(faults) > args["faults_allowed"],
            lines=[summary.line(row) for row in rows if row["printer"] in batch],
            csv=folder.summary("csv"), html=folder.summary("html"))
        return result
