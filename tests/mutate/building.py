"""The changed sources in programs: how one is compiled, and how the programs are linked.

A program is linked as the build links it, with its objects and libraries; only what is compiled here
stands before them.
"""
import hashlib
import json
import re
import shlex
import subprocess
from pathlib import Path

from clang import cindex

import render
import sites

ROOMS = ["model", "protocol", "link", "files", "jobs", "flows"]
# "file:line:column: kind: text", of what the compiler says
SAID = re.compile(r"^([^:\n]+):(\d+):(\d+): (fatal error|error|note): (.*)$", re.MULTILINE)


class Project:
    """The sources and the finished build that the changed ones are put into."""

    def __init__(self, root, build, out):
        self.root = root
        self.build = build
        self.out = out
        self.commands = {}
        for entry in json.loads((build / "compile_commands.json").read_text()):
            words = [w for w in shlex.split(entry["command"]) if w != "-Werror"]
            del words[words.index("-o"):words.index("-o") + 2]
            del words[words.index("-c"):words.index("-c") + 2]
            self.commands[entry["file"]] = words
        self.link_lines = {room: self.link_line(room) for room in ROOMS}
        (out / "bin").mkdir(parents=True, exist_ok=True)
        (out / "kept").mkdir(exist_ok=True)
        self.headers = b"".join(hashlib.sha1(p.read_bytes()).digest() for room in [*ROOMS, "platform"]
                                for p in sorted((root / room).glob("*.h")))

    def program(self, room):
        return f"varden_{room}_tests"

    def link_line(self, room):
        text = subprocess.run(["ninja", "-C", str(self.build), "-t", "commands", f"bin/{self.program(room)}"],
                              check=True, capture_output=True, text=True).stdout
        line = text.strip().splitlines()[-1]
        return shlex.split(line.removeprefix(": && ").removesuffix(" && :"))

    def sources(self):
        return [f for room in ROOMS for f in sorted(self.commands)
                if str(self.root / room) == f.rsplit("/", 1)[0]]

    def find(self, path):
        """The sites of a source, and its constants."""
        arguments = [w for w in self.commands[path][1:] if not w.startswith("-W")]
        unit = cindex.Index.create().parse(path, args=arguments)
        bad = [d.spelling for d in unit.diagnostics if d.severity >= cindex.Diagnostic.Error]
        if bad:
            raise RuntimeError(f"{path}: {bad[0]}")
        finder = sites.Finder(path, open(path, "rb").read(), unit, path.removeprefix(f"{self.root}/"))
        return finder.find(), finder.constants

    def compile(self, path, text, name):
        """Compiles the text in place of a source. The object, and what the compiler said.

        What was compiled once is kept: a second run over the same sources begins at once.
        """
        words = " ".join(self.commands[path]).encode()
        kept = self.out / "kept" / hashlib.sha1(words + b"\0" + self.headers + text).hexdigest()
        target, said = kept.with_suffix(".o"), kept.with_suffix(".txt")
        if target.exists() or said.exists():
            return (target, "") if target.exists() else (None, said.read_text(encoding="utf-8"))
        source = self.out / f"{name}.cpp"
        source.write_bytes(text)
        command = self.commands[path] + ["-w", "-Wno-c++11-narrowing", "-ferror-limit=0",
                                         "-fno-caret-diagnostics", "-iquote", path.rsplit("/", 1)[0]]
        done = subprocess.run(command + ["-o", f"{target}.new", "-c", str(source)], cwd=self.build,
                              capture_output=True, text=True, check=False)
        if done.returncode == 0:
            Path(f"{target}.new").rename(target)
            return target, ""
        said.write_text(done.stderr, encoding="utf-8")
        return None, done.stderr

    def switchable(self, path, found, constants):
        """The object of a source with all changes in it, and those of them that could not be put there."""
        source = open(path, "rb").read()
        name = path.removeprefix(f"{self.root}/").replace("/", "_").removesuffix(".cpp")
        left = {s for s in found if not s.fixed}
        used = list(constants)
        for _ in range(20):
            kept = [c for c in used if any(c[3] <= s.start < c[4] for s in left)]
            page = render.Rendered(source, sorted(left, key=lambda s: s.number), kept)
            target, said = self.compile(path, page.text, name)
            if target:
                return target, [s for s in found if s not in left]
            before = len(left)
            left, used = self.without(page, said, f"{self.out}/{name}.cpp", path, source, left, used)
            if len(left) == before:
                raise RuntimeError(f"{path} with all its changes does not compile:\n{said[:3000]}")
        raise RuntimeError(f"{path} with all its changes does not compile:\n{said[:3000]}")

    @staticmethod
    def without(page, said, own, path, source, left, used):
        """What is left when the changes of which the compiler complained are taken out."""
        bad = set()
        for match in SAID.finditer(said):
            file, line, column, kind, text = match.groups()
            if file not in (own, path):
                continue
            if kind == "note" and "declared here" in text:
                start = sum(len(l) for l in source.splitlines(keepends=True)[:int(line) - 1])
                end = source.find(b"\n", start)
                for constant in [c for c in used if c[3] <= end and c[0] >= start - 200 and c[4] > start]:
                    if constant[0] <= end:
                        bad |= {s for s in left if constant[3] <= s.start < constant[4]}
                        used = [c for c in used if c is not constant]
            elif kind != "note":
                bad |= set(page.at(int(line), int(column)))
        return left - bad, used

    def has(self, room, other):
        """Whether the test program of a room has another room in it."""
        return any(w.endswith(f"/libvarden_{other}.a") for w in self.link_lines[room])

    def link(self, room, objects, name):
        """The test program of a room with these objects in it."""
        words = list(self.link_lines[room])
        target = self.out / "bin" / f"{name}_{self.program(room)}"
        words[words.index("-o") + 1] = str(target)
        first = next(i for i, w in enumerate(words) if w.endswith(".o"))
        words[first:first] = [str(o) for o in objects]
        done = subprocess.run(words, cwd=self.build, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise RuntimeError(f"{room}: {done.stderr[:3000]}")
        return target
