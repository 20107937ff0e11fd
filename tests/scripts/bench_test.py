#!/usr/bin/env python3
"""Holds the measuring commands to their words without measuring anything: spread, ratio, what is a regression,
the exit codes, the tables of the page, what is read of other programs' reports.

  bench_test.py SOURCE-TREE
"""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True  # among the sources
TREE = pathlib.Path(sys.argv.pop(1))
sys.path.insert(0, str(TREE / "bench"))

# pylint: disable=wrong-import-position
import figures
import page
import programs
from figures import Figure, Ratio


def around(middle, width=0.01, count=30):
    """Values like those of a run: a spread of a hundredth around the middle."""
    return [middle * (1 + width * ((number * 7 % count) / count - 0.5)) for number in range(count)]


class FiguresTest(unittest.TestCase):
    def test_spread(self):
        figure = Figure([5, 1, 3, 2, 4], "ms")
        self.assertEqual((figure.median, figure.quantile(0), figure.quantile(1)), (3, 1, 5))
        self.assertEqual(Figure([1, 2], "ms").median, 1.5)
        self.assertEqual(Figure([0, 10], "ms").quantile(0.1), 1)
        self.assertIn("of 5", figure.spread())
        with self.assertRaises(ValueError):
            Figure([], "ms")

    def test_json_there_and_back(self):
        figure = Figure([1, 2], "ms", 0.5)
        again = Figure.from_json(json.loads(json.dumps(figure.to_json())))
        self.assertEqual(vars(again), vars(figure))

    def test_ratio(self):
        ratio = Ratio(Figure(around(12), "ms"), Figure(around(10), "ms"))
        self.assertAlmostEqual(ratio.value, 1.2, places=3)
        self.assertLess(ratio.low, ratio.value)
        self.assertGreater(ratio.high, ratio.value)
        self.assertEqual(Ratio(Figure([0], "%"), Figure([0], "%")).value, 1)

    def test_what_is_a_regression(self):
        old = Figure(around(10), "ms", 0.5)
        self.assertTrue(Ratio(Figure(around(12.5), "ms"), old).is_regression())
        self.assertFalse(Ratio(Figure(around(11.9), "ms"), old).is_regression())
        self.assertFalse(Ratio(Figure(around(8), "ms"), old).is_regression())
        self.assertTrue(Ratio(Figure(around(11.2), "ms"), old).is_regression(1.1))

    def test_noise_is_no_regression(self):
        wild = Figure([10, 10, 10, 13, 90, 95, 99], "ms")
        self.assertGreater(Ratio(wild, Figure([1, 9, 10, 11, 60, 70, 80], "ms")).value, 1.0)
        self.assertFalse(Ratio(wild, Figure([1, 9, 10, 10.5, 60, 70, 80], "ms")).is_regression())

    def test_a_difference_that_means_nothing_is_no_regression(self):
        self.assertFalse(Ratio(Figure(around(0.02), "%"), Figure(around(0.01), "%", 0.2)).is_regression())

    def test_numbers_for_people(self):
        self.assertEqual([figures.shown(value) for value in (0, 0.0001, 0.1234, 1.234, 12.34, 123.4)],
                         ["0", "0", "0.123", "1.23", "12.3", "123"])

    def test_table(self):
        self.assertEqual(figures.table(["a", "long"], [["wide", 1]]),
                         ["| a    | long |", "|------|------|", "| wide | 1    |"])


class ReportsTest(unittest.TestCase):
    def test_links(self):
        found = programs.links_from('{"read": [1.5, 2], "idle": [0]}')
        self.assertEqual(found["READ beyond its pauses"].values, [1.5, 2])
        self.assertEqual(found["idle, processor"].unit, "%")

    def test_rooms(self):
        found = programs.rooms_from(json.dumps({"benchmarks": [
            {"run_name": "A", "run_type": "iteration", "cpu_time": 2000},
            {"run_name": "A", "run_type": "iteration", "cpu_time": 4000},
            {"run_name": "A", "run_type": "aggregate", "cpu_time": 1}]}))
        self.assertEqual(found["rooms: A"].values, [2, 4])

    def test_a_program_that_fails_is_no_figure(self):
        with self.assertRaises(RuntimeError):
            programs.run_once(["false"])
        wall, processor, text = programs.run_once(["echo", "word"])
        self.assertEqual(text, "word\n")
        self.assertGreater(wall, 0)
        self.assertGreaterEqual(processor, 0)


