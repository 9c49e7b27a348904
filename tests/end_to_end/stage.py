"""A stage for programs with windows: a virtual display with a window manager, buses and a home of their own."""

import os
import shutil
import subprocess
import tempfile
import threading
import time
from pathlib import Path

from gi.repository import Gio, GLib

PIXELS_PER_POINT = 2


class Failure(Exception):
    """A sentence that says what did not happen."""


def wait_for(what, probe, seconds=20):
    """What `probe` answers, as soon as it is something; a Failure that names `what` when it stays nothing. An element that
    goes while it is asked is nothing: windows come and go at their own pace."""
    deadline = time.monotonic() + seconds
    while True:
        fault = ""
        try:
            answer = probe()
            if answer:
                return answer
        except GLib.Error as error:
            fault = f": {error.message}"
        if time.monotonic() > deadline:
            raise Failure(f"{what}: waited {seconds} seconds for it in vain{fault}")
        time.sleep(0.02)


def connect_to_bus(address):
    flags = Gio.DBusConnectionFlags
    return Gio.DBusConnection.new_for_address_sync(
        address, flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)


class Stage:
    """Set up by `with`; struck, with every process that was started on it, when the block is left."""

    def __init__(self, palette="light"):
        self.palette = palette
        self.folder = Path(tempfile.mkdtemp(prefix="brimvale-tour-"))
        self.processes = []
        try:
            # A short name where it is free, as the pictures show it.
            self.home = Path("/tmp/ada")
            self.home.mkdir()
        except OSError:
            self.home = self.folder / "ada"
            self.home.mkdir()

    def __enter__(self):
        try:
            self._set_up()
        except BaseException:
            self.__exit__()
            raise
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            process.terminate()
            try:
                process.wait(5)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        shutil.rmtree(self.home, ignore_errors=True)
        shutil.rmtree(self.folder, ignore_errors=True)

    def start(self, *command, pass_fds=()):
        """Starts a program on the stage; log() reads what it says."""
        command = [str(part) for part in command]
        with open(self._log_file(command[0]), "ab") as log:
            process = subprocess.Popen(command, env=self.environment, cwd=self.home, pass_fds=pass_fds,
                                       stdin=subprocess.DEVNULL, stdout=log, stderr=log)
        self.processes.append(process)
        return process

    def log(self, program):
        file = self._log_file(program)
        return file.read_text(errors="replace") if file.exists() else ""

    def _log_file(self, program):
        return self.folder / (Path(program).name + ".log")

    def _set_up(self):
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        # Nothing of the desktop that this may run on: no theme, no language, no settings.
        kept = ("PATH", "LD_LIBRARY_PATH", "QT_PLUGIN_PATH", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")
        self.environment = {name: os.environ[name] for name in kept if name in os.environ}
        self.environment |= {
            "HOME": str(self.home),
            "XDG_RUNTIME_DIR": str(runtime),
            "GSETTINGS_BACKEND": "memory",
            "LANG": "C.UTF-8",
            "QT_QPA_PLATFORM": "xcb",
            "QT_SCALE_FACTOR": str(PIXELS_PER_POINT),
            "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
        }
        if self.palette == "dark":
            # Qt takes its colours from the one desktop that writes them into a file.
            self.environment |= {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5"}
            (self.home / ".config").mkdir()
            shutil.copy(Path(__file__).with_name("kdeglobals"), self.home / ".config")
        self.environment["DISPLAY"] = ":" + self._start_answering(
            "Xvfb", "-displayfd", "{}", "-screen", "0", "2400x1800x24", "-nolisten", "tcp")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self._start_answering(
            "dbus-daemon", "--session", "--nofork", "--print-address={}")
        managed = self.folder / "managed"
        self.start("openbox", "--config-file", Path(__file__).with_name("openbox.xml"), "--startup", f"touch {managed}")
        wait_for("a window manager", managed.exists)

    def _start_answering(self, *command):
        """Starts a program that writes one line to a descriptor of ours once it is ready, and answers the line."""
        ours, theirs = os.pipe()
        self.start(*(part.format(theirs) for part in command), pass_fds=(theirs,))
        os.close(theirs)
        with open(ours) as answer:
            line = answer.readline().strip()
        if not line:
            raise Failure(f"{command[0]} does not start: {self.log(command[0])}")
        return line

    def run(self, *command):
        """Runs a program on the stage to its end and answers what it printed."""
        done = subprocess.run([str(part) for part in command], env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True)
        if done.returncode != 0:
            raise Failure(f"{' '.join(map(str, command))}: {done.stderr.strip()}")
        return done.stdout


class NotificationService:
    """The desktop's notification service of a bus: keeps what it is told to show, in pairs of title and text."""

    _INTERFACE = """
        <node><interface name="org.freedesktop.Notifications"><method name="Notify">
          <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
          <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
          <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/>
        </method></interface></node>"""

    def __init__(self, bus_address):
        self.shown = []
        self._ready = threading.Event()
        threading.Thread(target=self._serve, args=(bus_address,), daemon=True).start()
        if not self._ready.wait(10):
            raise Failure("the notification service does not start")

    def _serve(self, bus_address):
        context = GLib.MainContext.new()
        context.push_thread_default()
        bus = connect_to_bus(bus_address)
        interface = Gio.DBusNodeInfo.new_for_xml(self._INTERFACE).interfaces[0]
        bus.register_object("/org/freedesktop/Notifications", interface, self._notify, None, None)
        Gio.bus_own_name_on_connection(bus, interface.name, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: self._ready.set(), None)
        GLib.MainLoop.new(context, False).run()

    def _notify(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        _program, _replaces, _icon, title, text, _actions, _hints, _timeout = arguments.unpack()
        self.shown.append((title, text))
        invocation.return_value(GLib.Variant("(u)", (len(self.shown),)))
