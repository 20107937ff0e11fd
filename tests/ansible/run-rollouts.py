#!/usr/bin/env python3
"""Rollouts over simulated printers, with the real Ansible and the real program: what each printer
holds, and what it was sent, is asked of the printers themselves.

  run-rollouts.py PROGRAMS COLLECTION [--printers N] [--forks N] [TEST...]
"""

import argparse
import inspect
import json
import os
import signal
import subprocess
import sys
import time

sys.dont_write_bytecode = True  # among the sources

# pylint: disable=wrong-import-position
from fleet import PORT, Bench, Run, Wrong, expect, wait_for

ROLLOUT, ROLLBACK = "varden.printer.rollout", "varden.printer.rollback"
# zero-code travels in a command of its own with the stop bit, feed-adj in another.
WANTED = {"feed-adj": -1.5, "zero-code": "WITH SLASH"}
ASKED = {"FeedDirection": "-", "FeedAdjustment": "015", "ZeroStyle": "1"}
CHANGES = "feed-adj: 0.0 -> -1.5; zero-code: NO SLASH -> WITH SLASH"
HEADS = ["{Z2;1,", "{Z2;2,"]


def variables(bench, **more):
    return bench.variables(varden_rollout_settings=WANTED, varden_rollout_stop_bit_is="1bit", **more)


def heads(commands):
    return sorted(command[:len(HEADS[0])] for command in commands)


def ends_with(run, code):
    if run.code != code:
        raise Wrong(f"exit code {run.code} in place of {code}:\n{run.text}")


def expect_asked(fleet, before, names=None):
    """Those printers hold what was asked and nothing else is different; the others are as before."""
    held = fleet.held()
    for name in fleet.names:
        more = ASKED if names is None or name in names else {}
        expect(name, held[name], dict(before[name], **more))


def expect_sent_once(fleet, names=None):
    for name, commands in fleet.sent().items():
        expect(f"commands to {name}", heads(commands), HEADS if names is None or name in names else [])


def test_changes(bench):
    """A look changes nothing, a run what is asked, a second one nothing; and back again."""
    fleet = bench.printers("sound", bench.number)
    hosts, before = fleet.inventory(), fleet.held()

    run = bench.play(ROLLOUT, hosts, variables(bench), "--check", "--diff")
    ends_with(run, 0)
    expect("after a look", fleet.held(), before)
    expect("sent by a look", sum(fleet.sent().values(), []), [])
    expect("summary of a look", run.results(check=True), {"would-change": fleet.names})
    expect("differences", run.text.count("-feed-adj: 0.0\n-zero-code: NO SLASH\n"
                                         "+feed-adj: -1.5\n+zero-code: WITH SLASH\n"), bench.number)
    expect("a look's files", sorted(os.listdir(bench.rollout)), ["check"])

    run = bench.play(ROLLOUT, hosts, variables(bench))
    ends_with(run, 0)
    expect_asked(fleet, before)
    expect_sent_once(fleet)
    expect("recap", run.recap, {name: (1, 0, 0) for name in fleet.names})
    expect("summary", run.results(), {"changed": fleet.names})
    expect("lines", sum(f'{name}: changed: {CHANGES}"' in run.text for name in fleet.names), bench.number)
    with open(os.path.join(bench.rollout, "summary.html"), encoding="utf-8") as file:
        page = file.read()
    expect("rows", page.count('<tr class="changed">'), bench.number)

    run = bench.play(ROLLOUT, hosts, variables(bench))
    expect("second recap", run.recap, {name: (0, 0, 0) for name in fleet.names})
    expect("second summary", run.results(), {"unchanged": fleet.names})
    expect("days of the change", all(row["changed_at"] for row in run.summary().values()), True)
    expect_sent_once(fleet)

    run = bench.play(ROLLBACK, hosts, variables(bench), "--check", "--limit", "printers[0:9]")
    expect("printers that would be taken back", run.changed(), fleet.names[:10])
    expect_asked(fleet, before)
    run = bench.play(ROLLBACK, hosts, variables(bench))
    expect("recap of the way back", run.recap, {name: (1, 0, 0) for name in fleet.names})
    expect("taken back", fleet.held(), before)
    expect("summary of the way back", run.results(), {"taken-back": fleet.names})
    # And there again: what was changed is told anew.
    run = bench.play(ROLLOUT, dict(list(hosts.items())[:2]), variables(bench))
    expect("changes", [row["settings"] for row in run.summary().values()][:2], [CHANGES] * 2)


