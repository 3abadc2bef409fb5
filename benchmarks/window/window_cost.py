#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the window costs, as ratios against an empty Qt Quick window with the same imports.

  start   time from process start to the first rendered frame, with a cold and a warm QML cache
  memory  proportional set size with live readings on the needle gauge
  cpu     share of a core with the needle moving, against one rotating line in the empty window

Run it in a display (`xvfb-run -a benchmarks/window/window_cost.py`). Each row is printed for the software scene graph
and for OpenGL, which the processor renders, so that results from different machines can be compared. Medians of
several runs.
"""

import argparse
import contextlib
import os
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
FIRST_FRAME = b"Frame rendered"
START_TIMEOUT_S = 30
START_AIMS = {"cold": 1.35, "warm": 1.25}
MEMORY_AIM = 1.15
CPU_AIM = 1.5
SETTLE_S = 6
CPU_WINDOW_S = 8


def environment(home, backend):
    env = dict(os.environ, HOME=str(home), LIBGL_ALWAYS_SOFTWARE="1", QT_QPA_PLATFORM="xcb")
    env["QT_LOGGING_RULES"] = "qt.scenegraph.time.renderloop=true"
    env["QT_QUICK_BACKEND"] = backend
    for name in ("XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "DBUS_SESSION_BUS_ADDRESS"):
        env.pop(name, None)
    return env


@contextlib.contextmanager
def running(command, home, backend):
    """The command in a session of its own, told to end; it ends its own children."""
    process = subprocess.Popen(command, env=environment(home, backend), stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE, start_new_session=True)
    try:
        yield process
    finally:
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGTERM)
        try:
            process.communicate(timeout=5)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            process.communicate()


def wait_for_first_frame(process):
    deadline = time.monotonic() + START_TIMEOUT_S
    for line in process.stderr:
        if FIRST_FRAME in line:
            return
        if time.monotonic() > deadline:
            break
    sys.exit(f"no frame from {process.args}")


def start_time_s(command, home, backend):
    started = time.monotonic()
    with running(command, home, backend) as process:
        wait_for_first_frame(process)
        return time.monotonic() - started


def drain(process, seconds):
    """Lets the process run on without blocking on its log."""
    os.set_blocking(process.stderr.fileno(), False)
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        process.stderr.read()
        time.sleep(0.05)


def descendant(process, name):
    """The process of the given name in the session that the command started."""
    for entry in Path("/proc").iterdir():
        if not entry.name.isdigit():
            continue
        with contextlib.suppress(OSError):
            if os.getsid(int(entry.name)) == process.pid and (entry / "comm").read_text().strip() == name:
                return int(entry.name)
    sys.exit(f"{name} does not run")


def pss_kib(pid):
    for line in Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith("Pss:"):
            return int(line.split()[1])
    sys.exit("no Pss in smaps_rollup")


def cpu_s(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")


def live_cost(command, name, home, backend):
    """(PSS in KiB, share of a core) of the process `name` once it has settled."""
    with running(command, home, backend) as process:
        wait_for_first_frame(process)
        drain(process, SETTLE_S)
        pid = descendant(process, name)
        before = cpu_s(pid)
        drain(process, CPU_WINDOW_S)
        return pss_kib(pid), (cpu_s(pid) - before) / CPU_WINDOW_S


def report(title, value, floor, unit, aim):
    """Prints one row. Returns whether its aim is met."""
    ratio = value / floor
    print(f"{title:44} {value:9.3f} {unit:4} floor {floor:9.3f} {unit:4} ratio {ratio:5.2f}x (aim {aim}x)", flush=True)
    return ratio <= aim


def measure(build, runs, name, backends):
    """Prints the rows of one back end. Returns whether all aims are met.

    The backends are the values of QT_QUICK_BACKEND for the empty window and for the program.
    """
    program = [str(build / "quorvel")]
    live = [str(build / "tools/virtual-instrument"), "--", *program]
    empty = [str(build / "benchmarks/window/empty_window")]

    starts = {"cold": ([], []), "warm": ([], [])}
    for _ in range(runs):
        for command, index in ((empty, 0), (program, 1)):
            home = Path(tempfile.mkdtemp())
            for cache in starts:
                starts[cache][index].append(start_time_s(command, home, backends[index]))
            shutil.rmtree(home, ignore_errors=True)
    met = [report(f"start to first frame, {cache} cache, {name}", statistics.median(value), statistics.median(floor),
                  "s", START_AIMS[cache]) for cache, (floor, value) in starts.items()]

    costs = {"floor": [], "value": []}
    for _ in range(max(1, runs // 2)):
        with tempfile.TemporaryDirectory() as home:
            costs["floor"].append(live_cost([*empty, "--rotating-line"], "empty_window", home, backends[0]))
        with tempfile.TemporaryDirectory() as home:
            prepare_window(home)
            costs["value"].append(live_cost(live, "quorvel", home, backends[1]))
    median = {key: [statistics.median(column) for column in zip(*rows)] for key, rows in costs.items()}
    met.append(report(f"memory with the gauge live (PSS), {name}", median["value"][0] / 1024,
                      median["floor"][0] / 1024, "MiB", MEMORY_AIM))
    met.append(report(f"CPU share with the needle moving, {name}", median["value"][1], median["floor"][1], "core",
                      CPU_AIM))
    return all(met)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--build", type=Path, default=ROOT / "build/ci-release", help="build folder")
    parser.add_argument("--runs", type=int, default=5, help="runs of each kind")
    options = parser.parse_args()
    met = [measure(options.build, options.runs, "software", ("software", "software")),
           # The program takes OpenGL only when it is named; Qt takes it by itself.
           measure(options.build, options.runs, "OpenGL", ("", "opengl"))]
    return 0 if all(met) else 2


def prepare_window(home):
    """Makes the application open at the size of the empty window."""
    folder = Path(home) / "Documents/Quorvel"
    folder.mkdir(parents=True)
    (folder / "Quorvel.ini").write_text("[windowGeometry]\nvalid=true\nx=0\ny=0\nwidth=1280\nheight=720\n")


if __name__ == "__main__":
    sys.exit(main())
