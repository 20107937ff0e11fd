#!/usr/bin/env python3
"""Does the same things for a long time, and fails when that leaves anything behind: memory, descriptors or threads,
or a last round that is slower than the first ones were. The real links talk to the simulator's program over
loopback TCP, pseudo-terminals and an emulated USB, with pauses and limits a fiftieth as long as they are; and
varden changes settings of printers with faults, in real time.

  run-long.py PROGRAMS [--short] [--only TEXT]... [--seed N] [--jobs N]

PROGRAMS is build/dev/bin. Prints a table; exit code 1 when a limit is broken.
"""
import argparse
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import threading
import time
from concurrent.futures import ThreadPoolExecutor

# What may be left behind by any number of rounds: nothing that grows with them.
HEAP_BYTES = 64 * 1024
RESIDENT_KIB = 2048
# The last rounds beside the first, of the processor; fewer tell nothing, for each has a fault of its own.
SLOWER, SLOWER_MS, ROUNDS_THAT_TELL = 1.5, 0.3, 200
PATIENCE = 3600

# Faults of a printer, over any number of rounds.
SOUND = []
FAULTS = [SOUND, SOUND, ["--delay", "20"], ["--pieces", "7", "--gap", "1"], ["--junk-before"], ["--refuse", "Z5;1"],
          ["--close-after", "2"], ["--cut", "20"], ["--junk"], ["--silent"]]
SERIAL_FAULTS = [SOUND, SOUND, ["--delay", "20"], ["--pieces", "7", "--gap", "1"], ["--junk-before"],
                 ["--refuse", "Z5;1"], ["--cut", "20"], ["--junk"], ["--silent"]]
USB_FAULTS = [SOUND, ["--junk-before"], ["--pieces", "7", "--gap", "1"], ["--refuse", "Z5;1"]]
# For varden, with what each costs of real time; no write may end with another code than these.
WRITE_FAULTS = [SOUND, SOUND, ["--pieces", "7", "--gap", "1"], ["--junk-before"], ["--refuse", "{Z2;2"],
                ["--stuck", "FeedAdjustment"], ["--half-fields", "3"], ["--close-after", "3"]]
SLOW_WRITE_FAULTS = [["--silent"], ["--cut", "20"], ["--delay", "200"]]
WRITE_CODES = {0, 1, 3, 5}


