"""Values outside of their range: typed, refused with a box, and never sent."""

import time
from collections import Counter

from printer import show
from tool_window import ToolWindow
from waiting import Wrong, comes

# A try takes one of each, in turns that do not go together.
LISTS = ["cmbSpeed", "cmbBackSpeed", "cmbKbIF", "cmbFontCode", "cmbParity"]  # the first press
HOLDS = [0.0, 0.0, 0.08, 0.08]  # seconds for which the mouse's button stays down
WAYS = ["Return", "OK", "Escape"]  # in which the box is closed
BOX_PATIENCE = 5  # seconds
LIST_PATIENCE = 0.05

FEED = 8  # the place of its three digits among the adjustments

# What can go wrong.
NO_BOX = "no box came"
OPEN_LIST = "a list took the press that had waited"
OTHER_BOX = "another box came"
ON_WIRE = "wrong bytes sent"
STUCK = "could not go on"


class RefusedValues:
    """Tries, one after the other in the same window; after one that goes wrong in a new one."""

    def __init__(self, desktop, places, printer, golden, report):
        self._desktop, self._places, self._printer = desktop, places, printer
        self._golden, self._report = golden, report
        self._window = None
        self._problems = []

    def run(self, tries):
        """All tries, whatever goes wrong; says how many did, and how."""
        wrong, kinds, begin = 0, Counter(), time.monotonic()
        for number in range(1, tries + 1):
            self._problems = []
            self._attempt_safely(number)
            wrong += bool(self._problems)
            kinds.update(set(self._problems))
        print(f"   {tries} tries, {wrong} of them wrong, {time.monotonic() - begin:.0f} s")
        for kind, count in kinds.items():
            print(f"      {kind}: in {count} of them")

    def _attempt_safely(self, number):
        try:
            if self._window is None:
                self._connect()
            self._attempt(number)
        except Wrong as problem:
            self._problem(number, STUCK, str(problem))
        # A list that has opened can be closed again; what may come of it is worth a try more.
        if set(self._problems) - {OPEN_LIST}:
            self._printer.restart_tool()
            self._window = None

    def _connect(self):
        self._window = ToolWindow(self._desktop, self._places)
        self._window.choose("cmbInterface", 1)
        before = self._printer.count("connected from")
        self._window.set_up(
            lambda dialog: self._window.type_address(dialog, self._printer.address))
        self._printer.wait_for_line("connected from", before + 1)
        self._printer.news()

    def _attempt(self, number):
        way = WAYS[number % len(WAYS)]
        self._refuse(number, "SeToneAdjT", "99", LISTS[number % len(LISTS)], way)
        self._refuse(number, "SeEuroCode", "7fff", "SeToneAdjT", way)
        # SET itself takes no focus: it has to look at the field.
        leave_for = "SeFeedAdj" if number % 2 == 0 else "btnSet"
        self._refuse(number, "SeToneAdjT", "12345", leave_for, way)
        # The window is as good as before: what is right goes out, and nothing else.
        value = number % 500
        self._window.type("SeFeedAdj", f"{value / 10:.1f}")
        self._window.click("btnSet")
        self._see_sent(number, self._golden.set({}, {FEED: f"{value:03}"}), way)

    def _refuse(self, number, field, text, leave_for, way):
        """Types what is out of range, clicks elsewhere, and closes the box that this brings."""
        what = f"{text} in {field}, left for {leave_for}"
        self._window.type(field, text)
        self._window.click(leave_for, HOLDS[number % len(HOLDS)])
        box = comes(self._window.box, BOX_PATIENCE)
        if box:
            self._close(number, box, way, what)
        else:
            self._problem(number, NO_BOX, what)
        if leave_for in LISTS and comes(self._window.open_lists, LIST_PATIENCE):
            self._problem(number, OPEN_LIST, f"{what}, box closed by {way}")
            self._window.press("Escape")
            comes(self._window.is_front, BOX_PATIENCE)

    def _close(self, number, box, way, what):
        if not self._window.is_range_box(box):
            self._problem(number, OTHER_BOX, what)
        self._window.close_box(box, way)

    def _see_sent(self, number, expected, way):
        if not comes(lambda: self._printer.has_news(len(expected)) or self._window.box()):
            raise Wrong("SET sends nothing")
        box = self._window.box()
        if box:
            self._problem(number, OTHER_BOX, "at SET")
            self._window.close_box(box, way)
            self._window.click("btnSet")
        comes(lambda: self._printer.has_news(len(expected)))
        self._window.wait_until_idle()
        sent = self._printer.news()
        if sent != expected:
            self._problem(number, ON_WIRE, f"\n{show(sent)}\n      instead of\n{show(expected)}")

    def _problem(self, number, kind, text):
        self._problems.append(kind)
        self._report.wrong(f"try {number}: {kind}: {text}", self._desktop.screen)
