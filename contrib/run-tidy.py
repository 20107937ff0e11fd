#!/usr/bin/env python3
"""Runs clang-tidy over sources, those of a room several at a time.

Nearly all of a run over one source goes into the headers of the toolkit. So sources that are compiled
alike are included in one file, and that is checked. Sources with the same name for something of their
own do not come into one file; where two meet there all the same and it does not compile, its sources are
checked one by one: no source has to be written for this.

  contrib/run-tidy.py BUILD SOURCE...     BUILD has the compile commands; everything is printed that
                                          clang-tidy has to say; exit code 1 when that is something
"""
import json
import os
import re
import shlex
import subprocess
import sys
from collections import defaultdict
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

# More do not gain much, and one that does not compile costs more.
MOST_AT_ONCE = 10
# What would be said of a batch because it is one: that it includes sources, and takes them for headers.
OF_BATCHES = "-bugprone-suspicious-include,-google-global-names-in-headers"
# What begins a line and is, or may be, a source's own: a type, a constant, a function.
OWN = re.compile(r"^(?:using (\w+) =|(?:struct|class|enum(?: class)?) (\w+)"
                 r"|(?:constexpr|const) [^=({]*?(\w+)(?:\[\w*\])?\s*[={(]"
                 r"|using [\w:]+::(\w+);"
                 r"|(?!return|namespace|using|#)[\w][\w:<>&*, ]*[ &*](\w+)\()", re.MULTILINE)
SUMMARY = re.compile(r"^\d+ warnings?( and \d+ errors?)? (generated|treated).*\n|^\d+ errors? generated.*\n",
                     re.MULTILINE)


def compile_commands(build):
    """The words of each source's command, without its output and itself, and where it runs."""
    commands = {}
    for entry in json.loads((build / "compile_commands.json").read_text()):
        words = shlex.split(entry["command"])
        source = os.path.realpath(os.path.join(entry["directory"], entry["file"]))
        output = words.index("-o")
        kept = words[:output] + words[output + 2:]
        kept.remove("-c")
        commands[source] = (entry["directory"], tuple(w for w in kept if w != entry["file"]))
    return commands


def own_names(source):
    """What a source may have for itself, by its names."""
    text = Path(source).read_text()
    return {name for match in OWN.finditer(text) for name in match.groups() if name}


def batches(sources, commands):
    """The sources in lists: those of one folder with the same command and no name twice, the most
    costly first."""
    alike = defaultdict(list)
    for source in sources:
        alike[os.path.dirname(source), commands[source]].append(source)
    lists = []
    for group in alike.values():
        open_ones = []
        for source in group:
            names = own_names(source)
            fitting = [one for one in open_ones if len(one[0]) < MOST_AT_ONCE and not one[1] & names]
            if not fitting:
                fitting = [([], set())]
                open_ones += fitting
            fitting[0][0].append(source)
            fitting[0][1].update(names)
        lists += [batch for batch, _ in open_ones]
    return sorted(lists, key=lambda batch: -sum(os.path.getsize(source) for source in batch))


def tidy(folder, source, *options):
    """What clang-tidy says of a source, and whether it was content."""
    run = subprocess.run(["clang-tidy", "--quiet", "-p", folder, *options, source],
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace")
    return SUMMARY.sub("", run.stdout), run.returncode == 0


def check(build, number, batch, command):
    """The same of a batch; of one source by itself."""
    if len(batch) > 1:
        folder = build / "batches" / str(number)
        folder.mkdir(parents=True, exist_ok=True)
        joined = folder / "batch.cpp"
        joined.write_text("".join(f'#include "{source}"\n' for source in batch))
        directory, words = command
        (folder / "compile_commands.json").write_text(json.dumps(
            [{"directory": directory, "file": str(joined),
              "command": shlex.join([*words, "-c", str(joined)])}]))
        text, content = tidy(folder, str(joined), "--checks=" + OF_BATCHES)
        if content or "clang-diagnostic-error" not in text:
            return text, content
        print("One by one, for names that meet: " + " ".join(os.path.basename(s) for s in batch), flush=True)
    told = [tidy(build, source) for source in batch]
    return "".join(text for text, _ in told), all(content for _, content in told)


def main():
    build = Path(sys.argv[1]).resolve()
    sources = [os.path.realpath(source) for source in sys.argv[2:]]
    commands = compile_commands(build)
    unknown = [source for source in sources if source not in commands]
    if unknown or not sources:
        print("Not compiled here: " + " ".join(unknown), file=sys.stderr)
        return 1
    lists = batches(sources, commands)
    content = True
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [pool.submit(check, build, number, batch, commands[batch[0]]) for number, batch in enumerate(lists)]
        for run in runs:
            text, fine = run.result()
            print(text, end="", flush=True)
            content &= fine
    return 0 if content else 1


if __name__ == "__main__":
    sys.exit(main())
