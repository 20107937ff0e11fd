"""The tool's windows, worked by mouse and keys, and seen as anyone in front of the screen does."""

import re

from waiting import Wrong, comes, wait_for

MAIN, SETUP, BOX = "FmMain", "FmInterfaceSetup", "RangeBox"
WINDOWS = "search --onlyvisible --class varden-setting-tool"
STILL = "btnSave"  # enabled again when a flow is over, and clicked by no test
STEADY = 0.2  # seconds
FEW_COLOURS = 8  # a place where nothing is painted yet has no more
KEYS = {"-": "minus", ".": "period"}  # other characters are the names of their keys


def read_places(lines):
    """By window and control: left, top, width and height, as varden-control-places prints them."""
    places = {}
    for line in lines:
        window, control, *numbers = line.split()
        places[window, control] = tuple(int(number) for number in numbers)
    return places


def wait_until_gone(desktop):
    """Waits until the display has noticed that the tool has ended."""
    wait_for("the tool's windows to go", lambda: not desktop.person.look(WINDOWS))


class ToolWindow:
    """The main window of the one tool on the desktop."""

    def __init__(self, desktop, places):
        self._person, self._screen, self._places = desktop.person, desktop.screen, places
        self._run = desktop.run
        self.main = wait_for("the main window", lambda: self._person.look(WINDOWS))[0]
        wait_for("the main window to be in front", self.is_front)
        self._corner = self._find_corner()
        self._idle_look = wait_for("the window to be painted", self._painted)

    def icons(self):
        """In which sizes the window has an icon for title bars, panels and switchers."""
        said = "\n".join(self._run(["xprop", "-id", self.main, "_NET_WM_ICON"]))
        return sorted(int(size) for size in re.findall(r"Icon \((\d+) x \1\)", said))

    def click(self, control, hold=0.0):
        """Clicks; the button stays down for so many seconds."""
        self._click(self.main, MAIN, control, hold)

    def type(self, field, text):
        """Types in place of what stands in a field."""
        self._type(self.main, MAIN, field, text)

    def choose(self, control, position, window=None, form=MAIN):
        """Opens a list by a click and takes the entry at that position by the keys."""
        before = self._windows()
        self._click(window or self.main, form, control)
        wait_for(f"the entries of {control}", lambda: len(self._windows()) > len(before))
        self.press("Home", *["Down"] * position, "Return")
        wait_for(f"the entries of {control} to close", lambda: self._windows() == before)

    def set_up(self, work):
        """Presses Setup, does work(dialog) in the dialog and presses SET in it."""
        self.click("btnSetup")
        dialog = wait_for("the setup dialog", self.box)
        work(dialog)
        self._click(dialog, SETUP, "btnSet")
        wait_for("the main window behind the setup dialog", self.is_front)

    def type_address(self, dialog, address):
        """Types an address into the setup dialog."""
        for number, part in enumerate(address.split("."), 1):
            self._type(dialog, SETUP, f"SeLan{number}", part)

    def box(self):
        """The window that is in front of the main one and has the keyboard, or None."""
        front = self._front()
        return front if front and front != self.main else None

    def is_range_box(self, box):
        """Whether it is as large as the range box is."""
        size = self._person.look(f"getwindowgeometry {box}")
        return size[-1:] == ["{}x{}".format(*self._places[BOX, "whole"][2:])]

    def close_box(self, box, way):
        """Closes a box by a key, or by a click on its OK."""
        if way == "OK":
            self._click(box, BOX, "OK")
        else:
            self.press(way)
        wait_for(f"the main window behind the box closed by {way}",
                 lambda: self._front() == self.main)

    def open_lists(self):
        """The windows that are there beside the main one and have no keyboard."""
        return [window for window in self._windows() if window not in (self.main, self._front())]

    def press(self, *keys):
        """Presses and releases keys, by their names."""
        self._person.act("key --delay 0 " + " ".join(keys))

    def is_front(self):
        """Whether nothing else of the tool is there, and the keyboard is the main window's."""
        return self._windows() == [self.main] and self._front() == self.main

    def is_idle(self):
        """Whether nothing is in front of the main window and no flow runs."""
        return self._look(STILL) == self._idle_look

    def wait_until_idle(self):
        wait_for("the buttons to be enabled again", self.is_idle)

    def close(self):
        """Closes the main window by the key that the window managers have for it."""
        self.press("alt+F4")

    def _windows(self):
        """All that are seen, the main window first."""
        found = self._person.look(WINDOWS)
        return sorted(found, key=lambda window: (window != self.main, window))

    def _front(self):
        """The active window that also has the keyboard; None while this goes from one to another."""
        active = self._person.look("getactivewindow")
        return active[0] if active and active == self._person.look("getwindowfocus -f") else None

    def _find_corner(self):
        """Where the window begins on the screen; told by the pointer, frames or no frames."""
        self._person.act(f"mousemove --window {self.main} 0 0")
        return wait_for("the pointer", self._pointer)

    def _pointer(self):
        """Where the mouse points; None when the window there goes just now."""
        found = self._person.look("getmouselocation")
        return tuple(int(text.split(":")[1]) for text in found[:2])

    def _look(self, control):
        left, top, width, height = self._places[MAIN, control]
        return self._screen.pixels(self._corner[0] + left, self._corner[1] + top, width, height)

    def _painted(self):
        """What a button looks like, when it is there and stays so."""
        look = self._look(STILL)
        colours = {look[i:i + 4] for i in range(0, len(look), 4)}
        changes = comes(lambda: self._look(STILL) != look, STEADY)
        return look if len(colours) > FEW_COLOURS and not changes else None

    def _click(self, window, form, control, hold=0.0):
        if (form, control) not in self._places:
            raise Wrong(f"{form} has no {control}")
        left, top, width, height = self._places[form, control]
        self._person.act(f"mousemove --window {window} {left + width // 2} {top + height // 2}")
        x, y = wait_for("the pointer", self._pointer)
        self._person.act("mousedown 1", f"sleep {hold}", "mouseup 1", f"mousemove {x + 1} {y}")
        # A window manager holds a press back until it has looked at it, and the display all that
        # the mouse does after it; but not the keys, which would be there first.
        wait_for(f"the press of {control} to pass the window manager",
                 lambda: self._pointer() == (x + 1, y))

    def _type(self, window, form, field, text):
        self._click(window, form, field)
        self.press("ctrl+a", *[KEYS.get(character, character) for character in text])
