"""Runs the tests with one change on."""
import os
import resource
import subprocess

FIRST = 40  # of the tests that come to a change, those that come to least besides
SETTINGS = {"VARDEN_RANDOM_WRITES": "60,1", "GTEST_BRIEF": "1", "QT_QPA_PLATFORM": "offscreen",
            "GTEST_FAIL_FAST": "1", "GTEST_CATCH_EXCEPTIONS": "1"}


MOST_MEMORY = 1 << 30
MOST_SECONDS = 600  # by the clock, for what does not even work


def limits(seconds):
    """What a change makes endless ends: by what it works, and not by the clock of a busy machine."""
    def limit():
        resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    return limit


class Program:
    """A test program: which of its tests come to which changes."""

    def __init__(self, path, folder):
        self.path = path
        self.folder = folder
        self.tests = {}  # name: (seconds, sites)
        self.always = set()  # what is come to before any test
        self.by_site = {}

    def record(self, notes):
        """Twice, in another order: what is made once for all is come to by whichever test is the first."""
        first = self.listen(notes, {})
        second = self.listen(notes, {"GTEST_SHUFFLE": "1", "GTEST_RANDOM_SEED": "7"})
        self.always |= {n for n in set(first) | set(second) if first.get(n) != second.get(n)}
        self.by_site = {n: sorted(names) for n, names in first.items()}

    def listen(self, notes, settings):
        """The tests that come to each change."""
        done = self.run({"VARDEN_MUTANT_REACHED": str(notes)} | settings, MOST_SECONDS)
        if done:
            raise RuntimeError(f"{self.path} fails without any change: {done}")
        by_site = {}
        for line in open(notes, encoding="utf-8"):
            name, milliseconds, reached = line.rstrip("\n").split("\t")
            numbers = {int(n) for n in reached.split()}
            if name == "-":
                self.always |= numbers
                continue
            self.tests[name] = (int(milliseconds) / 1000, len(numbers))
            for number in numbers:
                by_site.setdefault(number, set()).add(name)
        return by_site

    def run(self, settings, seconds):
        """Runs it for so many seconds of a processor at most; how it failed, or nothing."""
        environment = {k: v for k, v in os.environ.items() if k not in ("DISPLAY", "WAYLAND_DISPLAY")}
        environment |= SETTINGS | settings
        try:
            done = subprocess.run([str(self.path)], cwd=self.folder, env=environment, capture_output=True,
                                  timeout=MOST_SECONDS, check=False, preexec_fn=limits(seconds), stdin=subprocess.DEVNULL)
        except subprocess.TimeoutExpired:
            return "no end"
        if done.returncode == 0:
            return ""
        text = done.stdout.decode(errors="replace")
        failed = [l.split("]")[1].split(",")[0].strip() for l in text.splitlines() if l.startswith("[  FAILED  ] ")]
        return failed[0] if failed else f"exit code {done.returncode}"

    def notices(self, number, whole, path=None):
        """The test that notices a change, or nothing. When it is not known which come to it, all may.

        Not whole: only the first ones are run.
        """
        names = self.by_site.get(number, []) if number is not None else list(self.tests)
        if number is None or number in self.always:
            names = list(self.tests)
        names = sorted(names, key=lambda n: (self.tests[n][1] + 200 * self.tests[n][0], n))
        settings = {} if number is None else {"VARDEN_MUTANT": str(number)}
        for part in (names[:FIRST], names[FIRST:] if whole else []):
            if part:
                seconds = int(4 + 4 * sum(self.tests[n][0] for n in part))
                program = self if path is None else Program(path, self.folder)
                told = program.run(settings | {"GTEST_FILTER": ":".join(part)}, seconds)
                if told:
                    return told
        return ""
