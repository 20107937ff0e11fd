# The Varden Setting Tool's developers; licence: MIT
"""One step of a rollout on one printer; what has come of it is kept in the rollout's folder."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import json
import os

from ansible.errors import AnsibleActionFail, AnsibleError

from ansible_collections.varden.printer.plugins.plugin_utils import change, records, saving, summary, varden
from ansible_collections.varden.printer.plugins.plugin_utils.printer_action import PAUSE, WRITING, PrinterAction


class ActionModule(PrinterAction):
    SPEC = dict(
        PAUSE, **WRITING,
        step={"type": "str", "required": True, "choices": ["prepare", "change", "back"]},
        folder={"type": "path", "required": True},
        title={"type": "str", "default": "Rollout"},
        settings={"type": "dict"},
        file={"type": "str"},
        faults_allowed={"type": "int", "default": 0},
        allow_link_change={"type": "bool", "default": False},
        stop_bit_is={"type": "str"},
        expect_host={"type": "str"},
        resume={"type": "bool", "default": True},
    )

    def run(self, tmp=None, task_vars=None):
        self._run = records.run_id()
        return super().run(tmp, task_vars)

    def attempt(self):
        self._folder = self._record = None
        try:
            return super().attempt()
        except Exception as error:  # pylint: disable=broad-except
            return self._failed_on(error)

    def _failed_on(self, error):
        """A fault like any other, so that it counts; as much of it is kept as can be."""
        args = self._task.args
        result = {"changed": False, "failed": True, "msg": str(error)}
        if self._record and self._record.get("result") == "begun":
            if isinstance(error, (varden.CannotRun, AnsibleError)):
                self._leave_as_found()
            else:
                result["person_needed"] = True  # nobody knows how far it has come
        try:
            self._folder = self._folder or records.Folder(self._loader.path_dwim(str(args["folder"])), self.check_mode())
            self._folder.tell_fault(self._run, self.host())
            if self._record is None:
                self._record = dict(records.Folder(self._folder.folder, False).read(self.host()), run=self._run)
            self._keep({"title": str(args.get("title") or "Rollout")}, result, "failed")
        except (varden.CannotRun, OSError, ValueError, KeyError) as second:
            result["msg"] += "; and this could not be kept: %s" % second
        return result

    def do(self, args):
        self._folder = records.Folder(args["folder"], self.check_mode())
        self._record = records.Folder(args["folder"], False).read(self.host())
        self._find_where_it_is(args)
        self._found = dict(self._record)
        self._record["run"] = self._run
        return getattr(self, "_" + args["step"])(args)

    def _find_where_it_is(self, args):
        """An earlier run may have sent the printer elsewhere; what this one has done is a fact, and counts more."""
        record, moved_to = self._record, args["target"]
        if moved_to == args["named"] and record.get("target") == args["named"]:
            moved_to = record.get("moved_to") or moved_to
        record.pop("moved_to", None)
        if moved_to != args["named"]:
            record["moved_to"] = moved_to
        record["target"] = args["named"]
        args["target"] = moved_to

    def _prepare(self, args):
        backup = self._folder.backup(self.host())
        other = self._folder.claim(records.place_of(args["target"]), self._run, self.host())
        if other:
            # Its backup would be of what the rollout has changed already.
            raise AnsibleActionFail("%s is the printer %s already; a printer has one name" % (args["target"], other))
        if self._record.get("touched") and not os.path.exists(backup):
            # What could be backed up now is what the rollout has made of it.
            raise AnsibleActionFail("the rollout has changed it, and its backup is gone: %s" % backup)
        if self.check_mode():
            return {"changed": False, "backup": backup}
        # The backup of a rollout that goes on is from before its first change.
        result = saving.save(self, args, backup, not self._record.get("touched"))
        self._keep(args, result, "prepared")
        # A rollout changes printers; and what has failed here fails where the others are changed.
        return {"changed": False, "backup": backup, "fault": self._record["result"] in records.FAULTS,
                "msg": self._record["message"]}

    def _change(self, args):
        if self._found.get("run") == self._run and self._found.get("result") in records.FAULTS:
            return self._fail_as_found(args)
        faulty = self._folder.faulty(self._run) | records.lost_hosts(self._vars)
        if not self.check_mode() and len(faulty) > args["faults_allowed"]:
            return {"changed": False, "skipped": True, "skip_reason": "the rollout has stopped"}
        if args.get("file"):
            args["file"] = self._find_needle("files", args["file"])
        self._begin(args, sorted(args.get("settings") or {}), whole=bool(args.get("file")))
        outcome = change.write(self, args)
        result = change.result_of(outcome, args)
        self._settle(outcome)
        kind = "would-change" if outcome.code == varden.DIFFERS else (
            "changed" if result["changed"] else "unchanged")
        self._keep(args, result, kind, outcome.data)
        return result

    def _fail_as_found(self, args):
        """What preparing has come to, for Ansible's own count."""
        self._summarise(args)
        kind = "unreachable" if self._found["result"] == "unreachable" else "failed"
        return {"changed": False, kind: True, "msg": self._found["message"]}

    def _back(self, args):
        backup = self._folder.backup(self.host())
        if not self._record.get("touched") or not os.path.exists(backup):
            self._keep(args, {}, "not-touched")
            return {"changed": False, "skipped": True, "skip_reason": "the rollout has not touched it"}
        self._take_from(args, backup)
        outcome = change.write(self, args)
        result = change.result_of(outcome, args)
        kind = "would-change" if outcome.code == varden.DIFFERS else (
            "taken-back" if result["changed"] else "unchanged")
        if outcome.code == varden.DONE and not self.check_mode():
            self._record.update(touched=False, names=[])
            for name in ("before", "after", "changed_at", "begun_at"):
                self._record.pop(name, None)
        self._keep(args, result, kind, outcome.data)
        return result

    def _take_from(self, args, backup):
        """The change that brings back what was before: of what the rollout has named, or of everything."""
        args["settings"] = args["file"] = None
        if self._record.get("whole"):
            args["file"] = backup  # cut off before it was known what its file names
            return
        settings = self._backed_up(backup)
        names = self._record.get("names") or []
        args["settings"] = {name: settings[name] for name in names if name in settings}

    def _backed_up(self, backup):
        try:
            with open(backup, encoding="utf-8") as file:
                return json.load(file)["settings"]
        except (OSError, ValueError, KeyError) as error:
            raise AnsibleActionFail("%s is no backup: %s" % (backup, error))

    def _begin(self, args, names, whole):
        """What may be changed from now on stands in the record before anything is sent."""
        self._record.update(names=self._names_with(names))
        if not self._record.get("changed_at"):
            self._record.update(before={}, after={})  # these were of the way back
        if self.check_mode():
            return
        begun_at = self._found.get("begun_at") or records.now()
        self._record.update(result="begun", touched=True, whole=whole, time=records.now(), begun_at=begun_at)
        self._folder.write(self.host(), self._record)

    def _settle(self, outcome):
        """What a way back has to bring back, now that it is known what has come of the change."""
        results = outcome.data.get("results") or {}
        done = outcome.code == varden.DONE
        if change.left_as_it_was(outcome):
            self._leave_as_found()
        elif done:
            self._record["names"] = self._names_with(name for name, each in results.items() if each != "same")
        else:
            self._record["names"] = sorted(set(self._record["names"]) | set(results))
        if self._found.get("whole") and done:
            self._record["names"] = self._names_with(results)
        if done:
            self._tell_of_the_cut_off(outcome.data.get("after") or {})
            self._record.pop("begun_at", None)
        if results:
            self._record["whole"] = bool(self._found.get("whole")) and not done

    def _tell_of_the_cut_off(self, after):
        """An earlier run was cut off before it could tell what it has changed; the backup tells."""
        if not self._found.get("begun_at"):
            return
        old = self._backed_up(self._folder.backup(self.host()))
        names = [name for name in self._record["names"] if name in old and old[name] != after.get(name, old[name])]
        if names:
            self._record.setdefault("changed_at", self._found["begun_at"])
            self._record["before"] = dict({name: old[name] for name in names}, **self._record["before"])
            self._record["after"] = dict(self._record["after"], **{name: after[name] for name in names})

    def _leave_as_found(self):
        for key in ("touched", "whole", "names", "begun_at"):
            self._record.pop(key, None)
            if key in self._found:
                self._record[key] = self._found[key]

    def _names_with(self, names):
        return sorted(set(self._found.get("names") or []) | set(names))

    def _keep(self, args, result, kind, data=None):
        record = self._record
        if result.get("unreachable"):
            kind = "unreachable"
        elif result.get("failed"):
            kind = "person-needed" if result.get("person_needed") else "failed"
        message = result.get("msg", "") if kind in records.FAULTS else ""
        record.update(result=kind, time=records.now(), message=message, journal=result.get("journal", ""))
        if kind in records.FAULTS:
            self._folder.tell_fault(self._run, self.host())
        if kind in ("changed", "would-change", "taken-back"):
            names, (now_before, now_after) = change.differing(data), change.sides(data)
            before, after = ({}, {}) if kind != "changed" else (record["before"], record["after"])
            record["before"] = dict({name: now_before.get(name) for name in names}, **before)
            record["after"] = dict(after, **{name: now_after[name] for name in names})
        if kind == "changed":
            record["changed_at"] = record["time"]
        if result.get("moved_to"):
            record["moved_to"] = result["moved_to"]
        self._folder.write(self.host(), record)
        if kind in records.FAULTS and args.get("step") != "prepare":  # then the next step does
            self._summarise(args)

    def _summarise(self, args):
        """Who has failed may be the last of his batch, and nobody be left to write the summary."""
        summary.write(self._folder, self._vars, self._run, args["title"], False)
