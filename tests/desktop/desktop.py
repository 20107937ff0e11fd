"""A desktop of its own: a display in memory, a window manager, a folder, and what runs there."""

import os
import shutil
import signal
import subprocess
import tempfile
import time

from person import Person
from screen import Screen
from waiting import Wrong, wait_for

MANAGERS = {"openbox": ["openbox", "--sm-disable"], "icewm": ["icewm"]}
SIZE = "1280x1024x24"
END_PATIENCE = 10  # seconds


def noon():
    """The time zone where it is noon. The tool measures by the time of day, and its pauses over
    midnight have no end."""
    now = time.gmtime()
    ahead = 12 * 3600 - (now.tm_hour * 3600 + now.tm_min * 60 + now.tm_sec)
    minutes, seconds = divmod(abs(ahead), 60)
    return f"NOON{'+' if ahead < 0 else '-'}{minutes // 60}:{minutes % 60:02}:{seconds:02}"


class Desktop:
    """Begins with `with` and leaves nothing behind at its end: no process, no file."""

    def __init__(self, manager, more=None):
        self.folder = tempfile.mkdtemp(prefix="varden-desktop-")
        self._running = []
        self._environment = {
            "PATH": os.environ["PATH"], "LANG": "C.UTF-8", "HOME": self.folder,
            "XDG_RUNTIME_DIR": self.folder, "QT_QPA_PLATFORM": "xcb", "TZ": noon(),
        } | (more or {})
        try:
            self._start_display()
            self.person = Person(self._start_person)
            self.start(MANAGERS[manager], manager)
            wait_for("the window manager " + manager, self._is_managed)
        except BaseException:
            self.close()
            raise

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def path(self, name):
        """A file in the desktop's own folder."""
        return os.path.join(self.folder, name)

    def start(self, command, name, more=None, **options):
        """Starts a program on the desktop; what it prints goes into the file NAME.log. It does not
        outlive this one, whatever ends it."""
        with open(self.path(name + ".log"), "ab") as log:
            process = subprocess.Popen(
                ["setpriv", "--pdeathsig", "KILL", "--", *command], stdin=subprocess.DEVNULL,
                stdout=log, stderr=log, env=self._environment | (more or {}),
                start_new_session=True, **options)
        self._running.append(process)
        return process

    def stop(self, process):
        """Ends a program that was started here, if it has not ended, and what it has started; its
        exit code. Nothing happens without one."""
        if process not in self._running:
            return process and process.returncode
        self._running.remove(process)
        process.terminate()
        try:
            process.wait(END_PATIENCE)
        except subprocess.TimeoutExpired:
            pass
        try:
            os.killpg(process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        return process.wait()

    def run(self, command):
        """Runs a program to its end; the lines that it prints."""
        found = subprocess.run(command, env=self._environment, capture_output=True, text=True,
                               timeout=60, check=False)
        if found.returncode != 0:
            raise Wrong(f"{command[0]} has failed: {found.stderr}")
        return found.stdout.splitlines()

    def close(self):
        for process in reversed(list(self._running)):
            self.stop(process)
        shutil.rmtree(self.folder, ignore_errors=True)

    def _start_display(self):
        reading, writing = os.pipe()
        try:
            self.start(["Xvfb", "-displayfd", str(writing), "-screen", "0", SIZE, "-nolisten", "tcp",
                        "-noreset", "-fbdir", self.folder], "display", pass_fds=[writing])
        finally:
            os.close(writing)
        with os.fdopen(reading) as file:
            number = file.readline().strip()
        if not number:
            raise Wrong("the display does not start")
        self._environment["DISPLAY"] = ":" + number
        self.screen = Screen(self.path("Xvfb_screen0"))

    def _is_managed(self):
        return bool(self.person.look("get_num_desktops"))

    def _start_person(self, command):
        with open(self.path("person.log"), "ab") as log:
            process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                       stderr=log, env=self._environment, text=True,
                                       start_new_session=True)
        self._running.append(process)
        return process
