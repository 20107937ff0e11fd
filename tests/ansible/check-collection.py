#!/usr/bin/env python3
"""The collection as it is built and installed: each action, its documentation, the inventories.

  check-collection.py PROGRAMS COLLECTION VERSION
"""

import glob
import json
import os
import re
import shutil
import subprocess
import sys

import yaml

sys.dont_write_bytecode = True  # among the sources

# pylint: disable=wrong-import-position
from fleet import PORT, Bench, Wrong, expect


def install(bench, version):
    """From now on the collection is that of the built file."""
    place = bench.environment["ANSIBLE_COLLECTIONS_PATH"]
    shutil.rmtree(place)
    bench.tool("ansible-galaxy", "collection", "build", bench.source, "--output-path", bench.folder)
    built = os.path.join(bench.folder, f"varden-printer-{version}.tar.gz")
    bench.tool("ansible-galaxy", "collection", "install", built, "-p", place)
    return os.path.join(place, "ansible_collections", "varden", "printer")


def check_documentation(bench, installed):
    names = sorted(os.path.basename(path)[:-3] for path in glob.glob(installed + "/plugins/action/*.py"))
    pages = json.loads(bench.tool("ansible-doc", "--json", *("varden.printer." + name for name in names)))
    for name in names:
        page = pages["varden.printer." + name]
        expect(f"parts of {name}", [part for part in ("doc", "examples", "return") if not page[part]], [])
    with open(installed + "/meta/runtime.yml", encoding="utf-8") as file:
        grouped = re.findall(r"^ +- (\w+)$", file.read(), re.M)
    expect("actions of printers", grouped, [name for name in names if name != "rollout_summary"])
    for role in ("rollout", "rollback"):
        told = json.loads(bench.tool("ansible-doc", "--json", "-t", "role", "varden.printer." + role))
        told = set(told["varden.printer." + role]["entry_points"]["main"]["options"])
        with open(f"{installed}/roles/{role}/defaults/main.yml", encoding="utf-8") as file:
            expect(f"variables of {role}", told, set(re.findall(r"^(\w+):", file.read(), re.M)))


def tasks_of(path):
    """The actions of a file's tasks by their names."""
    with open(path, encoding="utf-8") as file:
        waiting, found = yaml.safe_load(file), {}
    while waiting:
        each = waiting.pop()
        for part in ("tasks", "block", "always"):
            waiting += each.get(part, [])
        found.update({each["name"]: key for key in each if key.startswith("varden.printer.")})
    return found


def check_results(bench, text, *paths):
    """What tasks have returned, in a verbose run, is what their pages tell."""
    usual = {"changed", "failed", "unreachable", "skipped", "skip_reason", "item", "ansible_loop_var",
             "failed_when_result", "msg"}
    tasks = {name: action for path in paths for name, action in tasks_of(path).items()}
    pages = json.loads(bench.tool("ansible-doc", "--json", *sorted(set(tasks.values()))))
    action, seen = None, set()
    for line in text.splitlines():
        head = re.match(r"TASK \[(?:.* : )?(.*)\] \*", line)
        told = re.match(r"(?:ok|changed|skipping|fatal|failed): \[.*?=> (\{.*\})$", line)
        action = tasks.get(head.group(1)) if head else action
        if action and told:
            seen.add(action)
            keys = set(json.loads(told.group(1)))
            known = set(pages[action]["return"])
            expect(f"results of {action} that its page does not tell", sorted(keys - known - usual), [])
            always = {key for key, each in pages[action]["return"].items() if each["returned"] == "always"}
            if not keys & {"failed", "skipped", "msg"}:
                expect(f"results of {action} that are not there", sorted(always - keys), [])
    expect("actions seen", sorted(seen), sorted(set(tasks.values())))