def measured(tool):
    values = {"window: tool, processor": around(tool), "window: plain, processor": around(100),
              "idle, processor": [0], "READ beyond its pauses": [7]}
    controls = {"lists": 1, "spin_boxes": 2, "labels": 3, "buttons": 4, "tabs": 1}
    return {"commit": "0123456789ab", "machine": "1 processor", "load": ["0.0", "1.0"],
            "controls": {"tool": controls, "plain": dict(controls)},
            "figures": {name: Figure(of_it, "ms").to_json() for name, of_it in values.items()}}


class CommandsTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.file = pathlib.Path(folder.name) / "kept"
        self.page = pathlib.Path(folder.name) / "page.md"

    def run_command(self, name, data, *words):
        self.file.write_text(json.dumps(data))
        return subprocess.run([TREE / "bench" / name, "--from", self.file, *words], capture_output=True,
                              text=True, check=False)

    def compare(self, old, new, *words):
        kept = {"old": {"a": Figure(around(old), "ms").to_json(), "old only": Figure([1], "ms").to_json()},
                "new": {"a": Figure(around(new), "ms").to_json(), "new only": Figure([9], "ms").to_json()}}
        return self.run_command("compare", kept, *words)

    def test_compare_passes_what_is_as_quick(self):
        result = self.compare(10, 11)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertRegex(result.stdout, r"\| a +\| 10.00 ms +\| 11.0 ms +\| 1.100")
        self.assertNotIn("only", result.stdout)

    def test_compare_fails_for_a_regression(self):
        result = self.compare(10, 13)
        self.assertEqual(result.returncode, 1, result.stderr)
        self.assertRegex(result.stdout, r"\| a .*REGRESSION")
        self.assertEqual(self.compare(10, 13, "--limit", "1.5").returncode, 0)

    def test_compare_wants_two_commits(self):
        self.assertEqual(subprocess.run([TREE / "bench/compare", "HEAD"], capture_output=True,
                                        check=False).returncode, 2)

    def test_the_page_tells_aims_met_and_missed(self):
        result = self.run_command("performance", measured(104), "--page", self.page)
        self.assertEqual(result.returncode, 0, result.stderr)
        text = self.page.read_text(encoding="utf-8")
        self.assertEqual(text, result.stdout)
        self.assertIn("Commit 0123456789ab", text)
        self.assertRegex(text, r"\| start, processor time: tool to plain window +\| at most 1.05 +\| 1.04 .*\| met ")
        self.assertRegex(text, r"\| READ beyond its three seconds of pauses .*\| missed: 7.00 ms ")
        self.assertRegex(text, r"\| processor, idle .*\| met ")
        self.assertNotIn("waiting", text.split("## All figures")[0].split("*Ratios*")[0])
        for line in text.splitlines():
            self.assertEqual(line, line.rstrip())
        self.assertRegex(self.run_command("performance", measured(108)).stdout, r"missed: 1.08")

    def test_windows_that_differ_are_no_comparison(self):
        data = measured(104)
        data["controls"]["plain"]["labels"] = 2
        result = self.run_command("performance", data)
        self.assertEqual(result.returncode, 1)
        self.assertIn("differ", result.stderr)

    def test_every_aim_is_of_a_figure_that_is_measured(self):
        names = [name for name, _, _ in programs.LINKS.values()]
        names += [f"window: {kind}, {what}" for kind in ("tool", "plain")
                  for what in ("processor", "wall", "memory", "instructions")]
        names += ["varden --version, wall", "varden status, own, wall"]
        whole = {name: Figure([1.0], "ms") for name in names}
        self.assertEqual(len(page.aims(whole)), len(page.AIMS))


if __name__ == "__main__":
    unittest.main()
