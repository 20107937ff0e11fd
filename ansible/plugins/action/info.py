# The Varden Setting Tool's developers; licence: MIT
"""Reads a printer's settings."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible_collections.varden.printer.plugins.plugin_utils.printer_action import PAUSE, PrinterAction


class ActionModule(PrinterAction):
    SPEC = dict(PAUSE, settings={"type": "list", "elements": "str", "default": []})

    def do(self, args):
        outcome = self.varden(args, "read", words=args["settings"])
        result = outcome.result()
        read = outcome.data.get("settings") or {}
        result["settings"] = {name: each["value"] for name, each in read.items()}
        result["unread"] = {name: each["why"] for name, each in read.items() if each["why"]}
        result["complete"] = bool(outcome.data.get("complete"))
        result["target"] = args["target"]
        return result
