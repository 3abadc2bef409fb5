# SPDX-License-Identifier: GPL-3.0-or-later
"""The virtual instrument of a run: its control socket and its trace."""

import pathlib
import re
import socket

from .waiting import wait_for

REPLY_TIMEOUT_S = 60


class InstrumentError(AssertionError):
    """The instrument refused a command."""


class Instrument:
    """Commands to the virtual instrument, and the packets that it got from the host."""

    def __init__(self, control_path, trace_path):
        self._trace = pathlib.Path(trace_path)
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.settimeout(REPLY_TIMEOUT_S)
        wait_for(lambda: self._connected(str(control_path)), "the virtual instrument takes commands")
        self._stream = self._socket.makefile("rw", encoding="utf-8")

    def _connected(self, path):
        try:
            self._socket.connect(path)
            return True
        except OSError:
            return False

    def close(self):
        self._stream.close()
        self._socket.close()

    def do(self, command):
        """Sends one command. Returns the reply after "ok"."""
        self._stream.write(command + "\n")
        self._stream.flush()
        reply = self._stream.readline().strip()
        if not reply.startswith("ok"):
            raise InstrumentError(f"{command}: {reply or 'no reply'}")
        return reply[2:].strip()

    def status(self):
        return dict(pair.split("=", 1) for pair in self.do("status").split())

    def wait_open(self):
        """Waits until the program has the instrument open."""
        wait_for(lambda: self.status()["open"] == "1", "the program opens the instrument")

    def events(self):
        """The trace's lines without their times."""
        return [line.split(" ", 1)[1] for line in self._trace.read_text(encoding="utf-8").splitlines()]

    def screen_requests(self):
        """The UI-control packets of the host so far: (direction, layer0, layer1, layer2, layer3) each."""
        lines = [line for line in self.events() if line.startswith("host ui-control")]
        return [tuple(int(number) for number in re.findall(r"=(\d+)", line)) for line in lines]
