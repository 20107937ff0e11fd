"""A fleet of simulated printers, and the folders that a test of it needs."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

PROJECT = pathlib.Path(sys.argv[1])
PROGRAMS = pathlib.Path(sys.argv[2])
SCRIPTS = PROJECT / "contrib" / "fleet"


def run_tests():
    """The tests of the program that was started, without its two arguments."""
    unittest.main(argv=sys.argv[:1], verbosity=2)


def recipe(name):
    """Lines of the page, as they stand there."""
    page = (PROJECT / "docs" / "fleets.md").read_text()
    return re.search(rf"<!-- recipe: {name} -->\n```sh\n(.*?)```", page, re.DOTALL).group(1)


class Simulator:
    """Simulated printers at any free ports."""

    def __init__(self, printers, *options):
        self._process = subprocess.Popen(
            [PROGRAMS / "varden-printer-simulator", "--printers", str(printers), "--by-port", "--port", "0", *options],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        lines = [self._process.stdout.readline() for _ in range(printers)]
        self.targets = ["lan:" + line.split()[-1] for line in lines]

    def stop(self):
        self._process.kill()
        self._process.wait()
        self._process.stdout.close()


class FleetTest(unittest.TestCase):
    """Has a folder of its own, with a list of printers in it, and the programs in its path."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.list = self.folder / "hall.printers"
        self.quick = self.make_varden_quick()

    def start(self, printers, *options):
        simulator = Simulator(printers, *options)
        self.addCleanup(simulator.stop)
        return simulator

    def write_list(self, targets):
        self.list.write_text("# the printers of the hall\n\n" + "".join(target + "\n" for target in targets))

    def make_varden_quick(self):
        """The varden of the path leaves out the pauses, which simulated printers do not need."""
        place = self.folder / "quick"
        place.mkdir()
        (place / "varden").write_text(
            f'#!/bin/sh\ncase $1 in\nread | write) exec "{PROGRAMS}/varden" "$@" --pause 0 ;;\n'
            f'*) exec "{PROGRAMS}/varden" "$@" ;;\nesac\n')
        (place / "varden").chmod(0o755)
        return place

    def run_command(self, *command):
        environment = dict(os.environ, HOME=str(self.folder), PATH=f"{self.quick}:{PROGRAMS}:{os.environ['PATH']}")
        return subprocess.run(command, cwd=self.folder, env=environment, capture_output=True, text=True, timeout=240,
                              check=False)
