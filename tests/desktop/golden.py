"""What a printer with its defaults is sent, and the same with other fields."""

import os

SAMPLE = os.path.join("..", "samples", "golden", "parameter-default.dt1")  # beside the programs


class Golden:
    """The two commands of SET, as the build has written them into a file for all tests."""

    def __init__(self, programs):
        with open(os.path.join(programs, SAMPLE), encoding="latin-1", newline="") as file:
            self._lines = file.read().split("\r\n")[:2]

    def set(self, parameters, adjustments):
        """Both with other fields: their places, counted from 1 as in docs/file-formats.md."""
        return [_with(line, fields) for line, fields in zip(self._lines, (parameters, adjustments))]


def _with(line, fields):
    for place, text in fields.items():
        line = line[:place - 1] + text + line[place - 1 + len(text):]
    return line
