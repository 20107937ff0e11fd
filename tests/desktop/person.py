"""The mouse, the keys and the eyes of the person in front of a display: xdotool, which waits for
orders, so that each costs next to nothing."""

import subprocess

from waiting import Wrong

END = "getdisplaygeometry"  # prints one line, whatever the windows are doing


class Person:
    """What a program does that reads xdotool's commands; started again when a window that it was
    asked about has gone and that ended it."""

    def __init__(self, start):
        self._start = start
        self._eyes = self._hands = None
        self._end = None

    def look(self, command):
        """The words that a command prints which only looks; none when it fails."""
        self._eyes = self._eyes or self._begin()
        words = self._ask(self._eyes, [command])
        if words is None:
            self._eyes = None
        return words or []

    def act(self, *commands):
        """Does something with mouse and keys. With a process of its own: looking at a window makes
        xdotool send it the keys in a way that no keyboard has."""
        self._hands = self._hands or self._begin()
        if self._ask(self._hands, commands) is None:
            self._hands = None
            raise Wrong("xdotool cannot " + ", ".join(commands))

    def _begin(self):
        process = self._start(["stdbuf", "-oL", "xdotool", "-"])
        if self._end is None:
            process.stdin.write(END + "\n")
            process.stdin.flush()
            self._end = process.stdout.readline()
            if not self._end:
                raise Wrong("xdotool does not start")
        return process

    def _ask(self, process, commands):
        """The words printed; nothing when xdotool has ended meanwhile."""
        words = []
        try:
            process.stdin.write("".join(command + "\n" for command in [*commands, END]))
            process.stdin.flush()
        except BrokenPipeError:
            return None
        for line in iter(process.stdout.readline, ""):
            if line == self._end:
                return words
            words += line.split()
        process.wait()
        return None
