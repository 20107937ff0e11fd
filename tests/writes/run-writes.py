#!/usr/bin/env python3
"""Changes settings with varden while everything goes wrong that can, and asks the printer itself
what it holds afterwards.

A cell is a change, a fault and a link: the program, the simulated printer, and a real connection
between them. Where a change is faultless, the commands that pass give the moments at which faults
happen. After each cell the printer holds what was wanted (exit code 0), what it held before (1 or
3), or the exit code is 5 and the journal is named. What comes of which fault is held against the
table of faults, of which the page is made.

  run-writes.py PROGRAMS [--page FILE] [--write-page] [--only TEXT] [--jobs N]
"""

import argparse
import json
import os
import re
import signal
import subprocess
import sys
import tempfile
import threading
import time
from concurrent.futures import ThreadPoolExecutor

sys.dont_write_bytecode = True  # among the sources

# pylint: disable=wrong-import-position
from faults import CHANGES, FAULTS, LINKS, USB, LAN, page

PATIENCE = 120  # seconds for one cell
UNTOLD = {"StopBit"}  # no answer reports it


class Wrong(Exception):
    """What a cell has shown that it must not."""


class Addresses:
    """Addresses of this machine that no other cell has."""

    def __init__(self):
        self._lock, self._next = threading.Lock(), os.getpid() % 200 * 256

    def take(self):
        with self._lock:
            self._next += 1
            return f"127.{77 + self._next // 65536}.{self._next // 256 % 256}.{self._next % 256}"


ADDRESSES = Addresses()


