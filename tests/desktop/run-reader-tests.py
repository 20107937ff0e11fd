#!/usr/bin/python3
"""Walks the setting tool's windows by keys alone, and listens to what a screen reader is told: every
stop of Tab is told apart from the others, and what the printer says is told.

Needs Xvfb, a window manager, xdotool, a session bus and the accessibility bus, and the programs of a
build. Touches no display and no bus but its own.
"""

import os
import signal
import sys

sys.dont_write_bytecode = True  # among the sources

BUS = "VARDEN_READERS_OWN_BUS"

if BUS not in os.environ:
    os.environ[BUS] = "1"
    os.execvp("dbus-run-session", ["dbus-run-session", "--", *sys.orig_argv])

# pylint: disable=wrong-import-position
from desktop import Desktop
from printer import LAN, Printer
from reader import Reader
from waiting import Wrong, wait_for

LIMIT = 150  # seconds
# How many stops each page has at least: what stands above the tabs, the tabs, its fields and buttons.
PAGES = [("Parameter Setting", 3 + 1 + 37 + 4), ("Maintenance Mode", 3 + 1 + 11 + 8),
         ("Extra Setting", 3 + 1 + 16 + 4)]
MOST_STOPS = 100
TURNS = 10
ABOUT = ["Varden Setting Tool", "Version"]
STATUS = "ON LINE"  # what the printer answers to both


def show(stop):
    return " / ".join(stop)


def walk(reader, where, least, stops):
    """Tab, until the focus is where it was. Each stop has a name and is unique among stops, but for
    those that other pages have too."""
    first = reader.step("Tab")
    seen = [first]
    while len(seen) < MOST_STOPS:
        stop = reader.step("Tab")
        if stop == first:
            break
        seen.append(stop)
    print(f"   {where}: {len(seen)} stops", flush=True)
    if not least <= len(seen) < MOST_STOPS:
        raise Wrong(f"{where} has {len(seen)} stops, at least {least} are due:\n" +
                    "\n".join("      " + show(stop) for stop in seen))
    nameless = [stop for stop in seen if not stop[0].strip()]
    twice = {stop for stop in seen if [one[:2] for one in seen].count(stop[:2]) > 1}
    if nameless or twice:
        raise Wrong(f"{where}: not told apart:\n" +
                    "\n".join("      " + show(stop) for stop in [*nameless, *sorted(twice)]))
    stops.update(seen)


def walk_pages(reader):
    stops = set()
    for page, least in PAGES:
        walk(reader, page, least, stops)
        reader.press("ctrl+Next")  # behind the last page the first
    for words in ("STOP BIT", "SENSOR ADJUST, REFLECT", "IP ADDRESS 4", "F5"):
        if not any(words in show(stop) for stop in stops):
            raise Wrong(f"no stop tells {words}")


def go_to(reader, name, where=""):
    """Tab, until what has the focus is called and described so."""
    for _ in range(MOST_STOPS):
        stop = reader.step("Tab")
        if stop[0] == name and where in stop[1]:
            return
    raise Wrong(f"Tab leads to no {name}")


def walk_setup(reader, least, where):
    go_to(reader, "Setup")
    reader.step("Return")
    walk(reader, where, least, set())
    reader.press("Escape")
    reader.wait_for_focus("Setup")


def turn_pages(reader):
    """By Alt with numbers, one behind the other; the focus stays where it is on the pages."""
    go_to(reader, "Setup")
    for _ in range(TURNS):
        reader.press("alt+2", "alt+3", "alt+1")
        if reader.step("Tab")[0] != "GET STATUS":
            raise Wrong(f"behind Alt with numbers Tab leads from Setup to {show(reader.read())}")
        reader.step("shift+Tab")


def open_about(reader):
    """What its labels say is found, and OK leads back to where the focus was."""
    go_to(reader, "Setup")
    reader.press("alt+a", "Return")
    reader.wait_for_focus("OK")
    for words in ABOUT:
        if reader.find(lambda one, due=words: one.getRoleName() == "label" and due in one.name) is None:
            raise Wrong(f"the About box does not tell {words}")
    reader.press("Return")
    reader.wait_for_focus("Setup")


def connect(reader, printer):
    """By keys alone: the address with its points. The focus is on Setup afterwards."""
    go_to(reader, "Setup")
    reader.press("Return")
    reader.wait_for_focus("IP-Address 1")
    reader.press(*["period" if character == "." else character for character in printer.address])
    reader.step("Return")
    printer.wait_for_line("connected from")
    reader.wait_for_focus("Setup")


def ask(reader, printer):
    """What the printer says is told by the names of the labels that show it."""
    reader.press("ctrl+Prior")  # GET STATUS stands above all pages, HEAD CHECK on the second
    for button, label in [(("GET STATUS", ""), "GET STATUS"),
                          (("SEND", "HEAD CHECK"), "HEAD CHECK")]:
        reader.press("ctrl+Next")
        go_to(reader, *button)
        reader.forget()
        printer.news()
        reader.press("Return")
        wait_for("the request", lambda: printer.has_news(1))
        reader.wait_for_words(STATUS)
        if reader.find(lambda one, told=label: (one.name, one.description) == (STATUS, told)) is None:
            raise Wrong(f"no label has the answer to {label} as its name")


def is_front(person):
    """Whether the tool's window has the keyboard."""
    windows = person.look("search --onlyvisible --class varden-setting-tool")
    return windows and windows == person.look("getactivewindow") == \
        person.look("getwindowfocus -f")


def run(programs):
    more = {name: os.environ[name] for name in ("DBUS_SESSION_BUS_ADDRESS",)}
    more["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
    with Desktop("openbox", more) as desktop, Printer(desktop, programs, LAN) as printer:
        reader = Reader(desktop.person)
        reader.wait_for_tool()
        wait_for("the window in front", lambda: is_front(desktop.person))
        reader.wake()
        walk_pages(reader)
        turn_pages(reader)
        open_about(reader)
        walk_setup(reader, 5 + 2, "Setup of COM")
        reader.press("shift+Tab", "Down")  # from Setup to the list, to LAN
        walk_setup(reader, 4 + 2, "Setup of LAN")
        connect(reader, printer)
        ask(reader, printer)
        reader.close()


def main():
    signal.alarm(LIMIT)
    try:
        run(sys.argv[1])
    except Wrong as problem:
        print(f"   WRONG  {problem}", flush=True)
        return 1
    print("   ok", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
