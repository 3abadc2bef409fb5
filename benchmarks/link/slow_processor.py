#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs a command in which a program can have its processor made slower than this one.

The program sends SIGUSR1 to the process named by the variable SLOW_PROCESSOR. From then on all of its threads
together get the given share of one processor, in turns of a few milliseconds. This needs a control group, which only
the superuser may make.
"""

import argparse
import os
import pathlib
import signal
import subprocess
import sys
import threading

# The threads run and rest at least once in this time, in microseconds. A longer one would be no slow processor: it
# would stop the program for so long that a real system drops reports.
PERIOD_US = 10_000


class Limit:
    """A control group with a share of one processor, of either version of the kernel's interface."""

    def __init__(self, share):
        root = pathlib.Path("/sys/fs/cgroup")
        name = f"quorvel-slow-{os.getpid()}"
        quota = max(1000, int(PERIOD_US * share))
        if (root / "cpu").is_dir():
            self.group = root / "cpu" / name
            self.group.mkdir()
            (self.group / "cpu.cfs_period_us").write_text(str(PERIOD_US))
            (self.group / "cpu.cfs_quota_us").write_text(str(quota))
        else:
            self.group = root / name
            self.group.mkdir()
            (self.group / "cpu.max").write_text(f"{quota} {PERIOD_US}")

    def apply(self, pid):
        # One processor, whose share the threads divide fairly: with two, the first thread to run takes all of it.
        for thread in os.listdir(f"/proc/{pid}/task"):
            os.sched_setaffinity(int(thread), {min(os.sched_getaffinity(0))})
        (self.group / "cgroup.procs").write_text(str(pid))

    def remove(self):
        self.group.rmdir()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("share", type=float, help="share of one processor, 0.1 to 1")
    parser.add_argument("command", nargs=argparse.REMAINDER)
    arguments = parser.parse_args()
    try:
        limit = Limit(arguments.share)
    except OSError as error:
        print(f"{pathlib.Path(sys.argv[0]).name}: no control group: {error}")
        return 1
    signal.pthread_sigmask(signal.SIG_BLOCK, {signal.SIGUSR1})
    # The signal says which process sent it: the command may be a wrapper around the program.
    slow_down = threading.Thread(target=lambda: limit.apply(signal.sigwaitinfo({signal.SIGUSR1}).si_pid), daemon=True)
    slow_down.start()
    try:
        environment = {**os.environ, "SLOW_PROCESSOR": str(os.getpid())}
        return subprocess.run(arguments.command, env=environment, check=False).returncode
    finally:
        limit.remove()


if __name__ == "__main__":
    sys.exit(main())
