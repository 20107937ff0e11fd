# The Varden Setting Tool's developers; licence: MIT
"""What the actions have in common: a printer's name, options, one process on the controller."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible.plugins.action import ActionBase

from ansible_collections.varden.printer.plugins.plugin_utils import varden

COMMON = {
    "target": {"type": "str"},
    "executable": {"type": "path"},
}
PAUSE = {"pause": {"type": "float"}}
STATE = {"state_folder": {"type": "path"}}
WRITING = dict(STATE, reach={"type": "float"})
# The commands that take what an action may be given; a rollout's step also reads.
COMMANDS = {
    "pause": ("read", "write", "recover"),
    "reach": ("write", "recover"),
    "state_folder": ("write", "recover", "maintain"),
}
# Options that a variable gives to all tasks.
VARIABLES = {
    "executable": "varden_executable",
    "pause": "varden_pause",
    "reach": "varden_reach",
    "state_folder": "varden_state_folder",
}


class PrinterAction(ActionBase):
    """A task of one printer. Nothing is copied anywhere, and no connection is made but varden's."""

    TRANSFERS_FILES = False
    SPEC = {}

    def run(self, tmp=None, task_vars=None):
        self._vars = task_vars or {}
        result = super().run(tmp, self._vars)
        try:
            result.update(self.attempt())
        except varden.CannotRun as error:
            result.update(failed=True, msg=str(error))
        return result

    def attempt(self):
        """All that can fail of a task."""
        return self.do(self._arguments())

    def _arguments(self):
        args = self.validate_argument_spec(argument_spec=dict(COMMON, **self.SPEC))[1]
        for name, variable in VARIABLES.items():
            if name in self.SPEC or name in COMMON:
                if args.get(name) is None:
                    args[name] = self._variable(variable)
        for name in ("dest", "folder", "state_folder"):
            if args.get(name):  # as Ansible takes paths: from the playbook's folder on
                args[name] = self._loader.path_dwim(str(args[name]))
        args["named"] = args.get("target") or self._target()
        args["target"] = self._where_it_is(args["named"])
        args["executable"] = args["executable"] or "varden"
        return args

    def do(self, args):
        """The task's own part: takes complete arguments and returns a result."""
        raise NotImplementedError

    def check_mode(self):
        return bool(self._task.check_mode)

    def host(self):
        return self._vars["inventory_hostname"]

    def varden(self, args, command, options=(), words=()):
        """One process; pause, reach and folder of the journals are handed over where they are given."""
        options = list(options)
        for name, option in (("pause", "--pause"), ("reach", "--reach"), ("state_folder", "--state")):
            if command in COMMANDS[name] and args.get(name) is not None:
                options.append("%s=%s" % (option, args[name]))
        return varden.run(args["executable"], command, options, [args["target"]] + list(words))

    def _variable(self, name):
        value = self._vars.get(name)
        return None if value is None else self._templar.template(value)

    def _where_it_is(self, named):
        """A printer that was sent elsewhere is there, as long as it is named as it was then.

        Facts may be kept from run to run; an inventory that says something else since counts more.
        """
        moved = (self._vars.get("ansible_facts") or {}).get("varden_moved") or {}
        return moved["to"] if moved.get("from") == named and moved.get("to") else named

    def _target(self):
        target = self._variable("varden_target")
        if target:
            return str(target)
        host = self._variable("ansible_host") or self.host()
        port = self._variable("ansible_port")
        if str(host).count(":") > 1 and not str(host).startswith("["):
            host = "[%s]" % host
        return "lan:%s:%s" % (host, port) if port else "lan:%s" % host
