# SPDX-License-Identifier: GPL-3.0-or-later
"""The program's surroundings except the instrument: the local server, the flash tool, the desktop's opener."""

import pathlib
import subprocess
import urllib.request

from .desktop import stop_process


class LocalServer:
    """The local server on free ports; a context manager."""

    def __init__(self, build, *options):
        self._command = [pathlib.Path(build) / "tools/local-server", "--api-port", "0", "--docs-port", "0", *options]
        self.process = None
        self.api = None
        self.api_port = None

    def __enter__(self):
        self.process = subprocess.Popen(self._command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.api = self.process.stdout.readline().split()[-1]
        self.api_port = int(self.api.rsplit(":", 1)[1])
        self.process.stdout.readline()  # the manual's address
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.stdout.close()
        stop_process(self.process)

    def do(self, command):
        """Sends one command, for example "fault /download/* slow". Raises when the server refuses it."""
        request = urllib.request.Request(f"{self.api}/control", data=command.encode())
        with urllib.request.urlopen(request) as reply:
            return reply.read().decode()

    def get(self, path):
        with urllib.request.urlopen(self.api + path) as reply:
            return reply.read()


class FlashTool:
    """The stand-in for the flash tool, writing into a file of the home folder."""

    def __init__(self, build, home):
        self.image = home.path / "flash.img"
        self._control = home.path / "flash.conf"
        self._folder = pathlib.Path(build) / "tools/flash-stand-in"

    def environment(self, path):
        """The environment for the program, with the tool first on the given PATH."""
        return {"PATH": f"{self._folder}:{path}", "QUORVEL_FLASH_IMAGE": str(self.image),
                "QUORVEL_FLASH_CONTROL": str(self._control)}

    def play(self, **values):
        """Sets the behaviour from its next start, for example SPEED=0, FAIL_AT=50."""
        self._control.write_text("".join(f"QUORVEL_FLASH_{name}={value}\n" for name, value in values.items()))

    def content(self, address, size):
        """The content of the flash; empty before the first write."""
        if not self.image.exists():
            return b""
        with open(self.image, "rb") as image:
            image.seek(address)
            return image.read(size)


class Opener:
    """A script that replaces the desktop's opener and records its arguments."""

    def __init__(self, home):
        self.folder = home.path / "bin"
        self.folder.mkdir()
        self._note = home.path / "opened.txt"
        script = self.folder / "xdg-open"
        script.write_text(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >>'{self._note}'\n")
        script.chmod(0o755)

    def opened(self):
        return self._note.read_text().splitlines() if self._note.exists() else []