def check_inventories(bench):
    """The examples can be read, and the line of the page makes one of a table."""
    with open(os.path.join(bench.source, "README.md"), encoding="utf-8") as file:
        line = re.search(r"<!-- tried by tests/ansible: csv -->\n```sh\n(.*?)\n```", file.read(), re.S)
    shutil.copy(os.path.join(bench.source, "examples", "printers.csv"), bench.folder)
    subprocess.run(line.group(1), shell=True, check=True, cwd=bench.folder)

    def hosts(path):
        return json.loads(bench.tool("ansible-inventory", "-i", path, "--list"))["_meta"]["hostvars"]

    made = hosts(os.path.join(bench.folder, "printers.yml"))
    expect("targets of the table", {name: each["varden_target"] for name, each in made.items()},
           {"label-1": "lan:192.168.10.20", "label-2": "lan:192.168.10.21:8001", "label-5": "lan:192.168.20.20"})
    table = os.path.join(bench.folder, "printers.csv")
    with open(table, "r+", encoding="utf-8") as file:
        text = file.read()
        file.seek(0)
        file.write("\ufeff" + text)  # as spreadsheets do
    subprocess.run(line.group(1), shell=True, check=True, cwd=bench.folder)
    expect("the same with a mark in front", hosts(os.path.join(bench.folder, "printers.yml")), made)
    with open(table, "a", encoding="utf-8") as file:
        file.write(text.splitlines()[1] + "\n")
    twice = subprocess.run(line.group(1), shell=True, check=False, cwd=bench.folder, stderr=subprocess.PIPE)
    expect("a name that is there twice", (twice.returncode, b"twice" in twice.stderr), (1, True))
    expect("more of the table", made["label-5"]["site"], "hall-4")
    for name in ("inventory.yml", "inventory.ini"):
        found = hosts(os.path.join(bench.source, "examples", name))
        expect(f"targets of {name}", found["label-3"]["varden_target"], "com:/dev/ttyUSB0,9600,E,8,1")


def check_names(bench):
    """What the collection takes for measured is what varden reads as such; and so of words."""
    listed = json.loads(bench.tool(os.path.join(bench.programs, "varden"), "list", "--json"))["settings"]
    for file, table, key, values in (("saving.py", "SENSORS", "read", ("sensor",)),
                                     ("varden.py", "WORDS", "kind", ("text", "hexadecimal"))):
        with open(os.path.join(bench.source, "plugins", "plugin_utils", file), encoding="utf-8") as source:
            names = re.search(rf"^{table} = \((.*)\)$", source.read(), re.M).group(1)
        expect(table, sorted(re.findall(r'"(.*?)"', names)),
               sorted(name for name, each in listed.items() if each[key] in values))


def bytes_to_the_change(bench, name="probe"):
    """How much a printer has received when half of the command that changes its feed is there."""
    probe = bench.printers(name, 1)
    bench.tool(os.path.join(bench.programs, "varden"), "write", f"lan:{probe.address(0)}:{PORT}",
               "feed-adj=-1.5", "--pause=0", "--state=" + bench.state)
    commands = [command for command, _ in probe.received()[probe.names[0]]]
    first = next(index for index, command in enumerate(commands) if command.startswith("{Z2"))
    return len("".join(commands[:first])) + len(commands[first]) // 2


def check_actions(bench, installed):
    sound = bench.printers("sound", 1)
    moving = bench.printers("moving", 1, "--moves", "at-once")
    cut = bench.printers("cut", 1, "--power-cut", str(bytes_to_the_change(bench)), "--power-back", "never")
    back = bench.printers("back", 1, "--power-cut", str(bytes_to_the_change(bench, "again")), "--power-back", "8000")
    hosts = {name: each for fleet in (sound, moving, cut, back) for name, each in fleet.inventory().items()}
    hosts["dead-0001"] = {"varden_target": "lan:127.63.255.254:1"}
    with open(os.path.join(bench.folder, "shop.json"), "w", encoding="utf-8") as file:
        json.dump({"varden": 1, "settings": {"feed-adj": 1.0, "cut-adj": 1.0}}, file)
    run = bench.play(os.path.join(os.path.dirname(os.path.abspath(__file__)), "modules.yml"), hosts,
                     bench.variables(the_folder=bench.folder,
                                     the_program=os.path.join(bench.programs, "varden"),
                                     the_new_address=moving.address(200)), "-v")
    counts = {name: counts[1:] for name, counts in run.recap.items()}
    wanted = {"sound-0001": (0, 0), "moving-0001": (0, 0), "cut-0001": (0, 0), "back-0001": (0, 0), "dead-0001": (1, 0)}
    if counts != wanted or run.code != 4:
        raise Wrong(f"ended with {run.code}:\n{run.text}")
    check_results(bench, run.text, os.path.join(os.path.dirname(os.path.abspath(__file__)), "modules.yml"))
    text = ""
    for name in ("rollout", "rollback"):
        text += bench.play("varden.printer." + name, sound.inventory(),
                           bench.variables(varden_rollout_settings={"feed-adj": -3}), "-v").text
    check_results(bench, text, *(f"{installed}/roles/{name}/tasks/main.yml" for name in ("rollout", "rollback")))
    kept = os.path.join(bench.folder, "kept")
    expect("kept files", sorted(os.listdir(kept)), ["a.dt1", "a.dt2", "a.json"])


def main():
    programs, collection, version = sys.argv[1:]
    try:
        with Bench(programs, collection, 1, 4) as bench:
            installed = install(bench, version)
            check_documentation(bench, installed)
            check_inventories(bench)
            check_names(bench)
            check_actions(bench, installed)
    except Wrong as error:
        print(error)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
