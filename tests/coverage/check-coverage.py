#!/usr/bin/env python3
"""Tells which share of each room's lines and branches the tests have reached, and fails below the limits.

  tests/coverage/check-coverage.py BUILD [--gaps]

BUILD was built with VARDEN_COVERAGE and its tests were run, with their profiles in BUILD/profiles (README.md
beside this). --gaps also names each line and branch that was not reached, in every room; those of a room below
its limit are named always.
"""
import argparse
import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
# Of 100 lines and of 100 branches; None: only told.
LIMITS = {
    "model": (100, 100),
    "protocol": (100, 100),
    "link": (100, 100),
    "files": (100, 100),
    "jobs": (100, 100),
    "flows": (100, 100),
    # 95 of 100 branches is where these two go; until then they do not fall behind this.
    "platform": (None, 81),
    "ui": (None, 92),
    "cli": (None, None),
    "simulator": (None, None),
}
# What cannot be reached says so on its line, or alone on the line before.
NAMED = re.compile(r"// not reached: \S")
# The way past all cases of a switch without a default: the compiler sees that each value has its case.
SWITCH = re.compile(r"^\s*switch \(")
PROFDATA, COV = "llvm-profdata-14", "llvm-cov-14"


def programs(build):
    """All that was built to run, also where a program lies in a folder of its own."""
    return [p for p in sorted((build / "bin").iterdir())
            if p.is_file() and p.read_bytes()[:4] == b"\x7fELF" and not p.name.endswith(".sh")]


def export(build):
    profiles = sorted((build / "profiles").glob("*.profraw"))
    if not profiles:
        raise SystemExit(f"No profiles in {build}/profiles: was it built with VARDEN_COVERAGE, and were its tests run?")
    merged = build / "profiles" / "all.profdata"
    subprocess.run([PROFDATA, "merge", "-sparse", "-failure-mode=all", *map(str, profiles), "-o", str(merged)],
                   check=True)
    first, *others = programs(build)
    command = [COV, "export", "-format=lcov", f"-instr-profile={merged}", str(first)]
    command += [w for p in others for w in ("-object", str(p))]
    command += [f"-ignore-filename-regex=^{re.escape(str(ROOT))}/(tests|build)/|^/usr/"]
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True, check=True)
    return done.stdout


def read(text):
    """Of each source how often its lines and its branches were reached, all its instances together."""
    sources = {}
    lines = branches = None
    for line in text.splitlines():
        if line.startswith("SF:"):
            path = Path(line[3:])
            name = str(path.relative_to(ROOT)) if path.is_relative_to(ROOT) else ""
            lines, branches = sources.setdefault(name, ({}, {}))
        elif line.startswith("DA:"):
            number, count = map(int, line[3:].split(",")[:2])
            lines[number] = lines.get(number, 0) + count
        elif line.startswith("BRDA:"):
            *place, count = line[5:].split(",")
            place = tuple(map(int, place))
            branches[place] = branches.get(place, 0) + (0 if count == "-" else int(count))
    return sources


# A brace alone is no code; behind a "return" one of them counts as a line that nothing comes to.
BRACES = re.compile(r"^\s*[{}]+[;)]*\s*$")


class Room:
    def __init__(self, name):
        self.name = name
        self.limits = LIMITS[name]
        self.lines = [0, 0]
        self.branches = [0, 0]
        self.named = 0
        self.gaps = []
        self.wrong = []

    def add(self, source, lines, branches):
        text = (ROOT / source).read_text(encoding="utf-8").splitlines()
        said = {n for n, l in enumerate(text, 1) if NAMED.search(l)}
        said |= {n + 1 for n in said if text[n - 1].strip().startswith("//")}
        open_branches = {p for p, count in branches.items()
                         if count == 0 and not (SWITCH.match(text[p[0] - 1]) and p[2] == 0)}
        reached = {p for p, count in branches.items() if count > 0}
        lines = {n: count for n, count in lines.items() if count > 0 or not BRACES.match(text[n - 1])}
        missing = {n for n, count in lines.items() if count == 0}
        at = {p[0] for p in open_branches}
        for number in said & set(lines):
            self.named += 1
            if number not in missing | at:
                self.wrong.append(f"{source}:{number}: is reached all the same")
        self.lines[0] += sum(1 for n, count in lines.items() if count > 0)
        self.lines[1] += sum(1 for n in lines if n not in missing or n not in said)
        open_branches = {p for p in open_branches if p[0] not in said}
        self.branches[0] += len(reached)
        self.branches[1] += len(reached) + len(open_branches)
        for number in sorted((missing - said) | {p[0] for p in open_branches}):
            what = "line" if number in missing else \
                "branch " + " ".join(str(p[2]) for p in sorted(open_branches) if p[0] == number)
            self.gaps.append(f"{source}:{number}: {what} not reached: {text[number - 1].strip()}")

    @staticmethod
    def share(counts):
        return 100 * counts[0] / counts[1] if counts[1] else 100.0

    def below(self):
        return any(limit is not None and self.share(counts) < limit
                   for limit, counts in zip(self.limits, (self.lines, self.branches)))

    def row(self):
        def cell(counts, limit):
            # Never rounded up to what it is not.
            share = int(self.share(counts) * 10) / 10
            asked = "" if limit is None else f" >= {limit}"
            return f"{counts[0]:6} of {counts[1]:6} {share:6.1f} %{asked:7}"
        return f"{self.name:10} {cell(self.lines, self.limits[0])}  {cell(self.branches, self.limits[1])}" \
               f"  {self.named:5}  {'BELOW' if self.below() else ''}".rstrip()


def main():
    words = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    words.add_argument("build", type=Path)
    words.add_argument("--gaps", action="store_true")
    arguments = words.parse_args()
    build = arguments.build.resolve()
    sources = read(export(build))
    rooms = {name: Room(name) for name in LIMITS}
    for source in sorted(sources):
        name = source.split("/")[0]
        if name in rooms:
            rooms[name].add(source, *sources[source])
    print(f"{'room':10} {'lines reached':32}  {'branches reached':32}  named")
    for room in rooms.values():
        print(room.row())
    code = 0
    for room in rooms.values():
        # A source that no program has does not even count.
        for path in sorted((ROOT / room.name).rglob("*.cpp")):
            if room.limits != (None, None) and str(path.relative_to(ROOT)) not in sources and built(build, path):
                room.wrong.append(f"{path.relative_to(ROOT)}: in no program")
        if room.below() or arguments.gaps:
            print(*room.gaps, sep="\n")
        print(*room.wrong, sep="\n", end="\n" if room.wrong else "")
        code |= room.below() or bool(room.wrong)
    return int(code)


def built(build, path):
    """Whether the build has the source at all; some are for other systems."""
    return f'"{path}"' in (build / "compile_commands.json").read_text(encoding="utf-8")


if __name__ == "__main__":
    sys.exit(main())
