"""The status of many printers for Prometheus: what the script leaves, the units, the rules, the dashboard."""
import json
import pathlib
import re
import unittest

import yaml

from fleet import PROJECT, SCRIPTS, FleetTest, run_tests

# What a printer of the list may be asked for by rules and dashboards; the collector itself tells when a
# file was written.
OF_THE_COLLECTOR = {"node_textfile_mtime_seconds"}
WORDS = {"sum", "count", "by", "or", "vector", "time", "label_values", "and", "on"}


def metrics_of(expression):
    """The names of metrics in an expression: its words without texts, labels and functions."""
    bare = re.sub(r"\bby \([^)]*\)", "", re.sub(r"\{[^}]*\}", "", expression))
    bare = re.sub(r"^label_values\((\w+), \w+\)$", r"\1", bare)
    return set(re.findall(r"[a-z_]{2,}", bare)) - WORDS


def written_metrics():
    source = (PROJECT / "cli" / "MMetrics.cpp").read_text()
    return set(re.findall(r'"(varden_\w+)"', source))


class WatchTest(FleetTest):
    def setUp(self):
        super().setUp()
        self.metrics = self.folder / "metrics"
        self.metrics.mkdir()

    def watch(self, printers=None):
        return self.run_command(SCRIPTS / "watch-printers", str(printers or self.list), str(self.metrics), "8")

    def text_of(self, target):
        return (self.metrics / f"varden-hall@{re.sub('[:/]', '_', target)}.prom").read_text()

    def test_each_printer_has_a_file_with_its_status(self):
        targets = self.start(5, "--faulty", "2", "--status", "11").targets
        self.write_list(targets)
        self.assertEqual(self.watch().returncode, 0)
        self.assertEqual(len(list(self.metrics.iterdir())), 5)
        for number, target in enumerate(targets, 1):
            text = self.text_of(target)
            self.assertIn(f'varden_printer_reachable{{target="{target}"}} 1\n', text)
            code = 11 if number == 2 else 0
            self.assertIn(f'varden_printer_status_code{{target="{target}"}} {code}\n', text)
            self.assertRegex(text, r"varden_printer_status_seconds\{.*\} \d+\.\d+\n")

    def test_a_dead_printer_is_told_and_the_others_are_watched(self):
        targets = self.start(2).targets
        self.write_list([targets[0], "lan:127.0.0.1:1", targets[1]])
        self.assertEqual(self.watch().returncode, 0)
        self.assertIn('varden_printer_reachable{target="lan:127.0.0.1:1"} 0\n', self.text_of("lan:127.0.0.1:1"))
        for target in targets:
            self.assertIn(f'varden_printer_reachable{{target="{target}"}} 1\n', self.text_of(target))

    def test_of_a_printer_that_left_the_list_no_file_stays(self):
        targets = self.start(2).targets
        other = self.metrics / "varden-yard@lan_127.0.0.1_9.prom"
        other.write_text("another list's\n")
        self.write_list(targets)
        self.watch()
        self.write_list(targets[1:])
        self.watch()
        self.assertEqual(sorted(self.metrics.iterdir()),
                         sorted([other, self.metrics / f"varden-hall@{targets[1].replace(':', '_')}.prom"]))

    def test_a_list_leaves_those_alone_whose_names_begin_as_its_own(self):
        targets = self.start(2).targets
        self.write_list(targets[:1])
        other = self.folder / "hall-3.printers"
        other.write_text(targets[1] + "\n")
        self.assertEqual(self.watch(other).returncode, 0)
        kept = list(self.metrics.iterdir())
        self.assertEqual(self.watch().returncode, 0)
        self.assertEqual(len(kept), 1)
        self.assertLess(set(kept), set(self.metrics.iterdir()))

    def test_a_list_whose_name_has_the_sign_that_ends_names_of_lists_is_refused(self):
        wrong = self.folder / "hall@3.printers"
        wrong.write_text("lan:127.0.0.1:1\n")
        done = self.watch(wrong)
        self.assertEqual((done.returncode, list(self.metrics.iterdir())), (1, []))
        self.assertIn("hall@3", done.stderr)

    def test_a_list_without_printers_is_a_failure_and_takes_nothing_away(self):
        self.write_list(self.start(1).targets)
        self.watch()
        for spoil in (lambda: self.write_list([]), self.list.unlink):
            spoil()
            done = self.watch()
            self.assertEqual(done.returncode, 1)
            self.assertIn("No printers in", done.stderr)
            self.assertEqual(len(list(self.metrics.iterdir())), 1)

    def test_files_that_cannot_be_written_are_a_failure(self):
        self.write_list(self.start(1).targets)
        self.metrics.rmdir()
        done = self.watch()
        self.assertEqual(done.returncode, 1)
        self.assertIn("Not written", done.stderr)


