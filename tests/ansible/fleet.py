"""Simulated printers and Ansible beside them: what the tests of the collection stand on."""

import csv
import json
import os
import re
import signal
import socket
import subprocess
import tempfile
import threading
import time

PORT = 18500
PATIENCE = 300  # seconds for whatever is waited for
RECAP = re.compile(r"^(\S+)\s+: ok=\d+\s+changed=(\d+)\s+unreachable=(\d+)\s+failed=(\d+)", re.M)
READS = {"read settings", "status request"}


class Wrong(Exception):
    """What a test has shown that it must not."""


def expect(what, found, wanted):
    if found != wanted:
        raise Wrong(f"{what}: {found!r} in place of {wanted!r}")


def wait_for(condition, what):
    """Looks again and again until it is so."""
    end = time.monotonic() + PATIENCE
    while not condition():
        if time.monotonic() > end:
            raise Wrong(f"waited in vain for {what}")
        time.sleep(0.01)


def dotted(number):
    return ".".join(str(number >> shift & 255) for shift in (24, 16, 8, 0))


class Region:
    """Addresses that no other test has which runs at the same time: a socket at the first of them says so."""

    FIRST, SIZE, NUMBER = (127 << 24) + (64 << 16), 1 << 17, 95

    def __init__(self):
        for attempt in range(self.NUMBER):
            self._next = self.FIRST + (os.getpid() + attempt) % self.NUMBER * self.SIZE
            self._claim = socket.socket()
            try:
                self._claim.bind((dotted(self._next), PORT + 1))
                return
            except OSError:
                self._claim.close()
        raise Wrong("no addresses are left")

    def take(self, number):
        """The first of so many in a row, with as many as a byte tells besides, to which printers may go."""
        first = self._next + 1
        self._next += (number // 256 + 2) * 256
        return first

    def give_back(self):
        self._claim.close()


class Printers:
    """A simulator with some printers of the same kind, at addresses of their own."""

    def __init__(self, bench, name, number, *faults):
        self._first = bench.region.take(number)
        self.names = [f"{name}-{each + 1:04}" for each in range(number)]
        self._number = number
        self._log = os.path.join(bench.folder, name + ".log")
        self._dump = os.path.join(bench.folder, name + ".dump")
        self._lines, self._seen = threading.Condition(), []
        self._process = None
        if number:
            self._start(bench, faults)

    def address(self, index):
        return dotted(self._first + index)

    def inventory(self):
        return {name: {"ansible_host": self.address(index), "ansible_port": PORT}
                for index, name in enumerate(self.names)}

    def _start(self, bench, faults):
        self._process = subprocess.Popen(  # pylint: disable=consider-using-with
            [os.path.join(bench.programs, "varden-printer-simulator"), "--host", self.address(0),
             "--port", str(PORT), "--printers", str(self._number), "--own-address",
             "--log", self._log, "--dump", self._dump, *faults], stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT)
        threading.Thread(target=self._listen, daemon=True).start()
        wait_for(lambda: any("faults:" in line for line in self._seen), "the printers")

    def _listen(self):
        for line in self._process.stdout:
            with self._lines:
                self._seen.append(line.decode())
        self._process.stdout.close()

    def held(self):
        """What each printer holds by its own word."""
        before = sum(line.startswith("Settings written") for line in self._seen)
        self._process.send_signal(signal.SIGUSR1)
        wait_for(lambda: sum(line.startswith("Settings written") for line in self._seen) > before,
                 "what the printers hold")
        with open(self._dump, encoding="utf-8") as file:
            return {self.names[each["printer"] - 1]: each["settings"]
                    for each in json.load(file)["printers"]}

    def events(self):
        with open(self._log, encoding="utf-8") as file:
            for line in file:
                if line.endswith("\n"):
                    yield json.loads(line)

    def received(self):
        """The commands that each printer has received, in their order."""
        commands = {name: [] for name in self.names}
        for event in self.events():
            if event["event"] == "received":
                commands[self.names[event["printer"] - 1]].append((event["command"], event["kind"]))
        return commands

    def sent(self):
        """Of these the ones that change something."""
        return {name: [command for command, kind in commands if kind not in READS]
                for name, commands in self.received().items()}

    def stop(self):
        if self._process:
            self._process.terminate()
            self._process.wait(PATIENCE)


class Run:
    """What has come of a playbook."""

    def __init__(self, code, text, folder):
        self.code, self.text, self._folder = code, text, folder
        self.recap = {name: tuple(int(each) for each in counts)
                      for name, *counts in RECAP.findall(text)}

    def changed(self):
        return sorted(name for name, counts in self.recap.items() if counts[0])

    def summary(self, check=False):
        path = os.path.join(self._folder, *(["check"] if check else []), "summary.csv")
        with open(path, encoding="utf-8", newline="") as file:
            return {row["printer"]: row for row in csv.DictReader(file)}

    def results(self, check=False):
        """The printers by their results in the summary."""
        results = {}
        for name, row in self.summary(check).items():
            results.setdefault(row["result"], []).append(name)
        return results


class Bench:
    """A folder, the programs, the collection, and Ansible as it comes."""

    def __init__(self, programs, collection, printers, forks):
        self._place = tempfile.TemporaryDirectory(prefix="varden-ansible-")
        self.folder, self.programs = self._place.name, os.path.abspath(programs)
        self.number, self.forks = printers, forks
        self.source = os.path.abspath(collection)
        self.rollout = os.path.join(self.folder, "rollout")
        self.state = os.path.join(self.folder, "state")
        self._fleets = []
        self.region = Region()
        self.environment = dict(
            os.environ, HOME=self.folder, ANSIBLE_HOME=os.path.join(self.folder, "home"),
            ANSIBLE_CONFIG=os.path.join(self.folder, "ansible.cfg"), ANSIBLE_COLLECTIONS_PATH=os.path.join(self.folder, "collections"),
            ANSIBLE_NOCOLOR="1", PYTHONDONTWRITEBYTECODE="1", LC_ALL="C.UTF-8")
        with open(os.path.join(self.folder, "ansible.cfg"), "w", encoding="utf-8"):
            pass  # nothing of this machine's own
        place = os.path.join(self.folder, "collections", "ansible_collections", "varden")
        os.makedirs(place)
        os.symlink(self.source, os.path.join(place, "printer"))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for fleet in self._fleets:
            fleet.stop()
        self.region.give_back()
        self._place.cleanup()

    def printers(self, name, number, *faults):
        self._fleets.append(Printers(self, name, number, *faults))
        return self._fleets[-1]

    def variables(self, **more):
        return dict({"varden_executable": os.path.join(self.programs, "varden"), "varden_pause": 0,
                     "varden_reach": 1, "varden_state_folder": self.state,
                     "varden_rollout_folder": self.rollout}, **more)

    def command(self, playbook, hosts, variables, *options):
        path = os.path.join(self.folder, "inventory.yml")
        with open(path, "w", encoding="utf-8") as file:
            json.dump({"printers": {"hosts": hosts}}, file)
        return ["ansible-playbook", "-i", path, "--forks", str(self.forks), playbook,
                "-e", json.dumps(variables), *options]

    def play(self, playbook, hosts, variables, *options):
        done = subprocess.run(self.command(playbook, hosts, variables, *options), check=False,
                              env=self.environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              stdin=subprocess.DEVNULL, timeout=10 * PATIENCE)
        run = Run(done.returncode, done.stdout.decode(), self.rollout)
        if not run.recap:
            raise Wrong(f"{playbook} has no recap:\n{run.text}")
        return run

    def tool(self, *words):
        done = subprocess.run(words, check=False, env=self.environment, stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL, timeout=PATIENCE)
        if done.returncode:
            raise Wrong(f"{' '.join(words)} ended with {done.returncode}:\n{done.stdout.decode()}")
        return done.stdout.decode()

    def varden_processes(self):
        """The processes of varden that this bench's tasks have begun and that still run."""
        found = []
        for name in filter(str.isdigit, os.listdir("/proc")):
            try:
                with open(f"/proc/{name}/cmdline", "rb") as file:
                    words = file.read().split(b"\0")
            except OSError:
                continue
            if words[0].endswith(b"/varden") and any(self.folder.encode() in word for word in words[1:]):
                found.append(int(name))
        return found