def set_by_hand(bench, fleet, index, *words):
    bench.tool(os.path.join(bench.programs, "varden"), "write", f"lan:{fleet.address(index)}:{PORT}", *words,
               "--pause=0", "--state=" + bench.state)


def test_people(bench):
    """What people set on printers that the rollout has not changed, the way back leaves alone."""
    fleet = bench.printers("some", 3, "--faulty", "3", "--refuse", "{Z2")
    hosts = fleet.inventory()
    sound = {name: hosts[name] for name in fleet.names[:2]}
    set_by_hand(bench, fleet, 0, "feed-adj=-1.5")
    asked = bench.variables(varden_rollout_settings={"feed-adj": -1.5, "cut-adj": 1.0})

    # A file with a value that no printer takes: nothing is sent, nothing touched.
    with open(bench.folder + "/wrong.json", "w", encoding="utf-8") as file:
        json.dump({"varden": 1, "settings": {"feed-adj": 99}}, file)
    run = bench.play(ROLLOUT, sound, bench.variables(varden_rollout_file=bench.folder + "/wrong.json"))
    ends_with(run, 2)
    set_by_hand(bench, fleet, 0, "back-adj=2")
    mine = fleet.held()
    run = bench.play(ROLLBACK, sound, asked)
    ends_with(run, 0)
    expect("after a wrong file", run.results(), {"not-touched": fleet.names[:2]})
    expect("set by hand", fleet.held(), mine)

    # One printer has half of it already, one refuses: of these the way back takes what was changed.
    run = bench.play(ROLLOUT, hosts, asked)
    expect("summary", run.results(), {"changed": fleet.names[:2], "failed": fleet.names[2:]})
    for index in (0, 1):
        set_by_hand(bench, fleet, index, "feed-adj=0.7")
    run = bench.play(ROLLBACK, hosts, asked)
    ends_with(run, 0)
    expect("summary of the way back", run.results(), {"taken-back": fleet.names[:2], "not-touched": fleet.names[2:]})
    expect("settings", [run.summary()[name]["settings"] for name in fleet.names[:2]],
           ["cut-adj: 1.0 -> 0.0", "feed-adj: 0.7 -> 0.0; cut-adj: 1.0 -> 0.0"])

    # As wanted already, and set by hand afterwards.
    asked = bench.variables(varden_rollout_settings={"back-adj": 2})
    ends_with(bench.play(ROLLOUT, {fleet.names[0]: hosts[fleet.names[0]]}, asked), 0)
    set_by_hand(bench, fleet, 0, "back-adj=3")
    mine = fleet.held()
    run = bench.play(ROLLBACK, {fleet.names[0]: hosts[fleet.names[0]]}, asked)
    expect("summary of the way back", run.results()["not-touched"][:1], fleet.names[:1])
    expect("set by hand", fleet.held(), mine)


def test_names(bench):
    """A printer that has two names stops a rollout, and is not changed under the second."""
    fleet = bench.printers("some", 3)
    hosts, before = fleet.inventory(), fleet.held()
    bench.forks = 1  # the second name is the one that comes too late
    twice = dict(hosts, **{"zz-again": {"varden_target": f"lan:{fleet.address(0)}:{PORT}"}})
    for parts, share in ((["100%"], 0), ([1, "100%"], 1)):
        asked = variables(bench, varden_rollout_serial=parts)
        for more in (("--check",), ()):
            run = bench.play(ROLLOUT, twice, asked, *more)
            ends_with(run, 2)
            expect("cause", "is the printer some-0001 already" in
                   run.summary(check=bool(more))["zz-again"]["message"], True)
        expect_asked(fleet, before, fleet.names[:share])
    # Nor in a run of its own, once it is changed.
    ends_with(bench.play(ROLLOUT, {"zz-again": twice["zz-again"]}, variables(bench)), 2)
    run = bench.play(ROLLBACK, twice, variables(bench))
    expect("taken back", fleet.held(), before)
    # Then it may have another name.
    ends_with(bench.play(ROLLOUT, {"zz-again": twice["zz-again"]}, variables(bench)), 0)
    expect_asked(fleet, before, fleet.names[:1])


