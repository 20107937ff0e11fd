#!/usr/bin/env python3
"""Holds the long run to its limits: what is left behind breaks one, and what a row tells of it.

  long_run_test.py SOURCE-TREE
"""
import importlib.util
import pathlib
import sys
import unittest

sys.dont_write_bytecode = True  # among the sources
TREE = pathlib.Path(sys.argv.pop(1))
SPEC = importlib.util.spec_from_file_location("run_long", TREE / "tests/long/run-long.py")
run_long = importlib.util.module_from_spec(SPEC)
SPEC.loader.exec_module(run_long)

SOUND = {"rounds": 1000, "done": 60, "heap_bytes": 900, "resident_kib": 4, "descriptors": 0, "threads": 0,
         "first_ms": 2.0, "last_ms": 2.1, "seconds": 3.2}


class LimitsTest(unittest.TestCase):
    def broken(self, **more):
        return run_long.Row("name", SOUND | more).broken()

    def test_what_leaves_nothing_behind_holds(self):
        self.assertEqual(self.broken(), [])
        self.assertEqual(self.broken(heap_bytes=-5000, descriptors=-1, last_ms=0.1), [])
        self.assertEqual(self.broken(done=0, may_fail=True), [])
        self.assertEqual(self.broken(rounds=20, last_ms=9.0), [])

    def test_what_grows_breaks_a_limit(self):
        for more, word in (({"heap_bytes": 100 * 1024}, "heap"), ({"resident_kib": 3000}, "memory"),
                           ({"descriptors": 1}, "descriptors"), ({"threads": 1}, "threads"),
                           ({"last_ms": 4.0}, "slower"), ({"done": 0}, "nothing was done"),
                           ({"wrong": ["exit code 2"]}, "exit code 2")):
            self.assertEqual(self.broken(**more), [word])

    def test_a_row_has_a_cell_for_each_heading_and_tells_the_limits(self):
        cells = run_long.Row("name", SOUND | {"threads": 2}).cells()
        self.assertEqual(len(cells), len(run_long.HEADINGS))
        self.assertEqual((cells[0], cells[6], cells[-1]), ("name", "+2", "threads"))
        self.assertEqual(run_long.Row("name", SOUND).cells()[-1], "held")

    def test_the_short_run_has_all_kinds_of_the_whole_one(self):
        def kinds(short):
            options = type("Options", (), {"programs": TREE, "seed": 1, "jobs": 1, "short": short})
            return {name.split(",")[0] for name, _ in run_long.LongRun(options, "").parts()}
        self.assertEqual(kinds(True), kinds(False))


if __name__ == "__main__":
    unittest.main()