class ShippedFilesTest(unittest.TestCase):
    def test_rules_and_dashboard_ask_for_nothing_else_than_what_is_written(self):
        known = written_metrics()
        self.assertEqual(len(known), 4, known)
        rules = yaml.safe_load((SCRIPTS / "varden-alerts.yml").read_text())
        asked = set()
        for rule in rules["groups"][0]["rules"]:
            self.assertTrue(rule["alert"] and rule["annotations"]["summary"])
            asked |= metrics_of(rule["expr"])
        self.assertEqual(asked - known, OF_THE_COLLECTOR)
        dashboard = json.loads((SCRIPTS / "varden-dashboard.json").read_text())
        expressions = [target["expr"] for panel in dashboard["panels"] for target in panel["targets"]]
        expressions += [each["query"] for each in dashboard["templating"]["list"] if each["type"] == "query"]
        self.assertEqual(set().union(*map(metrics_of, expressions)), known)

    def test_each_panel_has_its_place_and_its_number(self):
        panels = json.loads((SCRIPTS / "varden-dashboard.json").read_text())["panels"]
        self.assertEqual(len({panel["id"] for panel in panels}), len(panels))
        taken = set()
        for panel in panels:
            place = panel["gridPos"]
            cells = {(x, y) for x in range(place["x"], place["x"] + place["w"])
                     for y in range(place["y"], place["y"] + place["h"])}
            self.assertFalse(cells & taken, panel["title"])
            self.assertLessEqual(place["x"] + place["w"], 24)
            taken |= cells

    def test_the_alarm_is_about_every_code_that_is_an_error(self):
        rules = yaml.safe_load((SCRIPTS / "varden-alerts.yml").read_text())["groups"][0]["rules"]
        expression = next(rule["expr"] for rule in rules if rule["alert"] == "VardenPrinterInError")
        harmless = set(re.search(r'code!~"([^"]*)"', expression).group(1).split("|"))
        rows = re.findall(r'\{(NoTextCode|"\d\d"), "[^"]*"(, Error)?\}',
                          (PROJECT / "protocol" / "MStatus.cpp").read_text())
        self.assertGreater(len(rows), 20)
        self.assertEqual(harmless, {"40" if code == "NoTextCode" else code.strip('"')
                                    for code, error in rows if not error})

    def test_the_alarm_that_nobody_looks_is_about_our_files_with_and_without_their_folder(self):
        rules = yaml.safe_load((SCRIPTS / "varden-alerts.yml").read_text())["groups"][0]["rules"]
        expression = next(rule["expr"] for rule in rules if rule["alert"] == "VardenWatchStopped")
        # Prometheus holds a pattern against the whole of a label.
        pattern = re.compile(re.search(r'file=~"([^"]*)"', expression).group(1))
        ours = "varden-hall@lan_192.168.10.20.prom"
        for file in (ours, f"/var/lib/prometheus/node-exporter/{ours}"):
            self.assertTrue(pattern.fullmatch(file), file)
        for file in ("smartmon.prom", "/var/lib/prometheus/node-exporter/smartmon.prom", "no-varden-x.prom"):
            self.assertFalse(pattern.fullmatch(file), file)


