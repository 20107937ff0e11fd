"""The nightly backup: what changed on which printer, and what becomes of one that is dead."""
import json
import re
import shutil
import subprocess

from fleet import SCRIPTS, FleetTest, recipe, run_tests


class BackupTest(FleetTest):
    def setUp(self):
        super().setUp()
        self.repository = self.folder / "backup"

    def back_up(self):
        return self.run_command(SCRIPTS / "backup-printers", str(self.list), str(self.repository), "8")

    def git(self, *arguments):
        return subprocess.run(["git", "-C", self.repository, *arguments], check=True, capture_output=True, text=True).stdout

    def file_of(self, target):
        return self.repository / f"{re.sub('[:/]', '_', target)}.json"

    def write(self, *arguments):
        done = self.run_command("varden", "write", *arguments)
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_a_night_tells_what_changed_on_which_printer(self):
        targets = self.start(3).targets
        self.write_list(targets)
        done = self.back_up()
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("3 changed, 0 not read", self.git("log", "-1", "--format=%s"))
        settings = json.loads(self.file_of(targets[1]).read_text())["settings"]
        self.assertEqual(list(settings), sorted(settings))
        self.assertNotIn("ambient-sensor", settings)

        self.assertEqual(self.back_up().returncode, 0)
        self.assertEqual(self.git("rev-list", "--count", "HEAD").strip(), "1", "a night without a change")

        self.write(targets[1], "feed-adj=-1.5", "speed=19200bps", "--stop-bit-is", "1bit")
        self.assertEqual(self.back_up().returncode, 0)
        self.assertEqual(self.git("log", "-1", "--format=%B").strip(),
                         f"1 changed, 0 not read\n\n{targets[1]}:\n"
                         f"  feed-adj: {settings['feed-adj']} -> -1.5\n  speed: {settings['speed']} -> 19200bps")
        changed = self.git("show", "--format=", "--numstat").split()
        self.assertEqual(changed, ["2", "2", self.file_of(targets[1]).name])

    def test_a_dead_printer_keeps_its_file_and_is_told(self):
        living, mortal = self.start(1), self.start(1)
        targets = living.targets + mortal.targets
        self.write_list(targets)
        self.assertEqual(self.back_up().returncode, 0)
        kept = self.file_of(targets[1]).read_text()

        mortal.stop()
        self.write(targets[0], "feed-adj=2")
        done = self.back_up()
        self.assertEqual(done.returncode, 3)
        self.assertIn(targets[1], done.stderr)
        self.assertEqual(self.file_of(targets[1]).read_text(), kept)
        self.assertEqual(json.loads(self.file_of(targets[0]).read_text())["settings"]["feed-adj"], 2.0)
        self.assertRegex((self.repository / "NOT-READ").read_text(), f"^{targets[1]}: .+\n$")
        message = self.git("log", "-1", "--format=%B")
        self.assertIn("1 changed, 1 not read", message)
        self.assertIn(f"not read: {targets[1]}: ", message)

    def test_a_printer_that_is_not_there_is_told_in_the_words_there_are(self):
        self.write_list(["lan:127.0.0.1:1", "com:/dev/no-such-line"])
        self.assertEqual(self.back_up().returncode, 3)
        self.assertEqual((self.repository / "NOT-READ").read_text(),
                         "lan:127.0.0.1:1: Cannot reach lan:127.0.0.1:1: nothing listens at that port\n"
                         "com:/dev/no-such-line: There is no /dev/no-such-line\n")

    def test_an_answer_that_is_none_is_told_and_the_others_are_kept(self):
        targets = self.start(5).targets
        self.write_list(targets)
        varden = self.quick / "varden"
        first, rest = varden.read_text().split("\n", 1)
        varden.write_text(
            f'{first}\ncase "$*" in\n"read {targets[0]} "*) echo "{{half" ; exit ;;\n'
            f'"read {targets[1]} "*) echo "{{half" ; exit 3 ;;\n"read {targets[2]} "*) exit 0 ;;\n'
            f'"read {targets[3]} "*) kill -9 $$ ;;\nesac\n{rest}')
        done = self.back_up()
        self.assertEqual(done.returncode, 3, done.stderr)
        self.assertEqual(self.git("log", "-1", "--format=%s").strip(), "1 changed, 4 not read")
        self.assertEqual([self.file_of(target).exists() for target in targets], [False] * 4 + [True])
        self.assertRegex((self.repository / "NOT-READ").read_text(),
                         "".join(f"{target}: \\w.+\n" for target in targets[:4]))

    def test_a_night_that_was_cut_short_is_told_by_the_next(self):
        targets = self.start(3).targets
        self.write_list(targets[:2])
        self.assertEqual(self.back_up().returncode, 0)
        was = json.loads(self.file_of(targets[0]).read_text())["settings"]["feed-adj"]
        self.write(targets[0], "feed-adj=-1.5")
        self.write_list(targets)
        git = self.quick / "git"
        git.write_text('#!/bin/sh\ncase "$*" in\n*" add "* | *" commit "*) exit 1 ;;\nesac\n'
                       f'exec "{shutil.which("git")}" "$@"\n')
        git.chmod(0o755)
        self.assertEqual(self.back_up().returncode, 1)
        git.unlink()

        self.assertEqual(self.back_up().returncode, 0)
        subject, rest = self.git("log", "-1", "--format=%B").strip().split("\n\n")
        self.assertEqual(subject, "2 changed, 0 not read")
        for told in (f"{targets[0]}:\n  feed-adj: {was} -> -1.5", f"{targets[2]}: new"):
            self.assertIn(told, rest)
        self.assertEqual(self.git("status", "--porcelain"), "")

    def test_files_that_somebody_removed_or_spoiled_are_told_too(self):
        targets = self.start(2).targets
        self.write_list(targets)
        self.assertEqual(self.back_up().returncode, 0)
        self.file_of(targets[0]).write_text("{half")
        self.git("-c", "user.name=one", "-c", "user.email=one@localhost", "commit", "-qam", "Spoiled")
        self.file_of(targets[1]).unlink()
        self.write_list(targets[:1])
        done = self.back_up()
        self.assertEqual(done.returncode, 0, done.stderr)
        message = self.git("log", "-1", "--format=%B")
        self.assertIn("2 changed, 0 not read", message)
        self.assertIn(f"{targets[0]}:\n  was no backup\n", message)
        self.assertIn(f"{self.file_of(targets[1]).name}: removed\n", message)

    def test_a_kept_file_can_be_written_to_the_printer(self):
        targets = self.start(1).targets
        self.write_list(targets)
        self.back_up()
        self.write(targets[0], "feed-adj=3")
        self.write(targets[0], "--file", str(self.file_of(targets[0])), "--allow-link-change", "--stop-bit-is", "1bit")
        done = self.back_up()
        self.assertEqual((done.returncode, self.git("rev-list", "--count", "HEAD").strip()), (0, "1"))

    def test_the_line_of_the_page_tells_what_was_in_a_repository_of_another_user(self):
        self.write_list(self.start(1).targets)
        self.back_up()
        sudo = self.quick / "sudo"
        sudo.write_text('#!/bin/sh\nGIT_TEST_ASSUME_DIFFERENT_OWNER=1 exec "$@"\n')
        sudo.chmod(0o755)
        line = recipe("history").replace("/var/lib/varden-backup/hall", str(self.repository))
        self.assertIn(str(self.repository), line)
        done = self.run_command("sh", "-c", line)
        self.assertIn("1 changed, 0 not read", done.stdout, done.stderr)


if __name__ == "__main__":
    run_tests()
