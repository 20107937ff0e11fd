"""Builds what is measured, and runs it: one run after the other, the programs in turn, so that what the
computer does meanwhile spoils all of them alike."""

import json
import os
import pathlib
import re
import subprocess
import tempfile
import time

from figures import Figure

PROJECT = pathlib.Path(__file__).resolve().parent.parent
PRODUCTS = ["varden-setting-tool", "varden", "varden-printer-simulator"]
MEASURING = ["varden_first_frame", "varden-bench-plain", "varden-bench-links", "varden-bench-rooms"]
PATIENCE = 300


def build(source, folder, targets):
    """A release of the tree in source, as the package is made, with what of the targets it has."""
    subprocess.run(["cmake", "-S", source, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                    "-DCMAKE_CXX_COMPILER=clang++", "-DVARDEN_PRECOMPILE=ON", "-DVARDEN_BENCH=ON",
                    "-DBUILD_TESTING=OFF"], check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", folder, "--target", *targets], check=True)
    return pathlib.Path(folder) / "bin"


def commit(source=PROJECT):
    """The commit of a tree, marked when there is more in it."""
    def git(*words):
        return subprocess.run(["git", "-c", "safe.directory=*", "-C", source, *words], check=True,
                              capture_output=True, text=True).stdout.strip()
    return git("rev-parse", "--short=12", "HEAD") + ("+" if git("status", "--porcelain", "-uno") else "")


def first_frame(command, probe, platform, before=()):
    """One start of a program up to its first painted window, as the probe tells of it."""
    with tempfile.TemporaryDirectory() as home:
        report = pathlib.Path(home) / "report"
        environment = dict(os.environ, LD_PRELOAD=str(probe), VARDEN_FIRST_FRAME=str(report), HOME=home,
                           QT_QPA_PLATFORM=platform, VARDEN_STARTED=str(time.monotonic_ns()))
        subprocess.run([*before, *map(str, command)], env=environment, timeout=PATIENCE,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=not before)
        return json.loads(report.read_text())


def instructions(command, probe, platform):
    """How many instructions that start takes, in millions."""
    with tempfile.TemporaryDirectory() as folder:
        out = pathlib.Path(folder) / "callgrind"
        first_frame(command, probe, platform,
                    ["valgrind", "--tool=callgrind", f"--callgrind-out-file={out}", "-q"])
        return int(re.search(r"^(?:summary|totals): (\d+)", out.read_text(), re.MULTILINE).group(1)) / 1e6


def windows(programs):
    """The windows that are compared; of "front" only the page in front has anything in it, and "libraries" is the
    plain one with the tool's libraries loaded."""
    return {"tool": [programs / "varden-setting-tool"], "plain": [programs / "varden-bench-plain"],
            "libraries": [programs / "varden-bench-plain"],
            "front": [programs / "varden-bench-plain", "--front"],
            "empty": [programs / "varden-bench-plain", "--empty"]}


# What the tool stands on besides the toolkit's window; the plain one is also started with it.
LIBRARIES = {"libraries": "libQt6Network.so.6 libQt6SerialPort.so.6 libusb-1.0.so.0"}


def measure_starts(commands, probe, platform, runs):
    """All figures of the starts of all windows, and how many controls each has."""
    reports = {name: [] for name in commands}
    for run in range(runs + 1):  # the first warms up
        for name, command in commands.items():
            report = first_frame(command, f"{probe} {LIBRARIES.get(name, '')}", platform)
            if run > 0:
                reports[name].append(report)
    figures, controls = {}, {}
    for name, all_of_it in reports.items():
        figures[f"window: {name}, processor"] = Figure([one["processor_ms"] for one in all_of_it], "ms")
        figures[f"window: {name}, wall"] = Figure([one["wall_ms"] for one in all_of_it], "ms")
        figures[f"window: {name}, memory"] = Figure([one["peak_kib"] / 1024 for one in all_of_it], "MiB")
        controls[name] = {kind: all_of_it[0][kind]
                          for kind in ("lists", "entries", "spin_boxes", "labels", "buttons", "tabs")}
    return figures, controls


def run_once(command):
    """One run of a program: how long it took and what of the processor, in milliseconds; what it printed."""
    with tempfile.TemporaryFile() as output:
        start = time.monotonic_ns()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.DEVNULL)
        _, status, used = os.wait4(process.pid, 0)
        wall = (time.monotonic_ns() - start) / 1e6
        process.returncode = os.waitstatus_to_exitcode(status)
        output.seek(0)
        text = output.read().decode()
    if process.returncode != 0:
        raise RuntimeError(f"{command} ended with {process.returncode}")
    return wall, (used.ru_utime + used.ru_stime) * 1000, text


