#!/usr/bin/env python3
"""Works the setting tool's windows from outside, under a window manager, and looks at what the
simulated printers receive.

Needs Xvfb, a window manager, xdotool, xprop, and the programs of a build. Touches no display but its
own.
"""

import argparse
import glob
import os
import signal
import sys
import time

sys.dont_write_bytecode = True  # among the sources

# pylint: disable=wrong-import-position
from desktop import MANAGERS, Desktop
from golden import Golden
from link_walk import LinkWalk
from printer import COM, LAN, USB, Printer
from refused_values import RefusedValues
from tool_window import read_places, wait_until_gone
from waiting import Wrong

LINKS = [LAN, COM, USB]
PLACES = "varden-control-places"
MOST_PICTURES = 20


class Report:
    """Says what is wrong, and takes a picture of it."""

    def __init__(self, folder, name):
        self._folder, self._name = folder, name
        self.count = 0
        for old in glob.glob(os.path.join(glob.escape(folder), f"{name}-*.png")):
            os.remove(old)

    def wrong(self, text, screen):
        self.count += 1
        print(f"   WRONG  {text}", flush=True)
        if self.count <= MOST_PICTURES:
            path = os.path.join(self._folder, f"{self._name}-{self.count}.png")
            os.makedirs(self._folder, exist_ok=True)
            screen.save(path)
            print(f"      picture: {path}", flush=True)


def walk(desktop, options, places, report):
    """Every link."""
    for link in LINKS:
        print(f"== {options.manager}: connect, READ, edit and SET on {link}", flush=True)
        begin = time.monotonic()
        with Printer(desktop, options.programs, link) as printer:
            try:
                LinkWalk(desktop, places, printer, Golden(options.programs)).run()
                print(f"   ok, {time.monotonic() - begin:.0f} s", flush=True)
            except Wrong as problem:
                report.wrong(str(problem), desktop.screen)
        wait_until_gone(desktop)


def refuse(desktop, options, places, report):
    """What is out of range."""
    print(f"== {options.manager}: values out of range", flush=True)
    with Printer(desktop, options.programs, LAN) as printer:
        RefusedValues(desktop, places, printer, Golden(options.programs),
                      report).run(options.tries)


def work(options, report):
    """Everything, on a desktop made for it."""
    with Desktop(options.manager) as desktop:
        for number in range(options.busy):
            desktop.start(["sh", "-c", "while :; do :; done"], f"busy-{number}")
        try:
            places = read_places(desktop.run([os.path.join(options.programs, PLACES)]))
            if options.walk:
                walk(desktop, options, places, report)
            if options.tries > 0:
                refuse(desktop, options, places, report)
        except Wrong as problem:
            report.wrong(str(problem), desktop.screen)


def read_options():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("programs", help="the folder of the build's programs")
    parser.add_argument("--manager", choices=MANAGERS, default="openbox", help="window manager")
    parser.add_argument("--tries", type=int, default=200, metavar="N",
                        help="how often values out of range are typed, 200 unless given")
    parser.add_argument("--no-walk", dest="walk", action="store_false",
                        help="leave out connect, READ, edit and SET on each link")
    parser.add_argument("--busy", type=int, default=0, metavar="N",
                        help="so many endless loops beside")
    parser.add_argument("--limit", type=int, default=230, metavar="SECONDS",
                        help="fails when it takes longer, 230 unless given")
    parser.add_argument("--pictures", default="pictures", metavar="FOLDER",
                        help="where pictures of what went wrong go")
    return parser.parse_args()


def end_early(number, _frame):
    """A signal ends the program, and all that it has started."""
    for each in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGALRM):
        signal.signal(each, signal.SIG_IGN)
    print(f"Ended by {signal.Signals(number).name}.", file=sys.stderr, flush=True)
    sys.exit(1)


def main():
    options = read_options()
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGALRM):
        signal.signal(number, end_early)
    signal.alarm(options.limit)
    report = Report(options.pictures, options.manager)
    work(options, report)
    return 0 if report.count == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
