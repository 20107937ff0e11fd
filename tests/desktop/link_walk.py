"""Connect, READ, edit and SET on one link: what arrives is exactly what was edited."""

from printer import COM, COM_PORT, LAN, USB, show
from tool_window import SETUP, ToolWindow
from waiting import Wrong, wait_for

ICONS = [16, 24, 32, 48, 64]
INTERFACES = {COM: 0, LAN: 1, USB: 2}  # their places in the list
READ = ["{Z5;0|}", "{Z5;1|}", "{Z5;4|}"]

# What the printer does not have yet: lists by position, fields by text.
EDITED = [("cmbFontCode", 3), ("cmbSpeed", 3), ("SeFowardPosition", "-2.5"), ("cmbCode", 3),
          ("SeCode1", "1c"), ("SeEuroCode", "a4"), ("cmbPeelOffTrq", 3), ("SeFeedAdj", "4.5"),
          ("SeXAdj", "-99.5"), ("SeToneAdjT", "-7"), ("SeRbnAdjFw", "-3"), ("SeThresholdR", "2.5")]
# The same as the two commands have it, by their places.
PARAMETERS = {7: "3", 9: "3", 15: "-25", 18: "3", 19: "1C", 28: "A4", 41: "3"}
ADJUSTMENTS = {8: "045", 18: "-995", 22: "-07", 29: "03", 34: "25"}

# Edited, but not sent: the next READ brings back what the printer has.
FORGOTTEN = [("cmbFontCode", 1), ("cmbSpeed", 0), ("SeEuroCode", "ff"), ("SeFeedAdj", "-9.9"),
             ("SeXAdj", "0"), ("SeToneAdjT", "10")]

EDITED_AGAIN = [("cmbBackSpeed", 0), ("SeThresholdT", "0.7")]
PARAMETERS_AGAIN = PARAMETERS | {39: "0"}
ADJUSTMENTS_AGAIN = ADJUSTMENTS | {36: "07"}


class LinkWalk:
    """The walk on one link, with a printer and a tool that have just been started."""

    def __init__(self, desktop, places, printer, golden):
        self._printer, self._golden = printer, golden
        self._window = ToolWindow(desktop, places)

    def run(self):
        """Fails at the first thing that is wrong."""
        self._look_at_icon()
        self._connect()
        self._press("btnRead", READ)
        self._edit(EDITED)
        self._press("btnSet", self._golden.set(PARAMETERS, ADJUSTMENTS))
        self._edit(FORGOTTEN)
        self._press("btnRead", READ)
        self._edit(EDITED_AGAIN)
        self._press("btnSet", self._golden.set(PARAMETERS_AGAIN, ADJUSTMENTS_AGAIN))
        self._close()

    def _look_at_icon(self):
        icons = self._window.icons()
        if icons != ICONS:
            raise Wrong(f"the window has icons of {icons} pixels")

    def _connect(self):
        self._window.choose("cmbInterface", INTERFACES[self._printer.link])
        if self._printer.link == LAN:
            self._window.set_up(
                lambda dialog: self._window.type_address(dialog, self._printer.address))
            self._printer.wait_for_line("connected from")
        elif self._printer.link == COM:
            self._window.set_up(lambda dialog: self._window.choose(
                "cmbComPort", COM_PORT - 1, dialog, SETUP))
            self._printer.wait_for_line("port opened")

    def _edit(self, fields):
        for control, value in fields:
            if isinstance(value, int):
                self._window.choose(control, value)
            else:
                self._window.type(control, value)

    def _press(self, button, expected):
        self._window.click(button)
        wait_for(f"what {button} sends", lambda: self._printer.has_news(len(expected)))
        self._window.wait_until_idle()
        sent = self._printer.news()
        if sent != expected:
            raise Wrong(f"{button} has sent\n{show(sent)}\n      instead of\n{show(expected)}")

    def _close(self):
        self._window.close()
        code = self._printer.wait_for_end()
        if code != 0:
            raise Wrong(f"the tool has ended with {code}")
        if self._printer.news():
            raise Wrong("something was sent at the end")
        if self._printer.link != USB and self._printer.stop() != 0:
            raise Wrong("the simulator has not ended well")