class Simulator:
    """A simulated printer on the network."""

    def __init__(self, programs, *options):
        self._process = subprocess.Popen([programs / "varden-printer-simulator", "--port", "0", *options],
                                         stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        self.pid = self._process.pid
        self.target = "lan:" + self._process.stdout.readline().split()[-1]
        self._rest = subprocess.Popen(["cat"], stdin=self._process.stdout, stdout=subprocess.DEVNULL)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._process.terminate()
        self._process.wait()
        self._rest.wait()


def measure_commands(kinds, runs):
    """The command line's own times, of each kind of programs in turn: kinds is a name and a folder each."""
    words = {"--version": ["--version"], "list": ["list"]}
    values = {(kind, word): [] for kind in kinds for word in [*words, "status", "status, own"]}
    processor = {(kind, word): [] for kind in kinds for word in [*words, "status"]}
    with Simulator(next(iter(kinds.values()))) as printer:
        for run in range(runs + 1):
            for kind, programs in kinds.items():
                for word, arguments in {**words, "status": ["status", printer.target, "--json"]}.items():
                    wall, used, text = run_once([programs / "varden", *arguments])
                    if run == 0:
                        continue
                    values[kind, word].append(wall)
                    processor[kind, word].append(used)
                    if word == "status":
                        values[kind, "status, own"].append(wall - json.loads(text)["seconds"] * 1000)
    figures = {kind: {} for kind in kinds}
    for (kind, word), of_it in values.items():
        figures[kind][f"varden {word}, wall"] = Figure(of_it, "ms", 1.0)
    for (kind, word), of_it in processor.items():
        figures[kind][f"varden {word}, processor"] = Figure(of_it, "ms", 1.0)
    return figures


# The figures of varden-bench-links: what they are called, their unit, and what is no difference.
LINKS = {
    "idle": ("idle, processor", "%", 0.2),
    "waiting": ("waiting for an answer, processor", "%", 0.5),
    "next-command": ("answer's last byte to the next command", "ms", 0.05),
    "read": ("READ beyond its pauses", "ms", 2.0),
    "flood-junk": ("flood of junk, processor", "%", 3.0),
    "flood-heads": ("flood of heads of answers, processor", "%", 3.0),
    "flood-bytes": ("flood of single bytes, processor", "%", 3.0),
    "flood-serial": ("flood on a serial line, processor", "%", 3.0),
}


def measure_links(programs, counts=None):
    """The window at work with a printer; counts says how often each figure is measured."""
    words = [f"{name}={count}" for name, count in (counts or {}).items()]
    result = subprocess.run([programs / "varden-bench-links", *words], check=True, capture_output=True,
                            env=dict(os.environ, QT_QPA_PLATFORM="offscreen"), timeout=PATIENCE)
    return links_from(result.stdout.decode())


def links_from(text):
    return {LINKS[name][0]: Figure(values, *LINKS[name][1:]) for name, values in json.loads(text).items()}


def measure_rooms(programs, repetitions):
    """What takes no window and no printer."""
    result = subprocess.run([programs / "varden-bench-rooms", "--benchmark_format=json",
                             f"--benchmark_repetitions={repetitions}", "--benchmark_min_time=0.05"],
                            check=True, capture_output=True, timeout=PATIENCE)
    return rooms_from(result.stdout.decode())


def rooms_from(text):
    values = {}
    for one in json.loads(text)["benchmarks"]:
        if one["run_type"] == "iteration":
            values.setdefault(one["run_name"], []).append(one["cpu_time"] / 1000)
    return {f"rooms: {name}": Figure(of_it, "us") for name, of_it in values.items()}