def bytes_to_first_change(bench):
    """How much a sound printer has received when half of the first command that changes it is there."""
    fleet = bench.printers("probe", 1)
    bench.play(ROLLOUT, fleet.inventory(), variables(bench, varden_rollout_folder=bench.folder + "/probe"))
    number = 0
    for command, _ in fleet.received()[fleet.names[0]]:
        if command.startswith("{Z2"):
            return number + len(command) // 2
        number += len(command)
    raise Wrong("a printer was not changed")


def test_faults(bench):
    """Faulty printers among many: exactly these are named, and nothing is wrong with any other."""
    some, few = min(max(bench.number // 20, 1), 10), min(max(bench.number // 40, 1), 5)
    sound = bench.printers("sound", bench.number - 2 * some - few)
    refusing = bench.printers("refusing", some, "--refuse", "{Z2")
    cut = bench.printers("cut", few, "--power-cut", str(bytes_to_first_change(bench)),
                         "--power-back", "never")
    dead = bench.printers("dead", 0)
    dead.names = [f"dead-{each + 1:04}" for each in range(some)]
    hosts = {}
    for fleet in (sound, refusing, dead, cut):
        hosts.update(fleet.inventory())
    before = {fleet: fleet.held() for fleet in (sound, refusing, cut)}

    run = bench.play(ROLLOUT, hosts, variables(bench, varden_rollout_faults_allowed=bench.number))
    expect("exit code is none", run.code == 0, False)
    expect("summary", run.results(), {"changed": sound.names, "failed": refusing.names,
                                      "unreachable": dead.names, "person-needed": cut.names})
    expect("recap", run.recap, {
        **{name: (1, 0, 0) for name in sound.names},
        **{name: (0, 0, 1) for name in refusing.names + cut.names},
        **{name: (0, 1, 0) for name in dead.names}})
    expect_asked(sound, before[sound])
    expect_asked(refusing, before[refusing], [])
    expect_asked(cut, before[cut], [])
    expect_sent_once(sound)
    for name in cut.names:
        row = run.summary()[name]
        expect(f"journal of {name}", os.path.dirname(row["journal"]), bench.state)
        expect(f"{name} is there", os.path.isfile(row["journal"]), True)
        expect("what is told", f"a person is needed: the journal is {row['journal']}" in row["message"], True)

    run = bench.play(ROLLOUT, hosts, variables(bench, varden_rollout_faults_allowed=bench.number))
    expect("changed by a second run", run.changed(), [])
    expect("sound ones afterwards", run.results()["unchanged"], sound.names)
    # A run for one of them leaves the rows of the others as they are, and counts its own faults.
    rows = run.summary()
    run = bench.play(ROLLOUT, hosts, variables(bench), "--limit", sound.names[0])
    ends_with(run, 0)
    expect("rows of the others", dict(run.summary(), **{sound.names[0]: rows[sound.names[0]]}), rows)
    expect_sent_once(sound)


def test_stops(bench):
    """The first failed or unreachable printer stops a rollout, in each of its three parts."""
    share = max(bench.number // 10, 2)
    fleet = bench.printers("some", bench.number, "--faulty", str(share + 1), "--refuse", "{Z2")
    before, hosts = fleet.held(), fleet.inventory()
    canary, second, rest = fleet.names[:1], fleet.names[1:share + 1], fleet.names[share + 1:]
    bad = fleet.names[share]
    parts = variables(bench, varden_rollout_serial=[1, share, "100%"])

    # Nobody at the canary's address.
    away = dict(hosts, **{canary[0]: {"varden_target": "lan:127.63.255.254:1"}})
    run = bench.play(ROLLOUT, away, parts)
    ends_with(run, 4)
    expect("summary", run.results(), {"unreachable": canary, "not-begun": fleet.names[1:]})
    expect("asked", [name for name, commands in fleet.received().items() if commands], [])

    # One of the share is not there: none of the share is changed. One that is ruled out is not asked.
    run = bench.play(ROLLOUT, dict(hosts, **{bad: {"varden_target": "lan:127.63.255.254:1"}}), parts)
    ends_with(run, 4)
    expect("summary", run.results(), {"changed": canary, "unreachable": [bad],
                                      "not-begun": [each for each in fleet.names[1:] if each != bad]})
    expect_sent_once(fleet, canary)
    expect("asked", sorted(name for name, commands in fleet.received().items() if commands),
           fleet.names[:share])

    # One of the share refuses, and is the last of it: the rest is not even asked.
    run = bench.play(ROLLOUT, hosts, parts)
    ends_with(run, 2)
    expect("summary", run.results(), {"unchanged": canary, "changed": second[:-1], "failed": [bad],
                                      "not-begun": rest})
    expect_asked(fleet, before, fleet.names[:share])
    expect("asked", sorted(name for name, commands in fleet.received().items() if commands),
           fleet.names[:share + 1])

    # Within a part nothing is begun behind the fault, but for what is under way.
    bench.forks = 1
    one = dict(parts, varden_rollout_serial=[1, "100%"])
    order = dict((name, hosts[name]) for name in canary + [bad] + second[:-1] + rest)
    run = bench.play(ROLLOUT, order, one)
    ends_with(run, 2)
    expect_asked(fleet, before, fleet.names[:share])
    expect("printers that were not begun", run.results()["not-begun"], second[:-1] + rest)


def test_lost(bench):
    """Printers that fail outside of what is done to them are faults like others: one is without a variable."""
    fleet = bench.printers("some", max(min(bench.number, 10), 7))
    before, names = fleet.held(), fleet.names
    asked = bench.variables(varden_rollout_settings={"feed-adj": "{{ feed }}"}, varden_rollout_serial=[1, 2, "100%"])

    def hosts(without, **instead):
        return {name: dict(each, **(instead if name == without else {"feed": "1.0"}))
                for name, each in fleet.inventory().items()}

    # The canary: of its batch nobody is left.
    run = bench.play(ROLLOUT, hosts(names[0]), asked)
    ends_with(run, 2)
    expect("summary", run.results(), {"failed": names[:1], "not-begun": names[1:]})
    # Of the second batch: of that nothing is changed.
    run = bench.play(ROLLOUT, hosts(names[2]), asked)
    ends_with(run, 2)
    expect("summary", run.results(), {"changed": names[:1], "failed": [names[2]],
                                      "not-begun": [names[1]] + names[3:]})
    expect("told", "what Ansible has printed" in run.summary()[names[2]]["message"], True)
    # What the step itself cannot do is told by it; the change fails where the word is no word.
    for instead, begun in (({"varden_target": "lan:\0", "feed": 1.0}, []), ({"feed": "\0"}, names[1:2])):
        bench.forks = 1
        run = bench.play(ROLLOUT, hosts(names[2], **instead), asked)
        ends_with(run, 2)
        rest = [name for name in names[1:] if name not in [names[2]] + begun]
        expect("summary", {result: each for result, each in run.results().items() if result != "changed"},
               {"unchanged": names[:1], "failed": [names[2]], "not-begun": rest})
        expect("cause", "Cannot run" in run.summary()[names[2]]["message"], True)
    held = fleet.held()
    expect("changed", [name for name in names if held[name] != before[name]], names[:2])
    # A task of one's own in front of the role; nobody of its batch is begun, and the play has failed.
    play = [{"hosts": "printers", "gather_facts": False, "serial": [1, "100%"], "roles": ["varden.printer.rollout"],
             "pre_tasks": [{"ansible.builtin.fail": {}, "when": "inventory_hostname == '%s'" % names[3]}]}]
    with open(bench.folder + "/own.yml", "w", encoding="utf-8") as file:
        json.dump(play, file)
    run = bench.play(bench.folder + "/own.yml", hosts(""), asked)
    ends_with(run, 2)
    expect("summary", run.results(), {"unchanged": names[:1], "failed": names[3:4],
                                      "not-begun": names[1:3] + names[4:]})
    expect("changed by nobody since", fleet.held(), held)


def test_records(bench):
    """A record that cannot be read is a fault of its printer, and stays for a person to see."""
    fleet = bench.printers("some", 3)
    before, bad = fleet.held(), fleet.names[1]
    path = os.path.join(bench.rollout, "records", bad + ".json")
    os.makedirs(os.path.dirname(path))
    for text in ("", "[]"):
        with open(path, "w", encoding="utf-8") as file:
            file.write(text)
        for playbook in (ROLLOUT, ROLLBACK):
            run = bench.play(playbook, fleet.inventory(), variables(bench, varden_rollout_serial=["100%"]))
            ends_with(run, 2)
            expect("failed", run.results()["failed"], [bad])
            expect("cause", run.summary()[bad]["message"].startswith(path + " is no record"), True)
            with open(path, encoding="utf-8") as file:
                expect("record", file.read(), text)
    expect_asked(fleet, before, [])


def test_details(bench):
    """Names of printers that are formulas, host names that are others, backups that are gone."""
    fleet = bench.printers("some", 2)
    hosts = {"=some": fleet.inventory()[fleet.names[0]], "@some": fleet.inventory()[fleet.names[1]]}
    run = bench.play(ROLLOUT, hosts, variables(bench, varden_rollout_expect_host="another"))
    ends_with(run, 2)
    expect("names", list(run.summary()), ["'=some", "'@some"])
    expect("results", run.results(), {"failed": ["'=some"], "not-begun": ["'@some"]})
    expect("cause", "another" in run.summary()["'=some"]["message"], True)
    left = [os.path.join(bench.rollout, each) for each in ("backups/.varden-old", "records/.old", "records/.new")]
    os.makedirs(left[0] + "/read")
    for path in left[1:]:
        with open(path, "w", encoding="utf-8"):
            pass
    for path in left[:2]:
        os.utime(path, (0, 0))
    ends_with(bench.play(ROLLOUT, hosts, variables(bench)), 0)
    expect("left by killed tasks", [os.path.exists(path) for path in left], [False, False, True])
    os.unlink(os.path.join(bench.rollout, "backups", "%3Dsome.json"))
    for more in ((), ("--check",)):
        run = bench.play(ROLLOUT, hosts, variables(bench), *more)
        ends_with(run, 2)
        expect("cause", "its backup is gone" in run.text, True)
    expect("backups", os.listdir(os.path.join(bench.rollout, "backups")), ["%40some.json"])


def test_timeout(bench):
    """Ansible's own limit ends a task in the middle of a change: a person is needed, as far as is known."""
    fleet = bench.printers("cut", 2, "--power-cut", str(bytes_to_first_change(bench)), "--power-back", "never")
    bench.environment["ANSIBLE_TASK_TIMEOUT"] = "10"
    run = bench.play(ROLLOUT, fleet.inventory(), variables(bench, varden_reach=20))
    ends_with(run, 2)
    expect("summary", run.results(), {"person-needed": fleet.names[:1], "not-begun": fleet.names[1:]})
    expect("way out", "varden recover" in run.summary()[fleet.names[0]]["message"], True)
    wait_for(lambda: not bench.varden_processes(), "the end of what was under way")


def test_places(bench):
    """Unless told, the collection's playbooks keep a rollout where the command is given, others beside themselves."""
    fleet = bench.printers("some", 1)
    asked = variables(bench, varden_rollout_name="autumn")
    del asked["varden_rollout_folder"]
    here, mine = os.path.join(bench.folder, "here"), os.path.join(bench.folder, "mine")
    for place in (here, mine):
        os.mkdir(place)
    with open(os.path.join(mine, "play.yml"), "w", encoding="utf-8") as file:
        json.dump([{"hosts": "printers", "gather_facts": False, "roles": ["varden.printer.rollout"]}], file)
    bench.environment["PWD"] = here
    for playbook, place in ((ROLLOUT, here), (os.path.join(mine, "play.yml"), mine)):
        bench.play(playbook, fleet.inventory(), asked)
        expect(f"summary of {playbook}", os.path.isfile(place + "/rollouts/autumn/summary.csv"), True)
    asked.update(varden_rollout_folder="kept", varden_state_folder="journals")
    bench.play(os.path.join(mine, "play.yml"), fleet.inventory(), asked)
    expect("beside the playbook", sorted(os.listdir(mine)), ["journals", "kept", "play.yml", "rollouts"])
    asked.update(varden_rollout_folder=here + "/rollouts/autumn")
    bench.play(ROLLBACK, fleet.inventory(), asked)
    with open(here + "/rollouts/autumn/summary.html", encoding="utf-8") as file:
        expect("title", "autumn taken back" in file.read(), True)
    expect("kept in the collection", os.path.exists(os.path.join(bench.source, "playbooks", "rollouts")), False)


def test_moves(bench):
    """Printers that are sent to other addresses are found there by the runs after that, and brought back."""
    fleet = bench.printers("moving", min(bench.number, 5), "--moves", "at-once")
    hosts, before = fleet.inventory(), fleet.held()
    places = {name: fleet.address(100 + index) for index, name in enumerate(fleet.names)}
    for name, place in places.items():
        hosts[name]["new_address"] = place
    asked = bench.variables(varden_rollout_settings={"ip-address": "{{ new_address }}"},
                            varden_rollout_allow_link_change=True)

    run = bench.play(ROLLOUT, hosts, asked)
    ends_with(run, 0)
    expect("summary", run.results(), {"changed": fleet.names})
    held = fleet.held()
    differing = {name: {key: value for key, value in held[name].items() if before[name][key] != value}
                 for name in fleet.names}
    expect("what they hold now", differing, {name: {"IpAddress4": place.split(".")[3]} for name, place in places.items()})
    run = bench.play(ROLLOUT, hosts, asked)
    ends_with(run, 0)
    expect("second recap", run.recap, {name: (0, 0, 0) for name in fleet.names})
    expect("commands", [len(commands) for commands in fleet.sent().values()], [1] * len(fleet.names))
    run = bench.play(ROLLBACK, hosts, asked)
    ends_with(run, 0)
    expect("summary of the way back", run.results(), {"taken-back": fleet.names})
    expect("taken back", fleet.held(), before)


def test_cached(bench):
    """Facts that are kept lead to a printer that has moved, until the inventory says something else."""
    bench.environment.update(ANSIBLE_CACHE_PLUGIN="jsonfile", ANSIBLE_CACHE_PLUGIN_CONNECTION=bench.folder + "/facts")
    fleet, other = bench.printers("moving", 1, "--moves", "at-once"), bench.printers("other", 1)
    name, hosts = fleet.names[0], fleet.inventory()
    asked = bench.variables(varden_rollout_settings={"ip-address": fleet.address(100)},
                            varden_rollout_allow_link_change=True)
    ends_with(bench.play(ROLLOUT, hosts, asked), 0)

    def asked_at(host, *options):
        words = bench.command("", {name: host}, bench.variables())
        said = bench.tool("ansible", *words[1:3], name, *words[-2:], "-m", "varden.printer.status", *options)
        return json.loads(said[said.index("{"):])["target"]

    there = f"lan:{other.address(0)}:{PORT}"
    expect("as it was named", asked_at(hosts[name]), f"lan:{fleet.address(100)}:{PORT}")
    expect("named by the task", asked_at(hosts[name], "-a", "target=" + there), there)
    expect("another inventory", asked_at({"varden_target": there}), there)


def kill_in_the_middle(bench, hosts, fleet, number, also_varden):
    """Ends a rollout by force when so many printers were sent something, and what it leaves running."""
    process = subprocess.Popen(  # pylint: disable=consider-using-with
        bench.command(ROLLOUT, hosts, variables(bench)), env=bench.environment,
        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, stdin=subprocess.DEVNULL,
        start_new_session=True)
    wait_for(lambda: sum(bool(commands) for commands in fleet.sent().values()) >= number
             or process.poll() is not None, "the middle of the rollout")
    expect("the rollout has ended", process.poll(), None)
    os.killpg(process.pid, signal.SIGKILL)
    process.wait()
    if also_varden:
        for pid in bench.varden_processes():
            os.kill(pid, signal.SIGKILL)
    wait_for(lambda: not bench.varden_processes(), "the end of what was under way")


def test_interrupted(bench):
    """Only varden itself is ended in the middle of a change: a person is told, and the next run goes on."""
    fleet = bench.printers("slow", 2, "--delay", "200")
    before = fleet.held()
    for name, number, code in ((fleet.names[0], signal.SIGKILL, -9), (fleet.names[1], signal.SIGINT, 130)):
        host = {name: fleet.inventory()[name]}
        process = subprocess.Popen(  # pylint: disable=consider-using-with
            bench.command(ROLLOUT, host, variables(bench)), env=bench.environment, stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        wait_for(lambda printer=name: fleet.sent()[printer], "the middle of a change")
        for pid in bench.varden_processes():
            os.kill(pid, number)
        text = process.communicate()[0].decode()
        expect("exit code", process.returncode, 2)
        expect("exit code of varden", f'"exit_code": {code}' in text, True)
        run = Run(process.returncode, text, bench.rollout)
        expect("result", run.summary()[name]["result"], "person-needed")
        expect("what is told", "a person is needed: " in run.summary()[name]["message"], True)
    run = bench.play(ROLLOUT, fleet.inventory(), variables(bench))
    ends_with(run, 0)
    expect_asked(fleet, before)
    ends_with(bench.play(ROLLBACK, fleet.inventory(), variables(bench)), 0)
    expect("taken back", fleet.held(), before)


def ends_well(bench, fleet, before):
    done = sum(bool(commands) for commands in fleet.sent().values())
    expect("it was stopped in the middle", 0 < done < bench.number, True)
    run = bench.play(ROLLOUT, fleet.inventory(), variables(bench))
    ends_with(run, 0)
    expect_asked(fleet, before)
    expect_sent_once(fleet)
    expect("all of them", sorted(sum((run.results().get(each, []) for each in ("changed", "unchanged")), [])),
           fleet.names)
    # Also of those of which the first run could tell nobody any more.
    told = {tuple(sorted(row["settings"].split("; "))) for row in run.summary().values()}
    expect("changes", told, {tuple(sorted(CHANGES.split("; ")))})
    expect("days of the change", all(row["changed_at"] for row in run.summary().values()), True)


def test_killed(bench):
    """The controller is killed in the middle of a rollout: the next one does what is left, and no more."""
    fleet = bench.printers("slow", bench.number, "--delay", str(max(1000 // bench.number, 5)))
    before = fleet.held()
    kill_in_the_middle(bench, fleet.inventory(), fleet, bench.number // 2, False)
    expect("journals that stand", [name for name in os.listdir(bench.state) if name.endswith(".json")], [])
    ends_well(bench, fleet, before)


def test_power(bench):
    """Everything is killed, as when the controller loses its power: half of a change is there."""
    fleet = bench.printers("slow", bench.number, "--delay", "100")
    before = fleet.held()
    kill_in_the_middle(bench, fleet.inventory(), fleet, 2, True)
    journals = [name for name in os.listdir(bench.state) if name.endswith(".json")]
    expect("a change was cut off", len(journals) > 0, True)
    ends_well(bench, fleet, before)
    # Also those of which the first run could tell nobody any more.
    run = bench.play(ROLLBACK, fleet.inventory(), variables(bench))
    expect("exit code of the way back", run.code, 0)
    expect("taken back", fleet.held(), before)


TESTS = {name[5:]: function for name, function in list(globals().items())
         if name.startswith("test_") and inspect.isfunction(function)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("programs", help="the folder of varden and varden-printer-simulator")
    parser.add_argument("collection", help="the folder of the collection")
    parser.add_argument("tests", nargs="*", metavar="TEST", help=", ".join(TESTS))
    parser.add_argument("--printers", type=int, default=20)
    parser.add_argument("--forks", type=int, default=10)
    options = parser.parse_intermixed_args()
    wrong = 0
    for name in options.tests or TESTS:
        start = time.monotonic()
        try:
            with Bench(options.programs, options.collection, options.printers, options.forks) as bench:
                TESTS[name](bench)
            state = "passed"
        except Wrong as error:
            wrong, state = wrong + 1, f"FAILED: {error}"
        print(f"{name}, {options.printers} printers, {time.monotonic() - start:.1f} s: {state}", flush=True)
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
