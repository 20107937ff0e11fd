# The Varden Setting Tool's developers; licence: MIT
"""Has a printer carry out a maintenance function."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

from ansible_collections.varden.printer.plugins.plugin_utils import varden
from ansible_collections.varden.printer.plugins.plugin_utils.printer_action import STATE, PrinterAction

# The functions after which the printer holds something else; the others look, or print labels.
CHANGING = ("ram-clear", "threshold-calib", "sensor-adjust")
FUNCTIONS = CHANGING + ("head-check", "test-print", "diag-print")


class ActionModule(PrinterAction):
    SPEC = dict(
        STATE,
        function={"type": "str", "required": True, "choices": list(FUNCTIONS)},
        fields={"type": "dict", "default": {}},
    )

    def do(self, args):
        words = varden.setting_words(args["fields"])
        changes = args["function"] in CHANGING
        if self.check_mode():
            return {"changed": changes, "sent": False, "target": args["target"],
                    "msg": "%s is not sent in check mode" % args["function"]}
        outcome = self.varden(args, "maintain", ["--yes"], [args["function"]] + words)
        result = outcome.result()
        for key in ("fields", "commands", "sent", "code", "text", "known"):
            result[key] = outcome.data.get(key)
        result["sent"] = bool(result["sent"])
        result["changed"] = changes and bool(result["sent"])
        result["target"] = args["target"]
        return result
