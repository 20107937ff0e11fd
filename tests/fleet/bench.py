"""The bench for fleets, with a few printers: it reads all of them and draws what it measured."""
import subprocess
import xml.etree.ElementTree

from fleet import PROGRAMS, PROJECT, FleetTest, run_tests


class BenchTest(FleetTest):
    def test_every_row_is_measured_and_every_point_is_drawn(self):
        picture = self.folder / "fleet.svg"
        done = subprocess.run([PROJECT / "bench" / "fleet", "--quick", "--programs", PROGRAMS, "--through", "parallel",
                               "--pauses", "0", "--picture", picture], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 0, done.stderr)
        rows = [[cell.strip() for cell in line.split("|")] for line in done.stdout.splitlines()
                if line.startswith("| parallel")]
        self.assertEqual([row[3:5] for row in rows], [["10", "1"], ["10", "10"], ["20", "5"], ["20", "20"]])
        circles = xml.etree.ElementTree.parse(picture).getroot().findall("{http://www.w3.org/2000/svg}circle")
        self.assertEqual(len(circles), 2 + 1, "those of the largest fleet, and that beside the name")

    def test_the_picture_is_that_of_the_page_and_the_page_tells_which_rows_leave_the_formula(self):
        page, kept = PROJECT / "docs" / "fleets.md", PROJECT / "docs" / "pictures" / "fleet.svg"
        picture = self.folder / "fleet.svg"
        subprocess.run([PROJECT / "bench" / "fleet", "--draw", page, "--picture", picture], check=True)
        self.assertEqual(picture.read_text(), kept.read_text())
        rows = [line.split("|") for line in page.read_text().splitlines()
                if line.startswith(("| xargs", "| parallel", "| ansible"))]
        self.assertGreater(len(rows), 10)
        for row in rows:
            measured, foretold = (float(row[column].split()[0]) for column in (5, 6))
            right = 1 / 1.35 <= measured / max(foretold, 0.05) <= 1.35 or abs(measured - foretold) <= 0.25
            self.assertEqual(right, "not what" not in row[-1], row)
        missed = [row for row in rows if "not what" in row[-1]]
        self.assertLess(len(missed), len(rows) / 5, "a formula that is wrong more often is none")

    def test_printers_that_are_not_read_end_it(self):
        broken = self.folder / "bin"
        broken.mkdir()
        (broken / "varden-printer-simulator").symlink_to(PROGRAMS / "varden-printer-simulator")
        (broken / "varden").write_text("#!/bin/sh\n")
        (broken / "varden").chmod(0o755)
        done = subprocess.run([PROJECT / "bench" / "fleet", "--quick", "--programs", broken, "--through", "parallel",
                               "--pauses", "0"], capture_output=True, text=True, check=False)
        self.assertEqual(done.returncode, 1)
        self.assertIn("0 of 1 printers were read", done.stderr)


if __name__ == "__main__":
    run_tests()
