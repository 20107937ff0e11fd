# The Varden Setting Tool's developers; licence: MIT
"""Changes a printer's settings as a whole or not at all."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible_collections.varden.printer.plugins.plugin_utils import change
from ansible_collections.varden.printer.plugins.plugin_utils.printer_action import PAUSE, WRITING, PrinterAction


class ActionModule(PrinterAction):
    SPEC = dict(
        PAUSE, **WRITING,
        settings={"type": "dict"},
        file={"type": "str"},
        allow_link_change={"type": "bool", "default": False},
        stop_bit_is={"type": "str"},
        if_unchanged={"type": "str"},
        expect_host={"type": "str"},
        resume={"type": "bool", "default": False},
    )

    def do(self, args):
        for name in ("file", "if_unchanged"):
            if args.get(name):
                args[name] = self._find_needle("files", args[name])
        return change.result_of(change.write(self, args), args)
