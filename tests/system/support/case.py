# SPDX-License-Identifier: GPL-3.0-or-later
"""Base of the system tests: a desktop per class, a home folder per start, and the checks after each test."""

import os
import pathlib
import shutil
import sys
import tempfile
import unittest

from .accessibility import snapshot  # noqa: F401 (for the tests)
from .application import LANGUAGES, Application, Home
from .desktop import Desktop, missing_programs

BUILD_VARIABLE = "QUORVEL_BUILD_DIR"
ARTIFACTS_VARIABLE = "QUORVEL_TEST_ARTIFACTS"
UNPRIVILEGED_ID = 65534  # nobody
DEFAULT_GEOMETRY = {"valid": "true", "x": 200, "y": 120, "width": 1280, "height": 800}


def default_settings():
    """English, and a window in the middle of the screen with room around it."""
    return {"system": {"language": LANGUAGES["en"]}, "windowGeometry": dict(DEFAULT_GEOMETRY)}


def build_folder():
    """Places of the program and the virtual instrument."""
    root = pathlib.Path(__file__).resolve().parents[3]
    return pathlib.Path(os.environ.get(BUILD_VARIABLE, root / "build/dev"))


def drop_privileges():
    """Makes this process an ordinary user with normal file permissions. Returns the reason of a failure, or None."""
    if os.getuid() != 0:
        return None
    if not (build_folder() / "quorvel").exists():
        return "the program is not built"
    os.environ["HOME"] = "/"
    os.environ.pop("XDG_RUNTIME_DIR", None)
    os.setgroups([])
    os.setresgid(UNPRIVILEGED_ID, UNPRIVILEGED_ID, UNPRIVILEGED_ID)
    os.setresuid(UNPRIVILEGED_ID, UNPRIVILEGED_ID, UNPRIVILEGED_ID)
    if not os.access(build_folder() / "quorvel", os.X_OK):
        return "an ordinary user cannot reach the build folder"
    return None


def processes_of(home):
    """The ids of the processes that run with this home folder."""
    wanted = b"HOME=" + os.fsencode(str(home.path)) + b"\0"
    found = []
    for folder in pathlib.Path("/proc").iterdir():
        if folder.name.isdigit():
            try:
                if wanted in (folder / "environ").read_bytes() + b"\0":
                    found.append(int(folder.name))
            except OSError:
                continue  # it ended, or is not ours
    return found


class SystemTestCase(unittest.TestCase):
    """Tests that start programs of their own; each one cleans up after itself."""

    screen_size = (1920, 1080)
    desktop_type = Desktop

    @classmethod
    def setUpClass(cls):
        missing = missing_programs(cls.desktop_type.required_programs)
        if missing:
            raise unittest.SkipTest(f"not installed: {', '.join(missing)}")
        cls.desktop = cls.desktop_type(cls.screen_size)
        cls.addClassCleanup(cls.desktop.stop)
        cls.desktop.start()

    @staticmethod
    def make_home(owner):
        """A home folder that is removed with the given test or test class."""
        folder = tempfile.mkdtemp(prefix="quorvel-")
        register = owner.addClassCleanup if isinstance(owner, type) else owner.addCleanup
        register(shutil.rmtree, folder, ignore_errors=True)
        return Home(folder)

    def start(self, home=None, settings=None, **options):
        """Starts the program and waits for its window. The program ends with the test."""
        if home is None:
            home = self.make_home(self)
            home.write_settings(default_settings() if settings is None else settings)
        app = Application(self.desktop, home, build_folder(), **options)
        # These run in reverse order: the picture shows the window, and the check comes after the program's end.
        self.addCleanup(self.check_clean, app)
        self.addCleanup(app.stop)
        self.addCleanup(self.keep_picture, app)
        app.start()
        return app

    def check_clean(self, app):
        """Checks after every run: nothing on the console, and no process remains."""
        self.assertEqual(app.console_faults(), [], "the console tells of faults")
        self.assertEqual(processes_of(app.home), [], "processes were left behind")

    def run(self, result=None):
        self._result = result if result is not None else self.defaultTestResult()
        self._failures_before = self._failures()
        return super().run(self._result)

    def _failures(self):
        return len(self._result.failures) + len(self._result.errors)

    def keep_picture(self, app):
        """Saves the screen and the console of a test that failed."""
        folder = os.environ.get(ARTIFACTS_VARIABLE)
        if folder and self._failures() > self._failures_before:
            path = pathlib.Path(folder)
            path.mkdir(parents=True, exist_ok=True)
            self.desktop.screenshot(path / f"{self.id()}.png")
            (path / f"{self.id()}.txt").write_text(app.console(), encoding="utf-8")


class SharedApplicationTestCase(SystemTestCase):
    """Tests that share one running program and restore its state."""

    settings = None
    scenario = "bench"

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        home = cls.make_home(cls)
        home.write_settings(cls.settings or default_settings())
        cls.app = Application(cls.desktop, home, build_folder(), cls.scenario)
        cls.addClassCleanup(cls.app.stop)
        cls.app.start()
        cls.instrument = cls.app.instrument
        cls.instrument.wait_open()

    def tearDown(self):
        self.keep_picture(self.app)
        # Restores the instrument, also after a test that failed half-way.
        if self.instrument.status()["plugged"] == "0":
            self.instrument.do("replug")
        for command in ("auto all", "rate 20", "burst 1"):
            self.instrument.do(command)
        self.assertIsNone(self.app.process.poll(), f"the program ended:\n{self.app.console()}")
        self.assertEqual(self.app.console_faults(), [], "the console tells of faults")


def main():
    """Runs the tests of the calling module."""
    unittest.main(verbosity=2, argv=sys.argv)
