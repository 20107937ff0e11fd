# The Varden Setting Tool's developers; licence: MIT
"""Keeps a printer's settings in a file of the controller."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible_collections.varden.printer.plugins.plugin_utils import saving
from ansible_collections.varden.printer.plugins.plugin_utils.printer_action import PAUSE, PrinterAction


class ActionModule(PrinterAction):
    SPEC = dict(
        PAUSE,
        dest={"type": "path", "required": True},
        force={"type": "bool", "default": True},
    )

    def do(self, args):
        return saving.save(self, args, args["dest"], args["force"])
