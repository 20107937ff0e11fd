# The Varden Setting Tool's developers; licence: MIT
"""One process of the program varden: its words, its JSON, its exit code."""

from __future__ import (absolute_import, division, print_function)
__metaclass__ = type

import json
import re
import subprocess

DONE, FAILED, WRONG, NOT_REACHABLE, DIFFERS, PERSON_NEEDED = range(6)
INTERRUPTED = 130

_JOURNAL = re.compile(r"its journal is (.+)$")
_NAME = re.compile(r"[a-z][a-z0-9-]*\Z")


class CannotRun(Exception):
    """The program cannot be started, or what it prints is not what it should be."""


# Settings whose values are texts or hexadecimal digits. What YAML takes for a number it has changed already: 012 is 10.
WORDS = ("code-1", "code-2", "code-3", "dhcp-client-id", "dhcp-host-name", "euro-code")


def setting_words(settings):
    """The words SETTING=VALUE of a dictionary.

    YAML takes a bare ON or OFF for a truth; here it is the word again.
    """
    words = []
    for name, value in settings.items():
        if not _NAME.match(str(name)):
            raise CannotRun("%r is no setting's name" % (name,))
        if name in WORDS and isinstance(value, (bool, int, float)):
            raise CannotRun("%s wants quotation marks: YAML takes its value for %r" % (name, value))
        if isinstance(value, bool):
            value = "ON" if value else "OFF"
        if value is None or isinstance(value, (dict, list)):
            raise CannotRun("%s has no value that could be sent" % name)
        words.append("%s=%s" % (name, value))
    return words


class Killed(CannotRun):
    """The program was ended before it could print its JSON."""

    def __init__(self, code, text):
        super().__init__(text)
        self.code = code


class Outcome:
    """What has come of a process: exit code and JSON object."""

    def __init__(self, code, data, exit_code=None):
        self.code, self.data = code, data
        self.exit_code = code if exit_code is None else exit_code

    @property
    def stands(self):
        """An earlier change was begun and not ended: nothing was done now."""
        return self.code == PERSON_NEEDED and "end" not in self.data

    @property
    def person_needed(self):
        """Whether the printer is neither as it was nor as wanted, or nobody knows.

        A change that Ctrl-C has cut off names its journal.
        """
        return self.code == PERSON_NEEDED or (self.code == INTERRUPTED and bool(self.journal))

    @property
    def journal(self):
        found = _JOURNAL.search((self.data.get("error") or {}).get("cause") or "")
        return self.data.get("journal") or (found.group(1) if found else None)

    @property
    def message(self):
        """Everything that is wrong, in one line; empty when nothing is."""
        error = self.data.get("error")
        if not error:
            return ""
        problems = ["%s: %s" % (each.get("setting") or "settings", each["reason"])
                    for each in self.data.get("problems") or []]
        parts = [error["what"]] + (problems or [error.get("cause")])  # the cause tells the problems, too
        if self.person_needed:
            parts.append("a person is needed: the journal is %s" % self.journal if self.journal
                         else "a person is needed: varden recover tells how the printer stands")
        else:
            parts.append(error.get("hint"))
        return "; ".join(part for part in parts if part)

    def result(self):
        """What every task returns of it; a printer that cannot be reached is an unreachable host."""
        result = {"exit_code": self.exit_code, "changed": False}
        if self.code == NOT_REACHABLE:
            result.update(unreachable=True, msg=self.message)
        elif self.code not in (DONE, DIFFERS):
            result.update(failed=True, msg=self.message, person_needed=self.person_needed)
            if self.journal:
                result["journal"] = self.journal
        return result


def run(executable, command, options, words=()):
    """Runs varden COMMAND --json OPTIONS -- WORDS.

    The process is a session of its own: a change that has begun is ended, or undone, also when the
    controller is stopped meanwhile.
    """
    line = [executable, command, "--json"] + list(options) + ["--"] + list(words)
    try:
        process = subprocess.Popen(line, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.PIPE, start_new_session=True)
    except (OSError, ValueError) as error:  # of the words, one may hold what no word can
        raise CannotRun("Cannot run %s: %s; varden_executable names it" % (executable, error))
    out, err = process.communicate()
    try:
        return Outcome(process.returncode, json.loads(out.decode("utf-8")))
    except ValueError:
        raise Killed(process.returncode, "%s %s ended with %d and without JSON: %s"
                     % (executable, command, process.returncode, err.decode("utf-8", "replace").strip()))
