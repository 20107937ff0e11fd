"""The simulated printer, and what it says that it has received."""

import os

from tool_window import wait_until_gone
from waiting import wait_for

LAN, COM, USB = "LAN", "COM", "USB"
COM_PORT = 4  # not the one that the tool begins with
SERIAL_DEVICES = "libvarden_serial_devices.so"


def own_address():
    """An address of this computer alone that no other run uses: the tool's port is always 8000."""
    number = os.getpid()
    return f"127.{100 + number // 62500 % 100}.{1 + number // 250 % 250}.{1 + number % 250}"


def show(commands):
    """Commands with their lengths, one a line."""
    return "\n".join(f"         {text}   {len(text)} bytes" for text in commands)


class Printer:
    """A printer on one link, and with it the tool, which on USB is the simulator's child. Begins
    with `with` and leaves neither of them behind."""

    def __init__(self, desktop, programs, link):
        self._desktop, self._programs, self.link = desktop, programs, link
        self.address = own_address()
        self._simulator = self._tool = self._log = None
        self._text = ""  # what the simulator has printed
        self._seen = 0   # so many lines of it are no news

    def __enter__(self):
        name = "printer-" + self.link
        options = {LAN: ["--host", self.address],
                   COM: ["--serial", "--alias", self._desktop.path(f"com{COM_PORT}")],
                   USB: ["--usb", self._program("varden-setting-tool")]}
        self._simulator = self._desktop.start(
            [self._program("varden-printer-simulator"), *options[self.link]], name)
        self._log = open(self._desktop.path(name + ".log"), encoding="utf-8", errors="replace")
        self.wait_for_line("faults: none")
        self.start_tool()
        return self

    def __exit__(self, *_):
        self._desktop.stop(self._tool)
        self._desktop.stop(self._simulator)
        self._log.close()

    def start_tool(self):
        """Starts the tool, where it can be started by itself."""
        more = {}
        if self.link == COM:
            more = {"LD_PRELOAD": self._program(SERIAL_DEVICES),
                    "VARDEN_SERIAL_DEVICES": self._desktop.folder}
        if self.link != USB:
            self._tool = self._desktop.start([self._program("varden-setting-tool")], "tool", more)

    def restart_tool(self):
        """Ends the tool, whatever it is doing, and starts it again."""
        self._desktop.stop(self._tool)
        wait_until_gone(self._desktop)
        self.start_tool()

    def wait_for_end(self):
        """Waits until the tool, whose window was closed, has ended; its exit code. On USB the
        simulator has the same."""
        process = self._simulator if self.link == USB else self._tool
        wait_for("the tool's end", lambda: process.poll() is not None)
        return process.returncode

    def stop(self):
        """Ends the simulator; its exit code."""
        return self._desktop.stop(self._simulator)

    def count(self, text):
        """How often the simulator has said so."""
        self._lines()
        return self._text.count(text)

    def wait_for_line(self, text, times=1):
        """Waits until the simulator has said so, so many times in all."""
        wait_for(f'"{text}" in what the printer says', lambda: self.count(text) >= times)

    def news(self):
        """The commands received since these were asked for last, byte by byte as they came, and
        every line that tells of something else that went wrong."""
        lines = self._lines()
        fresh, self._seen = lines[self._seen:], len(lines)
        return [_command(line) for line in fresh if line.startswith((">", "!"))]

    def has_news(self, count):
        """Whether so many commands have come since then."""
        return sum(line.startswith(">") for line in self._lines()[self._seen:]) >= count

    def _lines(self):
        self._text += self._log.read()
        return self._text.split("\n")[:-1]

    def _program(self, name):
        return os.path.join(self._programs, name)


def _command(line):
    """What was received, without the simulator's words on it: these stand behind three blanks."""
    return line[2:].split("   ")[0] if line.startswith(">") else line
