# The Varden Setting Tool's developers; licence: MIT
"""Asks a printer for its status."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible_collections.varden.printer.plugins.plugin_utils.printer_action import PrinterAction


class ActionModule(PrinterAction):
    def do(self, args):
        outcome = self.varden(args, "status")
        result = outcome.result()
        for key in ("code", "text", "known", "seconds"):
            result[key] = outcome.data.get(key)
        result["target"] = args["target"]
        return result
