# The Varden Setting Tool's developers; licence: MIT
"""Changes of a printer's settings, as a task reports them."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import tempfile

from ansible_collections.varden.printer.plugins.plugin_utils import varden

# What a printer whose earlier change was not ended may hold of each setting, so that going on is safe.
HARMLESS = {"same", "changed", "restored", "unverifiable"}


def options_of(args):
    """varden write's own options of a task's arguments."""
    options = []
    for name, option in (("file", "--file"), ("stop_bit_is", "--stop-bit-is"),
                         ("if_unchanged", "--if-unchanged"), ("expect_host", "--expect-host")):
        if args.get(name):
            options.append("%s=%s" % (option, args[name]))
    if args.get("allow_link_change"):
        options.append("--allow-link-change")
    return options


def write(action, args):
    """Changes settings, or with check mode looks what would be changed; an Outcome."""
    options = options_of(args) + (["--check"] if action.check_mode() else [])
    words = varden.setting_words(args.get("settings") or {})
    outcome = _write_once(action, args, options, words)
    if outcome.stands and args.get("resume") and _is_safe(action, args):
        if action.check_mode():
            return _look_past(action, args, options, words)
        if action.varden(args, "recover", ["--keep"]).code == varden.DONE:
            outcome = _write_once(action, args, options, words)
    return outcome


def _look_past(action, args, options, words):
    """What a change would do once the journal that stands is taken up; a look needs no journals."""
    with tempfile.TemporaryDirectory(prefix="varden-") as nowhere:
        return action.varden(dict(args, state_folder=nowhere), "write", options, words)


def _write_once(action, args, options, words):
    """A process that was killed may have done anything; one that only looks has done nothing."""
    try:
        return action.varden(args, "write", options, words)
    except varden.Killed as error:
        if action.check_mode():
            raise
        return varden.Outcome(varden.PERSON_NEEDED, {"error": {"what": str(error)}, "end": "person-needed"}, error.code)


def _is_safe(action, args):
    """Whether of an earlier change nothing is left in doubt, so that its journal may go and the printer stay.

    It is when the printer holds of each setting what it held before or what was wanted then; what is
    still to be sent, the change that follows finds out.
    """
    seen = action.varden(args, "recover")
    if seen.code != varden.DIFFERS or not set(seen.data.get("results", {}).values()) <= HARMLESS:
        return False
    return _stop_bit_is_safe(seen.data, args)


def _stop_bit_is_safe(data, args):
    """Whether it does not matter if the stop bit of a change that was cut off has gone out: it is the one that is
    vouched for, or is to be sent again. No printer reports it."""
    vouched = args.get("stop_bit_is")
    sent = {step["settings"]["stop-bit"]["to"] for step in data.get("plan") or [] if "stop-bit" in step["settings"]}
    return sent <= {vouched} or bool(vouched and "stop-bit" in (args.get("settings") or {}))


def left_as_it_was(outcome):
    """Whether the printer holds what it held before varden write."""
    return (outcome.stands or outcome.code in (varden.WRONG, varden.NOT_REACHABLE)
            or (outcome.code == varden.INTERRUPTED and not outcome.person_needed)
            or outcome.data.get("end") in ("unchanged", "not-begun", "undone"))


def _text(settings, names):
    return "".join("%s: %s\n" % (name, "(not known)" if settings.get(name) is None else settings[name])
                   for name in names)


def sides(data):
    """What was before and what is, or would be, afterwards, by names.

    The stop bit, which no printer reports, is what the plan says, and left out where it only travels along.
    """
    before, after = dict(data.get("before") or {}), dict(data.get("after") or {})
    for side in (before, after):
        side.pop("stop-bit", None)
    for step in data.get("plan") or []:
        if "stop-bit" in step["settings"]:
            before["stop-bit"], after["stop-bit"] = (step["settings"]["stop-bit"][key] for key in ("from", "to"))
    return before, after


def differing(data):
    """The names of what is, or would be, different afterwards."""
    before, after = sides(data)
    return [name for name in after if before.get(name) != after[name]]


def result_of(outcome, args):
    """A task's result of a change."""
    data, result, target = outcome.data, outcome.result(), args["target"]
    names, (before, after) = differing(data), sides(data)
    result["changed"] = outcome.code == varden.DIFFERS or bool(data.get("changed"))
    for key, default in (("before", {}), ("after", {}), ("results", {}), ("plan", []), ("left_out", []),
                         ("end", None), ("moved_to", None), ("problems", [])):
        result[key] = data.get(key, default)
    result["target"] = data.get("moved_to") or target
    if result["changed"]:
        result["diff"] = {"before_header": target, "after_header": result["target"],
                          "before": _text(before, names),
                          "after": _text(after, names)}
    if data.get("moved_to"):
        result["ansible_facts"] = {"varden_moved": {"from": args["named"], "to": data["moved_to"]}}
    return result
