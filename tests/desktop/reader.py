"""What a screen reader is told of the tool's window, over the accessibility bus."""

import pyatspi
from gi.repository import GLib

from waiting import comes, wait_for

TOOL = "varden-setting-tool"
FOCUSED = "object:state-changed:focused"
NAMED = "object:property-change:accessible-name"
HELD = 0.3  # seconds in which the focus would go on by itself


class Reader:
    """Listens from its making on."""

    def __init__(self, person):
        self._person = person
        self._focus = None
        self._said = []
        pyatspi.Registry.registerEventListener(self._on_focus, FOCUSED)
        pyatspi.Registry.registerEventListener(self._on_name, NAMED)

    def close(self):
        pyatspi.Registry.deregisterEventListener(self._on_focus, FOCUSED)
        pyatspi.Registry.deregisterEventListener(self._on_name, NAMED)

    def wait_for_tool(self):
        wait_for("the tool on the accessibility bus", self._tool)

    def press(self, *keys):
        self._person.act("key --delay 20 " + " ".join(keys))

    def step(self, key):
        """Presses a key that moves the focus; what it is on then, as read."""
        self._focus = None
        self.press(key)
        wait_for(f"the focus behind {key}", self._heard)
        return self.read()

    def wake(self):
        """Presses Tab until the focus is told for the first time: the window may have the keyboard
        and the tool not know it yet."""
        wait_for("the first focus", lambda: self.press("Tab") or comes(self._heard, HELD))

    def read(self):
        """Name, description and role of what has the focus."""
        comes(lambda: not self._listen(), HELD)  # a list tells it of itself, then of its entry
        focus = self._focus
        return focus.name, focus.description, focus.getRoleName()

    def wait_for_focus(self, name):
        """Waits until something of that name has it."""
        wait_for(f"the focus on {name}",
                 lambda: self._heard() and self._focus.name == name)

    def wait_for_words(self, text):
        """Waits until a name has become that text, and was told so."""
        def told():
            self._listen()
            return text in self._said

        wait_for(f'"{text}" to be told', told)

    def forget(self):
        """What was told until now."""
        while self._listen():
            pass
        self._said.clear()

    def find(self, test):
        """The first accessible of the tool that passes, or None."""
        waiting = [self._tool()]
        while waiting:
            one = waiting.pop(0)
            if one is None:
                continue
            if test(one):
                return one
            waiting += list(one)
        return None

    def _tool(self):
        for application in pyatspi.Registry.getDesktop(0):
            if application is not None and application.name == TOOL:
                return application
        return None

    def _heard(self):
        self._listen()
        return self._focus is not None

    def _listen(self):
        return GLib.MainContext.default().iteration(False)

    def _on_focus(self, event):
        if event.detail1:
            self._focus = event.source

    def _on_name(self, event):
        self._said.append(event.source.name)
