"""The lines of docs/fleets.md, run as they stand there."""
import json

from fleet import FleetTest, recipe, run_tests

DEAD = "lan:127.0.0.1:1"


class RecipeTest(FleetTest):
    def setUp(self):
        super().setUp()
        self.targets = self.start(6, "--faulty", "3", "--status", "11").targets

    def list_printers(self, *more):
        self.write_list([*self.targets, *more])

    def run_recipe(self, name, *shell):
        return self.run_command(*(shell or ("sh",)), "-c", recipe(name))

    def json_of(self, name):
        return json.loads((self.folder / name).read_text())

    def check_reads(self, name):
        self.list_printers(DEAD)
        self.run_recipe(name)
        reads = {each["target"]: each for each in self.json_of("fleet.json")}
        self.assertEqual(set(reads), {*self.targets, DEAD})
        for target in self.targets:
            self.assertTrue(reads[target]["complete"], target)
            self.assertNotIn("error", reads[target])
        self.assertIn("cause", reads[DEAD]["error"])

    def test_parallel_joins_all_reads_into_one_file(self):
        self.check_reads("parallel")
        census = self.run_recipe("census").stdout
        self.assertRegex(census, r"^ +6 9600bps\n")
        dead = self.run_recipe("unreachable").stdout
        self.assertRegex(dead, f"^{DEAD}: .+\n$")

    def test_xargs_joins_all_reads_into_one_file(self):
        self.check_reads("xargs")

    def test_a_printer_that_left_the_list_or_has_no_name_of_a_file_is_read_by_xargs_as_the_list_says(self):
        self.list_printers()
        self.run_recipe("xargs")
        line = "com:/dev/no-such-line"
        self.write_list([*self.targets[1:], line])
        self.run_recipe("xargs")
        self.assertEqual({each["target"] for each in self.json_of("fleet.json")}, {*self.targets[1:], line})
        self.assertEqual(self.run_recipe("unreachable").stdout, f"{line}: There is no /dev/no-such-line\n")

    def test_the_table_of_statuses_has_a_line_for_each_printer(self):
        usb = "usb:no-such-number"
        self.list_printers(DEAD, usb)
        rows = dict(line.split("\t", 1) for line in self.run_recipe("status").stdout.splitlines())
        self.assertEqual(set(rows), {*self.targets, DEAD, usb})
        self.assertRegex(rows[usb], r"^\t\w")
        self.assertEqual(rows[self.targets[0]], "00\tON LINE")
        self.assertEqual(rows[self.targets[2]], "11\tPaper JAM")

    def test_a_setting_goes_to_all_and_the_second_time_nothing_does(self):
        self.targets = self.start(3).targets
        self.list_printers()
        self.run_recipe("write")
        self.assertEqual([each["end"] for each in self.json_of("would.json")], ["would-change"] * 3)
        self.assertEqual([each["end"] for each in self.json_of("changed.json")], ["changed"] * 3)
        self.run_recipe("write")
        self.assertEqual([each["end"] for each in self.json_of("would.json")], ["unchanged"] * 3)
        self.assertEqual(self.json_of("changed.json"), [], "the log of what was done leaves nothing")

    def fail_in_the_middle(self, target):
        """The first change of this printer fails, and just when another one is in the middle of its own."""
        varden = self.quick / "varden"
        first, rest = varden.read_text().split("\n", 1)
        journals = self.folder / ".local" / "state" / "varden"
        varden.write_text(
            f'{first}\ncase "$*" in\n*--check*) ;;\n"write {target} "*)\n'
            f'    if mkdir "{self.folder}/failed" 2>/dev/null; then\n'
            f'        until ls "{journals}"/*.json >/dev/null 2>&1; do sleep 0.05; done\n'
            f'        shift 2\n        set -- write {DEAD} "$@"\n    fi ;;\nesac\n{rest}')

    def test_a_printer_that_fails_stops_the_line_and_leaves_none_in_the_middle_of_its_change(self):
        self.targets = self.start(12, "--delay", "200").targets
        self.list_printers()
        self.fail_in_the_middle(self.targets[9])
        done = self.run_recipe("write", "bash", "-o", "pipefail")
        self.assertNotEqual(done.returncode, 0)
        listed = self.run_command("varden", "recover", "--json")
        self.assertEqual(json.loads(listed.stdout)["journals"], [])
        ends = [each["end"] for each in self.json_of("changed.json")]
        self.assertEqual(sorted(ends), ["changed"] * 9 + ["not-begun"], "the last two are not begun any more")

        done = self.run_recipe("write", "bash", "-o", "pipefail")
        self.assertEqual(done.returncode, 0, done.stderr)
        left = {each["target"]: each["end"] for each in self.json_of("changed.json")}
        self.assertEqual(left, dict.fromkeys(self.targets[9:], "changed"))


if __name__ == "__main__":
    run_tests()
