#!/usr/bin/python3
"""Changes the rooms without a toolkit in one place at a time, and tells which changes their tests do not notice.

  tests/mutate/mutate.py [--sample COUNT [--seed NUMBER]] [--room ROOM...] [--file TEXT] [--unnoticed]
                         [--at-least PERCENT] [--list] [BUILD]

BUILD is a finished build of the tests, build/dev if none is named. What the changes are, how they are tried
and what survivors.txt is: README.md beside this.
"""
import argparse
import os
import random
import sys
import time
from concurrent.futures import FIRST_COMPLETED, ThreadPoolExecutor, wait
from multiprocessing import Pool
from pathlib import Path

sys.dont_write_bytecode = True
# pylint: disable=wrong-import-position
import building  # noqa: E402
import render  # noqa: E402
import running  # noqa: E402

HERE = Path(__file__).resolve().parent
ROOT = HERE.parents[1]
# More than are asked for: some of them do not compile, or change nothing.
SPARE = 30
MOST_IN_A_SOURCE = 5000


def equivalents():
    """The changes that change nothing, each with the reason: "key", and "    reason" on the next line."""
    reasons = {}
    key = None
    for line in (HERE / "survivors.txt").read_text(encoding="utf-8").splitlines():
        if line.startswith("    ") and key:
            reasons[key] = (reasons.get(key, "") + " " + line.strip()).strip()
        elif line and not line.startswith("#"):
            key = line
            reasons[key] = ""
    without = [key for key, reason in reasons.items() if not reason]
    if without:
        raise SystemExit(f"survivors.txt gives no reason for: {without[0]}")
    return reasons


PROJECT = None


def find(path):
    """For a process of its own: Python parses one source at a time otherwise."""
    found, constants = PROJECT.find(path)
    return path, found, constants


class Trial:
    """The changes of some sources in one set of programs, and their verdicts."""

    def __init__(self, project, workers):
        self.project = project
        self.workers = workers
        self.programs = {}
        self.objects = {}
        self.alone = set()

    def room(self, path):
        return Path(path).relative_to(ROOT).parts[0]

    def prepare(self, sites, constants):
        by_file = {}
        for site in sites:
            by_file.setdefault(site.path, []).append(site)
        # Of a source that is as it was the numbers are as they were, and so is what is made of it.
        for index, path in enumerate(self.project.sources()):
            for number, site in enumerate(by_file.get(path, [])):
                site.number = index * MOST_IN_A_SOURCE + number
        with ThreadPoolExecutor(self.workers) as pool:
            def make(path):
                return path, self.project.switchable(path, by_file[path], constants[path])
            for path, (target, left) in pool.map(make, sorted(by_file)):
                self.objects[path] = target
                self.alone |= set(left)
            target, said = self.project.compile(
                next(p for p in self.project.commands if p.endswith("tests/model/CItemTest.cpp")),
                (HERE / "Switch.cpp").read_bytes(), "Switch")
            if not target:
                raise SystemExit(said)
            self.objects["Switch"] = target

            def build(room):
                path = self.project.link(room, [
                    o for p, o in self.objects.items()
                    if p == "Switch" or self.project.has(room, self.room(p))], "all")
                program = running.Program(path, self.project.build)
                program.record(self.project.out / f"{room}.reached")
                return room, program
            self.programs = dict(pool.map(build, reversed(building.ROOMS)))

    def order(self, site):
        """A room's own tests first, all of them; of the others' only the ones nearest to the change."""
        own = self.room(site.path)
        return [own] + [r for r in building.ROOMS if r != own and self.project.has(r, own)]

    def judge(self, site):
        """What becomes of a change: the test that notices it, "" when none does, None when it is none."""
        if site in self.alone:
            return self.judge_alone(site)
        for room in self.order(site):
            told = self.programs[room].notices(site.number, room == self.room(site.path))
            if told:
                return told
        return ""

    def judge_alone(self, site):
        """One that cannot be switched: compiled, linked and run by itself."""
        name = f"alone{site.number}"
        target, _ = self.project.compile(site.path, render.alone(open(site.path, "rb").read(), site), name)
        if not target:
            return None
        told = ""
        for room in self.order(site):
            path = self.project.link(room, [target], name)
            told = self.programs[room].notices(None, room == self.room(site.path), path)
            path.unlink()
            if told:
                break
        return told


def chosen(arguments, project, workers):
    """All sites of the sources that are asked for, and the constants of each source."""
    global PROJECT  # pylint: disable=global-statement
    PROJECT = project
    paths = [p for p in project.sources()
             if arguments.file in p and Path(p).relative_to(ROOT).parts[0] in arguments.room]
    sites, constants = [], {}
    with Pool(workers) as pool:
        for path, found, of_source in pool.imap(find, paths):
            sites += found
            constants[path] = of_source
    return sites, constants