class Printer:
    """A simulator's program, on the network or on a serial line."""

    def __init__(self, programs, options):
        self.process = subprocess.Popen([programs / "varden-printer-simulator", *options], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.place = self.process.stdout.readline().strip().removeprefix("Listening on ")
        threading.Thread(target=self._drop, daemon=True).start()

    def _drop(self):
        for _ in self.process.stdout:
            pass

    def holdings(self):
        """KiB of memory of its own, descriptors, threads."""
        folder = pathlib.Path(f"/proc/{self.process.pid}")
        memory = next(int(line.split()[1]) for line in (folder / "status").read_text().splitlines()
                      if line.startswith("RssAnon:"))
        return memory, len(list((folder / "fd").iterdir())), len(list((folder / "task").iterdir()))

    def stop(self):
        self.process.terminate()
        self.process.wait(60)


class Row:
    """What a part has left behind, and what of it is too much."""

    def __init__(self, name, found):
        self.name, self.found = name, found

    def broken(self):
        found, wrong = self.found, []
        if found["done"] == 0 and not found.get("may_fail"):
            wrong.append("nothing was done")
        if found.get("heap_bytes", 0) > HEAP_BYTES:
            wrong.append("heap")
        if found["resident_kib"] > RESIDENT_KIB:
            wrong.append("memory")
        if found["descriptors"] > 0:
            wrong.append("descriptors")
        if found["threads"] > 0:
            wrong.append("threads")
        if (found["rounds"] >= ROUNDS_THAT_TELL
                and found["last_ms"] > found["first_ms"] * SLOWER + SLOWER_MS):
            wrong.append("slower")
        return wrong + found.get("wrong", [])

    def cells(self):
        found = self.found
        heap = f"{found['heap_bytes']:+d}" if "heap_bytes" in found else ""
        return [self.name, str(found["rounds"]), str(found["done"]), heap, f"{found['resident_kib']:+d}",
                f"{found['descriptors']:+d}", f"{found['threads']:+d}", f"{found['first_ms']:.2f}",
                f"{found['last_ms']:.2f}", f"{found['seconds']:.0f}", ", ".join(self.broken()) or "held"]


HEADINGS = ["what", "rounds", "done", "heap, bytes", "memory, KiB", "descriptors", "threads", "first, ms", "last, ms",
            "took, s", "limits"]


class LongRun:
    """All parts, each with printers of its own."""

    def __init__(self, options, folder):
        self._programs, self._seed, self._jobs = options.programs.resolve(), options.seed, options.jobs
        self._short, self._folder = options.short, folder

    def _run(self, command):
        begin = time.monotonic()
        result = subprocess.run(command, stdout=subprocess.PIPE, timeout=PATIENCE, check=True, text=True)
        line = next(line for line in result.stdout.splitlines() if line.startswith('{"rounds"'))
        return json.loads(line) | {"seconds": time.monotonic() - begin}

    def _words(self, what, rounds, places):
        return [self._programs / "varden-long-run", what, str(rounds), str(self._seed), self._folder, *places]

    def lan(self, what, rounds, faults):
        printers = [Printer(self._programs, ["--port", "0", *fault]) for fault in faults]
        try:
            return self._run(self._words(what, rounds, [printer.place for printer in printers]))
        finally:
            for printer in printers:
                printer.stop()

    def com(self, what, rounds, faults):
        printers, names = [], []
        try:
            for number, fault in enumerate(faults, 1):
                name = f"com{number}"
                printers.append(Printer(self._programs, ["--serial", "--alias", f"{self._folder}/{name}", *fault]))
                names.append(name)
            return self._run(self._words(what, rounds, names))
        finally:
            for printer in printers:
                printer.stop()

    def usb(self, what, rounds, fault):
        found = self._run([self._programs / "varden-printer-simulator", *fault, "--usb",
                           *self._words(what, rounds, ["usb"])])
        return found | {"may_fail": bool(fault)}  # one printer, and it always has the fault

    def writes(self, rounds):
        """varden in a process each: what grows could be the printers, and what is left on the disk."""
        faults = WRITE_FAULTS if self._short else WRITE_FAULTS + SLOW_WRITE_FAULTS
        printers = [Printer(self._programs, ["--port", "0", *fault]) for fault in faults]
        chance, begin = random.Random(self._seed), time.monotonic()
        work = [(printers[chance.randrange(len(printers))], chance.randrange(-60, 61) / 10, number)
                for number in range(rounds)]
        warm = rounds // 5
        try:
            with ThreadPoolExecutor(self._jobs) as pool:
                results = list(pool.map(self._write, work[:warm]))
                before = [printer.holdings() for printer in printers]
                results += pool.map(self._write, work[warm:])
            after = [printer.holdings() for printer in printers]
        finally:
            for printer in printers:
                printer.stop()
        grown = [max(new[kind] - old[kind] for new, old in zip(after, before)) for kind in range(3)]
        fifth = max(rounds // 5, 1)
        return {"rounds": rounds, "done": sum(code == 0 for code, *_ in results), "resident_kib": grown[0],
                "descriptors": grown[1], "threads": grown[2], "seconds": time.monotonic() - begin,
                "first_ms": sum(used for _, used, _ in results[:fifth]) / fifth,
                "last_ms": sum(used for _, used, _ in results[-fifth:]) / fifth,
                "wrong": sorted({wrong for *_, wrong in results if wrong})}

    def _write(self, one):
        """The exit code of a change, what it took of the processor, and what is wrong with it."""
        printer, adjustment, number = one
        state = pathlib.Path(self._folder) / f"state-{number}"
        with subprocess.Popen(
                [self._programs / "varden", "write", f"lan:{printer.place}", f"feed-adj={adjustment}", "--json",
                 "--pause", "0", "--reach", "0", "--state", state], stdin=subprocess.DEVNULL,
                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as process:
            text = process.stdout.read()
            _, status, used = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
        journals = list(state.glob("*.json")) if state.is_dir() else []
        code, wrong = process.returncode, ""
        if code not in WRITE_CODES:
            wrong = f"exit code {code}"
        elif bool(journals) != (code == 5):
            wrong = "a journal" if journals else "no journal"
        else:
            json.loads(text)
        return code, (used.ru_utime + used.ru_stime) * 1000, wrong

    def parts(self):
        """Names, and what each does."""
        short = self._short

        def rounds(whole, little):
            return little if short else whole

        yield "status requests, LAN", lambda: self.lan("status", rounds(10000, 500), [SOUND])
        yield "READ and SET with faults, LAN", lambda: self.lan("rounds", rounds(1000, 20), FAULTS)
        yield "READ and SET with faults, serial", lambda: self.com("rounds", rounds(1000, 20), SERIAL_FAULTS)
        for fault in USB_FAULTS[:1] if short else USB_FAULTS:
            yield (f"READ and SET, USB, {' '.join(fault) or 'no fault'}",
                   lambda fault=fault: self.usb("rounds", rounds(1000 // len(USB_FAULTS), 5), fault))
        yield "opening and closing, LAN", lambda: self.lan("open", rounds(5000, 200), [SOUND])
        yield "opening and closing, serial", lambda: self.com("open", rounds(5000, 100), [SOUND])
        yield "opening and closing, USB", lambda: self.usb("open", rounds(5000, 50), SOUND)
        yield "varden write with faults, LAN", lambda: self.writes(rounds(1000, 20))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("programs", type=pathlib.Path)
    parser.add_argument("--short", action="store_true", help="a few rounds of each, in seconds")
    parser.add_argument("--only", action="append", default=[], help="the parts whose names have this in them")
    parser.add_argument("--seed", type=int, default=random.randrange(1 << 30))
    parser.add_argument("--jobs", type=int, default=4, help="how many varden at a time")
    options = parser.parse_args()
    print(f"Seed {options.seed}", flush=True)
    rows = []
    with tempfile.TemporaryDirectory() as folder:
        for name, part in LongRun(options, folder).parts():
            if not options.only or any(text in name for text in options.only):
                rows.append(Row(name, part()))
                print("  ".join(rows[-1].cells()), flush=True)
    widths = [max(len(cells[column]) for cells in [HEADINGS, *(row.cells() for row in rows)])
              for column in range(len(HEADINGS))]
    print()
    for cells in [HEADINGS, *(row.cells() for row in rows)]:
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(cells, widths)) + " |")
    return 1 if not rows or any(row.broken() for row in rows) else 0


if __name__ == "__main__":
    sys.exit(main())