class Cell:
    """A change on a link, with options of the simulator that make something go wrong."""

    def __init__(self, options, change, link, faults, folder):
        self._programs, self._change, self._link = options.programs, change, link
        self._faults, self._folder = faults, folder
        self._log, self._dump = os.path.join(folder, "log"), os.path.join(folder, "dump")
        self._state = os.path.join(folder, "state")
        self._home = ADDRESSES.take()
        self.code, self.output = None, None

    def run(self):
        simulator = [os.path.join(self._programs, "varden-printer-simulator"),
                     "--log", self._log, "--dump", self._dump, *self._faults]
        if self._link == USB:
            self._run_on_usb(simulator)
        else:
            self._run_beside(simulator)
        return self

    def _words(self, target, moved):
        words = [word.replace("MOVED", moved) for word in self._change.words]
        if self._link == LAN and "--allow-link-change" not in words and self._change.network:
            words.append("--allow-link-change")
        return [os.path.join(self._programs, "varden"), "write", target, *words, "--json",
                "--state", self._state, "--pause", "0", "--reach", str(self._change.reach)]

    def _take(self, process):
        out, _ = process.communicate(timeout=PATIENCE)
        self.code = process.returncode
        text = out.decode()
        try:
            self.output = json.loads(text)
        except ValueError as error:
            raise Wrong(f"no JSON: {text!r}") from error

    def _run_beside(self, simulator):
        if self._link == LAN:
            place = ["--host", self._home, "--port", "18000", "--own-address", "--moves", "at-once"]
        else:
            place = ["--serial"]
        with subprocess.Popen([*simulator, *place], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL) as printer:
            try:
                line = printer.stdout.readline().decode().strip()
                threading.Thread(target=printer.stdout.read, daemon=True).start()
                name = line.removeprefix("Listening on ")
                target = f"lan:{name}" if self._link == LAN else f"com:{name}"
                with subprocess.Popen(self._words(target, ADDRESSES.take()),
                                      stdout=subprocess.PIPE,
                                      stderr=subprocess.DEVNULL) as program:
                    self._take(program)
            finally:
                printer.send_signal(signal.SIGTERM)
                printer.wait(PATIENCE)

    def _run_on_usb(self, simulator):
        words = self._words("usb", ADDRESSES.take())
        with subprocess.Popen([*simulator, "--usb", "sh", "-c", 'exec "$@" 2>/dev/null', "sh",
                               *words], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as both:
            out, _ = both.communicate(timeout=PATIENCE)
            self.code = both.returncode
        text = out.decode()
        found = re.search(r"^\{$.*^\}$", text, re.MULTILINE | re.DOTALL)
        if not found:
            raise Wrong(f"no JSON: {text!r}")
        self.output = json.loads(found.group(0))

    def held(self):
        """What the printer says of itself, with what fills texts up left out."""
        with open(self._dump, encoding="utf-8") as file:
            settings = json.load(file)["printers"][0]["settings"]
        # Where it is differs from cell to cell.
        held = {name: text.strip(" \u00ff") for name, text in settings.items()}
        address = ".".join(str(int(held.pop(f"IpAddress{part}"))) for part in range(1, 5))
        held["Moved"] = self._link == LAN and address != self._home
        return held

    def commands(self):
        with open(self._log, encoding="utf-8") as file:
            events = [json.loads(line) for line in file]
        return [event["command"] for event in events if event["event"] == "received"]

    def journals(self):
        if not os.path.isdir(self._state):
            return []
        return [name for name in os.listdir(self._state) if name.endswith(".json")]


class Sound:
    """A change without a fault on a link: what is before and afterwards, and what passes."""

    def __init__(self, options, change, link, folder):
        before = Cell(options, change, link, [], os.path.join(folder, "before"))
        os.makedirs(os.path.join(folder, "before"))
        before._change = change.that_changes_nothing()  # pylint: disable=protected-access
        before.run()
        self.before = before.held()
        after = Cell(options, change, link, [], os.path.join(folder, "after"))
        os.makedirs(os.path.join(folder, "after"))
        after.run()
        if before.code != 0 or after.code != 0:
            raise Wrong(f"{change.name} on {link} without a fault: {before.code}, {after.code}: "
                        f"{after.output}")
        self.after, self.commands = after.held(), after.commands()
        if self.before == self.after:
            raise Wrong(f"{change.name} on {link} changes nothing")


def check(cell, sound, expected):
    """Holds the printer against what the program has said of it."""
    held, code = cell.held(), cell.code

    def same(wanted):
        return all(held[name] == text for name, text in wanted.items())

    told = {name: text for name, text in sound.after.items() if name not in UNTOLD}
    if code not in expected:
        raise Wrong(f"exit code {code}, expected one of {sorted(expected)}")
    if code == 0 and not same(told):
        raise Wrong("exit code 0, and the printer is not as wanted")
    if code in (1, 3) and not same(sound.before):
        changed = {name: held[name] for name, text in sound.before.items() if held[name] != text}
        raise Wrong(f"exit code {code}, and the printer is not as it was: {changed}")
    if (code == 5) != bool(cell.journals()):
        raise Wrong(f"exit code {code}, journals: {cell.journals()}")
    if code == 5 and cell.journals()[0] not in cell.output["error"]["hint"]:
        raise Wrong("exit code 5, and the journal is not named")
    if cell.output.get("results", {}).get("stop-bit", "unverifiable") != "unverifiable":
        raise Wrong("the stop bit is called verified")


class Table:
    """All cells."""

    def __init__(self, options, folder):
        self._options, self._folder = options, folder
        self._lock, self._number = threading.Lock(), 0
        self.count, self.wrong = 0, []
        self.codes = {}

    def _new_folder(self):
        with self._lock:
            self._number += 1
            path = os.path.join(self._folder, str(self._number))
        os.makedirs(path)
        return path

    def run(self):
        with ThreadPoolExecutor(self._options.jobs) as pool:
            sounds = {key: pool.submit(Sound, self._options, *key, self._new_folder())
                      for key in [(change, link) for link in LINKS for change in CHANGES
                                  if link in change.links]}
            cells = []
            for (change, link), sound in sounds.items():
                sound = sound.result()
                for fault in FAULTS:
                    for name, faults in fault.at_each_moment(link, change, sound.commands):
                        title = f"{change.name} on {link}: {name}"
                        if self._options.only in title:
                            cells.append((title, change, link, fault, faults, sound))
            cells = cells[::self._options.every]
            # Those that wait longest first.
            cells.sort(key=lambda cell: -cell[3].slowness)
            for done in [pool.submit(self._cell, *cell) for cell in cells]:
                done.result()

    def _cell(self, title, change, link, fault, faults, sound):
        begin = time.monotonic()
        cell = Cell(self._options, change, link, faults, self._new_folder())
        try:
            cell.run()
            check(cell, sound, fault.codes(link))
        except (Wrong, OSError, subprocess.TimeoutExpired, KeyError) as problem:
            with self._lock:
                self.wrong.append(title)
            print(f"WRONG  {title} ({' '.join(faults)}): {problem!r}\n       {cell.output}",
                  flush=True)
        with self._lock:
            self.count += 1
            self.codes.setdefault((fault.name, link), set()).add(cell.code)
        if self._options.verbose:
            print(f"{cell.code} {time.monotonic() - begin:5.1f} s  {title}", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", help="the folder of the programs")
    parser.add_argument("--page", help="the page that has the table")
    parser.add_argument("--write-page", action="store_true", help="writes its table anew")
    parser.add_argument("--only", default="", help="only cells with this text in their titles")
    parser.add_argument("--every", type=int, default=1, help="only each so manyth cell")
    parser.add_argument("--jobs", type=int, default=24, help="how many run at once")
    parser.add_argument("--verbose", action="store_true", help="names every cell")
    options = parser.parse_args()
    if options.page and not page(options.page, options.write_page):
        print(f"{options.page} does not have the table as it is: --write-page writes it anew")
        return 1
    begin = time.monotonic()
    with tempfile.TemporaryDirectory() as folder:
        table = Table(options, folder)
        table.run()
    print(f"{table.count} cells, {len(table.wrong)} wrong, {time.monotonic() - begin:.0f} s")
    if options.verbose:
        for (name, link), codes in sorted(table.codes.items()):
            print(f"{name} on {link}: {sorted(codes, key=str)}")
    return 1 if table.wrong or not table.count else 0


if __name__ == "__main__":
    sys.exit(main())