class UnitsTest(FleetTest):
    def test_systemd_finds_nothing_wrong_with_the_units(self):
        units = self.folder / "units"
        units.mkdir()
        for unit in SCRIPTS.glob("varden-*@.*"):
            # The scripts are not installed where tests run.
            text = unit.read_text().replace("/usr/share/varden/fleet", str(SCRIPTS))
            text = text.replace("User=prometheus", "User=root").replace("Group=prometheus", "Group=root")
            (units / unit.name).write_text(text)
        names = [str(units / f"varden-{what}@hall.{kind}") for what in ("watch", "backup")
                 for kind in ("service", "timer")]
        self.assertEqual(len(list(units.iterdir())), len(names))
        done = self.run_command("systemd-analyze", "verify", "--man=no", *names)
        ours = [line for line in done.stderr.splitlines() if "varden" in line]
        self.assertEqual((done.returncode, ours), (0, []), done.stderr)

    def lines_of(self, unit):
        text = (SCRIPTS / unit).read_text().replace("%S", "/var/lib").replace("%i", "hall")
        return [line.split("=", 1) for line in text.splitlines() if "=" in line and line[0] not in "#["]

    def test_each_backup_has_a_folder_that_no_other_user_has(self):
        """systemd gives a unit's folders, and all below them, to the unit's user."""
        unit = self.lines_of("varden-backup@.service")
        self.assertIn(["DynamicUser", "yes"], unit)
        folders = [folder for key, value in unit if key == "StateDirectory" for folder in value.split()]
        self.assertEqual([pathlib.PurePath(folder).name for folder in folders], ["hall"])
        repository = dict(unit)["ExecStart"].split()[-1]
        self.assertEqual(repository, f"/var/lib/{folders[0]}")
        self.assertIn(["Environment", f"HOME={repository}"], unit)
        self.assertIn(f"`{repository.replace('hall', 'NAME')}`", (PROJECT / "docs" / "fleets.md").read_text())

    def test_a_thousand_printers_that_are_dead_do_not_outlast_the_watch(self):
        unit = dict(self.lines_of("varden-watch@.service"))
        at_once = int(unit["Environment"].removeprefix("AT_ONCE="))
        minutes = int(unit["TimeoutStartSec"].removesuffix("min"))
        limits = (PROJECT / "jobs" / "CPrinterLimits.h").read_text()
        longest = sum(float(re.search(rf"{name} = (\d+);", limits).group(1)) for name in ("m_dOpen", "m_dSend", "m_iReply"))
        self.assertLess(-(-1000 // at_once) * longest, minutes * 60)

    def test_so_many_are_asked_at_once_as_the_unit_or_the_administrator_says(self):
        unit = self.lines_of("varden-watch@.service")
        keys = [key for key, _ in unit]
        self.assertIn(["EnvironmentFile", "-/etc/default/varden-watch"], unit)
        self.assertLess(keys.index("Environment"), keys.index("EnvironmentFile"), "what comes later counts")
        self.write_list([f"lan:printer-{number}" for number in range(9)])
        (self.folder / "at-work").mkdir()
        (self.quick / "varden").write_text(
            f'#!/bin/sh\ncd "{self.folder}/at-work" && mkdir $$ && ls | wc -l >>../numbers\nsleep 1\nrmdir $$\n'
            '>"$4"\n')
        line = dict(unit)["ExecStart"].replace("/usr/share/varden/fleet", str(SCRIPTS))
        line = line.replace("/etc/varden/hall.printers", str(self.list)).replace(
            "/var/lib/prometheus/node-exporter", str(self.folder))
        done = self.run_command("sh", "-c", "AT_ONCE=3\n" + line)
        self.assertEqual(done.returncode, 0, done.stderr)
        numbers = [int(number) for number in (self.folder / "numbers").read_text().split()]
        self.assertEqual((len(numbers), max(numbers)), (9, 3))


if __name__ == "__main__":
    run_tests()
