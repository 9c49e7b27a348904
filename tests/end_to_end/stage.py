"""A stage for programs with windows: a virtual display with a window manager, buses and a home of their own."""

import contextlib
import os
import re
import shutil
import subprocess
import tempfile
import time
from pathlib import Path

from gi.repository import Gio, GLib

PIXELS_PER_POINT = 2
SCREEN_SIZE = (3600, 1800)
PATIENCE = 20  # seconds


class Failure(Exception):
    """A sentence that says what did not happen."""


def wait_for(what, probe):
    """What `probe` answers, as soon as it is something; a Failure that names `what` when it stays nothing. An element that
    goes while it is asked, and a program that fails, are nothing: windows come and go at their own pace."""
    deadline = time.monotonic() + PATIENCE
    while True:
        fault = ""
        try:
            answer = probe()
            if answer:
                return answer
        except (GLib.Error, Failure) as error:
            fault = f": {error}"
        if time.monotonic() > deadline:
            raise Failure(f"{what}: waited {PATIENCE} seconds for it in vain{fault}")
        time.sleep(0.02)


def wait_for_rest(what, probe, seconds=0.05):
    """What `probe` answers, once it has answered the same for so long."""
    last, since = None, 0

    def rests():
        nonlocal last, since
        answer = probe()
        if answer != last:
            last, since = answer, time.monotonic()
        return answer if time.monotonic() - since >= seconds else None
    return wait_for(f"{what} rests", rests)


def connect_to_bus(address):
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)


class Stage:
    """Stands after set_up(), and until strike(), which also ends every process that was started on it."""

    def __init__(self, palette):
        self.palette = palette
        self.folder = Path(tempfile.mkdtemp(prefix="brimvale-tour-"))
        self.screen_file = self.folder / "Xvfb_screen0"
        self.processes = []
        try:
            # A short name where it is free, as the pictures show it.
            self.home = Path("/tmp/ada")
            self.home.mkdir()
        except OSError:
            self.home = self.folder / "ada"
            self.home.mkdir()

    def set_up(self):
        # Nothing of the desktop that this may run on: no theme, no language, no settings.
        kept = ("PATH", "LD_LIBRARY_PATH", "QT_PLUGIN_PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")
        self.environment = {name: os.environ[name] for name in kept if name in os.environ}
        self.environment |= {
            "HOME": str(self.home),
            "XDG_RUNTIME_DIR": str(self.folder),
            "GSETTINGS_BACKEND": "memory",
            "GIO_USE_VFS": "local",  # a daemon sees no trash that is made after it started
            "LANG": "C.UTF-8",
            "QT_QPA_PLATFORM": "xcb",
            "QT_SCALE_FACTOR": str(PIXELS_PER_POINT),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }
        beside = Path(__file__).parent
        (self.home / ".config").mkdir()
        if self.palette == "dark":
            # Qt takes its colours from the one desktop that writes them into a file.
            self.environment |= {"QT_QPA_PLATFORMTHEME": "kde", "KDE_SESSION_VERSION": "5"}
            shutil.copy(beside / "kdeglobals", self.home / ".config")
        self.environment["DISPLAY"] = ":" + self._start_answering(
            r"\d+", "Xvfb", "-displayfd", "1", "-screen", "0", "{}x{}x24".format(*SCREEN_SIZE), "-nolisten", "tcp",
            "-fbdir", self.folder)
        address = self._start_answering("unix:.*", "dbus-daemon", "--session", "--nofork", "--print-address=1")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.bus = connect_to_bus(address)
        managed = self.folder / "managed"
        self.start("openbox", "--config-file", beside / "openbox.xml", "--startup", f"touch {managed}")
        wait_for("a window manager", managed.exists)
        self.start("dunst", "-conf", beside / "dunstrc")

    def strike(self):
        for process in reversed(self.processes):
            process.terminate()
            with contextlib.suppress(subprocess.TimeoutExpired):
                process.wait(5)
            process.kill()
            process.wait()
        shutil.rmtree(self.home, ignore_errors=True)
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command):
        """Starts a program on the stage; log() reads what it says."""
        command = [str(part) for part in command]
        with open(self._log_file(command[0]), "ab") as log:
            process = subprocess.Popen(command, env=self.environment, cwd=self.home,
                                       stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        self.processes.append(process)
        return process

    def log(self, program):
        return self._log_file(program).read_text(errors="replace")

    def _log_file(self, program):
        return self.folder / f"{Path(program).name}.log"

    def _start_answering(self, pattern, *command):
        """Starts a program that says a line once it is ready, and answers the line."""
        self.start(*command)
        return wait_for(f"{command[0]} is ready", lambda: re.search(f"^{pattern}\n", self.log(command[0]), re.M))[0].strip()

    def run(self, *command):
        """Runs a program on the stage to its end and answers what it printed."""
        done = subprocess.run([str(part) for part in command], env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True)
        if done.returncode != 0:
            raise Failure(f"{' '.join(map(str, command))}: {done.stderr.strip()}")
        return done.stdout

    def notifications(self):
        """Title and text of what the notification daemon has shown, the newest first."""
        shown = self.bus.call_sync("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                   "org.dunstproject.cmd0", "NotificationListHistory", None, None, 0, 10_000, None)
        return [(each["summary"], each["body"]) for each in shown.unpack()[0]]
