# SPDX-License-Identifier: GPL-3.0-or-later
"""The unmodified program under the virtual instrument, in a home folder of its own."""

import configparser
import os
import pathlib
import re
import signal
import subprocess

from .accessibility import snapshot
from .desktop import Managed, stop_process
from .instrument import Instrument
from .waiting import wait_for

WINDOW_TITLE = "Quorvel"
LANGUAGES = {"cn": 0, "en": 1}
START_TIMEOUT_S = 60
EXIT_TIMEOUT_S = 20

# Pattern of lines that must not appear on the program's console.
FAULT_PATTERN = re.compile(
    r"qrc:/|\.qml:\d+|file://\S+\.qml|QML\b.*:|binding loop|TypeError|ReferenceError|QObject::|QPainter::"
    r"|ASSERT|qt\.qpa|wayland|Cannot (assign|read|open)|is not a type|Sanitizer|runtime error:", re.IGNORECASE)


class Home:
    """A home folder with Documents and Desktop in it."""

    def __init__(self, path):
        self.path = pathlib.Path(path)
        self.documents = self.path / "Documents"
        self.data = self.documents / "Quorvel"
        self.settings_file = self.data / "Quorvel.ini"
        for folder in (self.documents, self.path / "Desktop", self.path / ".config", self.path / "tmp",
                       self.path / "runtime"):
            folder.mkdir(parents=True, exist_ok=True)
        (self.path / "runtime").chmod(0o700)
        (self.path / ".config/user-dirs.dirs").write_text(
            'XDG_DOCUMENTS_DIR="$HOME/Documents"\nXDG_DESKTOP_DIR="$HOME/Desktop"\n', encoding="utf-8")

    def environment(self):
        return {"HOME": str(self.path), "TMPDIR": str(self.path / "tmp"),
                "XDG_RUNTIME_DIR": str(self.path / "runtime")}

    def settings(self):
        """The settings file as it is now: {group: {key: text}}."""
        parser = configparser.ConfigParser(strict=False, interpolation=None)
        parser.optionxform = str
        parser.read(self.settings_file, encoding="utf-8")
        return {group: dict(parser[group]) for group in parser.sections()}

    def write_settings(self, values):
        """Writes a settings file from {group: {key: value}}."""
        self.data.mkdir(parents=True, exist_ok=True)
        lines = []
        for group, entries in values.items():
            lines.append(f"[{group}]")
            lines += [f"{key}={value}" for key, value in entries.items()]
        self.settings_file.write_text("\n".join(lines) + "\n", encoding="utf-8")


class Application(Managed):
    """One run of the program. No process or file of it remains."""

    def __init__(self, desktop, home, build, scenario="bench", env=None, commands=()):
        self.desktop = desktop
        self.home = home
        self.process = None
        self.instrument = None
        self.window = None
        self._build = pathlib.Path(build)
        self._scenario = scenario
        self._env = env or {}
        self._commands = commands
        self._console = home.path / "console.txt"

    def environment(self):
        return {**self.desktop.program_env, **self.home.environment(), "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                **self._env}

    def start(self, wait_window=True):
        """Starts the program and waits for its window."""
        control = self.home.path / "control.sock"
        trace = self.home.path / "trace.txt"
        trace.touch()
        with open(self._console, "wb") as console:
            self.process = subprocess.Popen(
                [self._build / "tools/virtual-instrument", "--scenario", self._scenario, "--control", control,
                 "--trace", trace, "--", self._build / "quorvel"],
                env=self.environment(), stdin=subprocess.DEVNULL, stdout=console, stderr=console)
        self.instrument = Instrument(control, trace)
        for command in self._commands:
            self.instrument.do(command)
        if wait_window:
            self.window = wait_for(self._find_window, self._no_window, START_TIMEOUT_S)

    def _find_window(self):
        if self.process.poll() is not None:
            raise AssertionError(f"ended with {self.process.returncode} at start:\n{self.console()}")
        windows = self.desktop.windows(WINDOW_TITLE)
        return windows[0] if windows else None

    def _no_window(self):
        return f"the window shows\n{self.console()}"

    @property
    def pid(self):
        """The process id of the program, the virtual instrument's child; None after its end."""
        children = pathlib.Path(f"/proc/{self.process.pid}/task/{self.process.pid}/children")
        try:
            return next((int(pid) for pid in children.read_text(encoding="ascii").split()), None)
        except OSError:
            return None

    def stop(self):
        if self.instrument is not None:
            self.instrument.close()
            self.instrument = None
        stop_process(self.process)

    def kill(self):
        """Ends the program without a chance to save anything."""
        os.kill(self.process.pid, signal.SIGTERM)
        self.process.wait(EXIT_TIMEOUT_S)

    def wait_exit(self):
        """Waits for the program to end by itself. Returns its exit code."""
        return self.process.wait(EXIT_TIMEOUT_S)

    def console(self):
        """What the program printed so far."""
        return self._console.read_text(encoding="utf-8", errors="replace")

    def console_faults(self):
        """The lines of the console that report a fault of the interface."""
        return [line for line in self.console().splitlines() if FAULT_PATTERN.search(line)]

    # The window's content.

    def items(self):
        """Every item that is shown now."""
        root = self.desktop.accessibility.program(self.pid) if self.pid else None
        return snapshot(root) if root is not None else []

    def texts(self):
        """The names of the items shown now, without empty ones."""
        return [item.name for item in self.items() if item.name]

    def find(self, name, role=None):
        """The item with this name (text, or compiled pattern) shown now, or None."""
        matches = name.search if hasattr(name, "search") else lambda text: text == name
        for item in self.items():
            if matches(item.name) and (role is None or item.role == role):
                return item
        return None

    def wait_item(self, name, role=None, timeout_s=20):
        return wait_for(lambda: self.find(name, role), lambda: f"{name} shows; shown: {self.texts()}",
                        timeout_s)

    def wait_gone(self, name, role=None, timeout_s=20):
        wait_for(lambda: self.find(name, role) is None, lambda: f"{name} goes", timeout_s)

    def click_item(self, name, role=None, button=1):
        """Clicks the middle of an item with the mouse after it is shown and no longer moves."""
        places = []

        def settled():
            item = self.wait_item(name, role)
            places.append(item.extents)
            return item if places[-2:-1] == [item.extents] else None

        item = wait_for(settled, lambda: f"{name} stays in its place: {places}")
        self.desktop.click(*item.center, button=button)
        return item

    def screenshot(self, path):
        self.desktop.screenshot(path, self.window)
