# SPDX-License-Identifier: GPL-3.0-or-later
"""A Wayland desktop without a screen: Weston in a window that fills the X display."""

import os
import pathlib
import re
import subprocess
import tempfile

from .desktop import REQUIRED_PROGRAMS, Desktop
from .waiting import wait_for

SETTINGS = """[core]
idle-time=0
[shell]
animation=none
locking=false
panel-position=none
startup-animation=none
"""
TOP_LEVEL = re.compile(r"top-level window '(?P<title>[^']*)' of (?P<program>\S+?), [^\n]*\n"
                       r"\s+position: \((?P<x>-?\d+), (?P<y>-?\d+)\) -> \((?P<right>-?\d+), (?P<bottom>-?\d+)\)")
CURSOR = re.compile(r"wl_pointer-cursor[^\n]*\n\s+position: \((?P<x>-?\d+), (?P<y>-?\d+)\)")


class WaylandDesktop(Desktop):
    """Weston on Xvfb. Its mouse is that of the X display. Weston reports the places of the windows.

    Windows are named by their titles. Under Wayland a program does not know where its window is: the places that
    it gives to assistive technology are those on the screen only while the window is maximised.
    """

    required_programs = (*REQUIRED_PROGRAMS, "weston", "weston-debug")

    def __init__(self, size=(1920, 1080)):
        super().__init__(size)
        self._folder = tempfile.TemporaryDirectory(prefix="weston-")
        self._socket = pathlib.Path(self._folder.name, "wayland-0")

    @property
    def program_env(self):
        kept = {name: value for name, value in self.env.items() if name not in ("DISPLAY", "QT_QPA_PLATFORM")}
        return {**kept, "WAYLAND_DISPLAY": str(self._socket), "XDG_SESSION_TYPE": "wayland"}

    def _start_window_manager(self):
        settings = pathlib.Path(self._folder.name, "weston.ini")
        settings.write_text(SETTINGS, encoding="ascii")
        width, height = self.size
        self._spawn(["weston", "--backend=x11-backend.so", "--use-pixman", f"--width={width}", f"--height={height}",
                     "--debug", f"--socket={self._socket.name}", f"--config={settings}",
                     f"--log={self._folder.name}/log"],
                    env={**self.env, "XDG_RUNTIME_DIR": self._folder.name})
        wait_for(self._mouse_in_corner, "Weston sees the mouse")

    def stop(self):
        super().stop()
        self._folder.cleanup()

    def _mouse_in_corner(self):
        """Moves the mouse to the upper left corner. Returns whether Weston's is there too: it only adds up movements."""
        self.xdotool("mousemove", self.size[0] - 1, self.size[1] - 1, "mousemove", 0, 0)
        match = CURSOR.search(self._scene())
        return match and int(match["x"]) <= 0 and int(match["y"]) <= 0

    def _scene(self):
        """Weston's description of what is on the screen; empty before it answers."""
        env = {**os.environ, "WAYLAND_DISPLAY": str(self._socket), "XDG_RUNTIME_DIR": self._folder.name}
        return subprocess.run(["weston-debug", "scene-graph"], env=env, stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True, check=False).stdout

    def _top_levels(self, title):
        return [match for match in TOP_LEVEL.finditer(self._scene()) if match["title"] == title]

    def windows(self, title):
        return [match["title"] for match in self._top_levels(title)]

    def geometry(self, window):
        for match in self._top_levels(window):
            x, y, right, bottom = (int(match[name]) for name in ("x", "y", "right", "bottom"))
            return x, y, right - x, bottom - y
        return None

    def is_maximized(self, window):
        return self.geometry(window) == (0, 0, *self.size)

    def program_id(self, window):
        """The name with which the desktop finds the icon of the window's program."""
        return next((match["program"] for match in self._top_levels(window)), None)
