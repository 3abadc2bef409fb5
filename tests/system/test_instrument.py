# SPDX-License-Identifier: GPL-3.0-or-later
"""The virtual instrument as a program: its exit status, its faults, and that no process remains."""

import os
import pathlib
import signal
import subprocess
import tempfile
import unittest

from support import case
from support.waiting import wait_for

TIMEOUT_S = 20


def is_running(pid):
    """Returns whether a process runs. One that ended and waits for its parent does not run."""
    try:
        status = pathlib.Path(f"/proc/{pid}/stat").read_text(encoding="ascii")
        return status.rsplit(")", 1)[1].split()[0] != "Z"
    except OSError:
        return False


class VirtualInstrumentTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quorvel-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def command(self, *arguments):
        return [case.build_folder() / "tools/virtual-instrument", *arguments]

    def run_instrument(self, *arguments):
        return subprocess.run(self.command(*arguments), capture_output=True, text=True, timeout=TIMEOUT_S,
                              check=False)

    def test_exit_status_is_the_programs(self):
        for program, status in (("exit 0", 0), ("exit 7", 7), ("kill -SEGV $$", 128 + signal.SIGSEGV)):
            with self.subTest(program=program):
                self.assertEqual(self.run_instrument("--", "sh", "-c", program).returncode, status)

    def test_faults_of_the_command_line(self):
        scenario = self.folder / "wrong"
        scenario.write_text("1 unplug\n2 jump\n", encoding="utf-8")
        for arguments, status, text in ((("--scenario", scenario, "--", "true"), 2, "line 2: unknown command"),
                                        (("--scenario", "none", "--", "true"), 2, "no scenario"),
                                        ((), 2, "name the program"),
                                        (("--", self.folder / "none"), 127, "cannot be started")):
            with self.subTest(arguments=arguments):
                result = self.run_instrument(*arguments)
                self.assertEqual(result.returncode, status)
                self.assertIn(text, result.stderr)

    def test_every_scenario_that_ships_is_listed_and_valid(self):
        listed = self.run_instrument("--help").stdout
        for name in ("bench", "tour", "faults", "two-interfaces", "no-permission", "boot-mode", "unplugged"):
            self.assertIn(name, listed)
            self.assertEqual(self.run_instrument("--scenario", name, "--", "true").returncode, 0)

    def test_a_scenario_ends_the_program(self):
        scenario = self.folder / "end"
        scenario.write_text("0.2 exit 9\n", encoding="utf-8")
        self.assertEqual(self.run_instrument("--scenario", scenario, "--", "sleep", "60").returncode, 9)

    def start_group(self):
        """Starts a program with a child under the instrument. Returns (instrument, both process ids)."""
        pids = self.folder / "pids"
        script = f"sleep 60 & echo $! $$ > {pids}.new; mv {pids}.new {pids}; wait"
        instrument = subprocess.Popen(self.command("--", "sh", "-c", script))
        self.addCleanup(instrument.kill)
        wait_for(pids.exists, "the program runs")
        return instrument, [int(pid) for pid in pids.read_text(encoding="ascii").split()]

    def check_gone(self, pids):
        wait_for(lambda: not any(is_running(pid) for pid in pids), "every process of the group ends")

    def test_told_to_stop_it_ends_the_whole_group(self):
        instrument, pids = self.start_group()
        instrument.send_signal(signal.SIGTERM)
        self.assertEqual(instrument.wait(TIMEOUT_S), 128 + signal.SIGTERM)
        self.check_gone(pids)

    def test_what_the_program_leaves_behind_is_told_and_ended(self):
        pid_file = self.folder / "pid"
        result = self.run_instrument("--", "sh", "-c", f"sleep 60 >/dev/null 2>&1 & echo $! > {pid_file}")
        self.assertEqual(result.returncode, 0)
        self.assertIn("left processes behind", result.stderr)
        self.check_gone([int(pid_file.read_text(encoding="ascii"))])

    def test_the_program_does_not_outlive_a_killed_instrument(self):
        instrument, pids = self.start_group()
        self.addCleanup(lambda: [os.kill(pid, signal.SIGKILL) for pid in pids if is_running(pid)])
        instrument.kill()
        instrument.wait(TIMEOUT_S)
        wait_for(lambda: not is_running(pids[1]), "the program ends")


if __name__ == "__main__":
    case.main()