def main():
    words = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    words.add_argument("build", nargs="?", default="build/dev")
    words.add_argument("--sample", type=int, default=0)
    words.add_argument("--seed", type=int, default=random.randrange(1 << 30))
    words.add_argument("--room", nargs="*", default=building.ROOMS)
    words.add_argument("--file", default="")
    words.add_argument("--unnoticed", action="store_true", help="only those that the last run did not notice")
    words.add_argument("--at-least", type=float, default=97)
    words.add_argument("--list", action="store_true", help="only tell which changes there are")
    arguments = words.parse_args()
    started = time.monotonic()
    workers = os.cpu_count() or 1
    project = building.Project(ROOT, ROOT / arguments.build, ROOT / "build" / "mutate")
    reasons = equivalents()
    sites, constants = chosen(arguments, project, workers)
    unknown = set(reasons) - {s.key for s in sites}
    whole = arguments.room == building.ROOMS and not arguments.file
    if whole and unknown:
        print("survivors.txt tells of what is not there:", *sorted(unknown), sep="\n  ")
        return 1
    if arguments.list:
        print(*(f"{s.key}" for s in sites), sep="\n")
        return 0
    notes = project.out / "unnoticed.txt"
    total = len(sites)
    listed = [s for s in sites if s.key in reasons]
    there = sites
    if arguments.unnoticed:
        last = set(notes.read_text(encoding="utf-8").splitlines())
        sites = [s for s in sites if s.key in last]
        listed = [s for s in listed if s.key in last]
    if arguments.sample:
        print(f"{arguments.sample} of {total} changes by chance; --seed {arguments.seed} repeats them", flush=True)
        rest = [s for s in sites if s.key not in reasons]
        random.Random(arguments.seed).shuffle(rest)
        there = sites = rest[:arguments.sample + SPARE]
    else:
        sites = list(sites)
        random.Random(arguments.seed).shuffle(sites)  # what a run that is cut short tells is true of all
    trial = Trial(project, workers)
    trial.prepare(sorted(there, key=lambda s: (s.path, s.start, -s.end, s.how, s.new)), constants)
    print(f"{len(sites)} changes in {len(trial.objects) - 1} sources ready after "
          f"{time.monotonic() - started:.0f} s, {len(trial.alone)} of them to compile one by one", flush=True)
    return verdicts(arguments, trial, sites, reasons, listed, notes, started)


def verdicts(arguments, trial, sites, reasons, listed, notes, started):
    noticed, unnoticed, none, needless = 0, [], 0, []
    most = arguments.sample or len(sites)
    with open(trial.project.out / "results.tsv", "w", encoding="utf-8") as results, \
            ThreadPoolExecutor(trial.workers) as pool:
        # No more are begun than may be needed.
        waiting, begun = {}, iter(sites)
        while noticed + len(unnoticed) < most:
            needed = most - noticed - len(unnoticed) - len(waiting)
            for _, site in zip(range(min(needed, 2 * trial.workers - len(waiting))), begun):
                waiting[pool.submit(trial.judge, site)] = site
            if not waiting:
                break
            future = next(iter(wait(waiting, return_when=FIRST_COMPLETED).done))
            site, told = waiting.pop(future), future.result()
            state = {None: "does not compile", "": "UNNOTICED"}.get(told, f"noticed by {told}")
            print(site.line, site.key, state, sep="\t", file=results, flush=True)
            if told is None:
                none += 1
            elif told:
                noticed += 1
                needless += [site] if site.key in reasons else []
            elif site.key in reasons:
                most -= 1
            else:
                unnoticed.append(site)
                print(f"not noticed: {site.path.removeprefix(f'{ROOT}/')}:{site.line}: {site.key}", flush=True)
    if not arguments.sample:
        notes.write_text("".join(f"{s.key}\n" for s in unnoticed), encoding="utf-8")
    for site in needless:
        print(f"survivors.txt says that this changes nothing, yet it is noticed: {site.key}")
    tried = noticed + len(unnoticed)
    share = 100 * noticed / tried if tried else 100.0
    told = "" if arguments.sample else f", {len(listed) - len(needless)} change nothing (survivors.txt)"
    print(f"{noticed} of {tried} changes noticed, {share:.1f} of 100{told}; {none} do not compile; "
          f"{time.monotonic() - started:.0f} s")
    return 0 if share >= arguments.at_least and not needless else 1


if __name__ == "__main__":
    sys.exit(main())
