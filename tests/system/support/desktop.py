# SPDX-License-Identifier: GPL-3.0-or-later
"""A display without a screen, with a window manager and a session bus, and its mouse and keyboard."""

import os
import re
import shutil
import subprocess

from .accessibility import AccessibilityBus
from .waiting import wait_for

REQUIRED_PROGRAMS = ("Xvfb", "openbox", "dbus-daemon", "xdotool", "xprop", "xwininfo", "import", "convert")
STOP_TIMEOUT_S = 5
# Times of a hand on the mouse: between press and first move, between two moves, and of a click.
HAND_PAUSE_S = 0.1
HAND_STEP_S = 0.02
HAND_CLICK_S = 0.05


def missing_programs(names=REQUIRED_PROGRAMS):
    """Returns the programs that are not installed; by default of those that a Desktop needs."""
    return [name for name in names if shutil.which(name) is None]


def stop_process(process):
    """Ends a process that this program started. Kills it when it does not end by itself."""
    if process is None or process.poll() is not None:
        return
    process.terminate()
    try:
        process.wait(STOP_TIMEOUT_S)
    except subprocess.TimeoutExpired:
        process.kill()
        process.wait()


class Managed:
    """Base of objects with start() and stop(), for a with statement."""

    def __enter__(self):
        try:
            self.start()
        except BaseException:
            self.stop()
            raise
        return self

    def __exit__(self, *_):
        self.stop()


class Desktop(Managed):
    """Xvfb, openbox and a session bus."""

    required_programs = REQUIRED_PROGRAMS

    def __init__(self, size=(1920, 1080)):
        self.size = size
        self.env = dict(os.environ)
        self.accessibility = None
        self._processes = []

    def start(self):
        number = self._start_reporting(["Xvfb", "-displayfd", "{fd}", "-nolisten", "tcp", "-noreset",
                                        "-screen", "0", f"{self.size[0]}x{self.size[1]}x24"])
        self.env["DISPLAY"] = f":{number}"
        for name in ("WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "XAUTHORITY"):
            self.env.pop(name, None)
        self.env["LIBGL_ALWAYS_SOFTWARE"] = "1"
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._start_reporting(
            ["dbus-daemon", "--session", "--nofork", "--nosyslog", "--print-address={fd}"])
        self.accessibility = AccessibilityBus(self.env["DBUS_SESSION_BUS_ADDRESS"])
        self._start_window_manager()

    def _start_window_manager(self):
        self._spawn(["openbox", "--sm-disable"])
        wait_for(lambda: "window id" in self.output("xprop", "-root", "_NET_SUPPORTING_WM_CHECK"),
                 "the window manager runs")

    @property
    def program_env(self):
        """The environment of a program that shows windows on this desktop."""
        return self.env

    def _spawn(self, command, env=None, **options):
        process = subprocess.Popen(command, env=env or self.env, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, **options)
        self._processes.append(process)
        return process

    def _start_reporting(self, command):
        """Starts a program that writes one line to the descriptor given as {fd}. Returns that line."""
        reader, writer = os.pipe()
        try:
            self._spawn([word.format(fd=writer) for word in command], pass_fds=(writer,))
        finally:
            os.close(writer)
        with os.fdopen(reader) as stream:
            line = stream.readline().strip()
        if not line:
            raise RuntimeError(f"{command[0]} did not start")
        return line

    def stop(self):
        while self._processes:
            stop_process(self._processes.pop())

    def output(self, *command):
        """Runs a program on this display and returns its standard output."""
        result = subprocess.run(command, env=self.env, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                                text=True, check=False)
        return result.stdout

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], env=self.env, check=True,
                       stdout=subprocess.DEVNULL)

    # The mouse, in screen coordinates.

    @property
    def idle_place(self):
        """The lower right corner of the screen, where nothing reacts to the mouse."""
        return self.size[0] - 1, self.size[1] - 1

    def move(self, x, y):
        self.xdotool("mousemove", "--sync", round(x), round(y))

    def press(self, x, y):
        self.xdotool("mousemove", round(x), round(y), "mousedown", 1, "sleep", HAND_PAUSE_S)

    def release(self):
        self.xdotool("mouseup", 1)

    def click(self, x, y, button=1):
        self.xdotool("mousemove", round(x), round(y), "sleep", HAND_STEP_S, "mousedown", button,
                     "sleep", HAND_CLICK_S, "mouseup", button)

    def double_click(self, x, y):
        self.xdotool("mousemove", round(x), round(y), "click", "--repeat", 2, "--delay", 60, 1)

    def drag(self, start, end, steps=8, button=1):
        """Presses at start, moves to end in small steps like a hand, and releases."""
        chain = ["mousemove", *map(round, start), "mousedown", button, "sleep", HAND_PAUSE_S]
        for step in range(1, steps + 1):
            chain += ["mousemove", *(round(a + (b - a) * step / steps) for a, b in zip(start, end)),
                      "sleep", HAND_STEP_S]
        self.xdotool(*chain, "sleep", HAND_PAUSE_S, "mouseup", button)

    def wheel(self, x, y, turns):
        """Turns the wheel at a place, up for positive numbers."""
        self.xdotool("mousemove", round(x), round(y), "click", "--repeat", abs(turns), "--delay", 40,
                     4 if turns > 0 else 5)

    def key(self, *names):
        self.xdotool("key", *names)

    # Windows and pictures.

    def windows(self, title):
        """The ids of the shown windows whose title is exactly this."""
        found = self.output("xdotool", "search", "--onlyvisible", "--name", f"^{re.escape(title)}$")
        return [int(line) for line in found.split() if line.isdigit()]

    def geometry(self, window):
        """(x, y, width, height) of a window on the screen."""
        text = self.output("xwininfo", "-id", str(window))
        values = [re.search(rf"{name}:\s+(-?\d+)", text) for name in
                  ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")]
        return tuple(int(match.group(1)) for match in values) if all(values) else None

    def is_maximized(self, window):
        return "MAXIMIZED_VERT" in self.output("xprop", "-id", str(window), "_NET_WM_STATE")

    def picture(self, extents):
        """The pixels of a part of the screen (x, y, width, height), three bytes each, row by row."""
        x, y, width, height = extents
        command = ["import", "-window", "root", "-crop", f"{width}x{height}+{x}+{y}", "+repage",
                   "-depth", "8", "rgb:-"]
        return subprocess.run(command, env=self.env, check=True, stdout=subprocess.PIPE).stdout

    def screenshot(self, path, window=None):
        """Saves the screen, or what is seen of one window, as a PNG."""
        command = ["import", "-window", "root"]
        if window is not None:
            x, y, width, height = self.geometry(window)
            command += ["-crop", f"{width}x{height}+{x}+{y}", "+repage"]
        subprocess.run([*command, str(path)], env=self.env, check=True)
