# SPDX-License-Identifier: GPL-3.0-or-later
"""Recording in the window: through an unplug, to the report, and after a crash."""

import os
import re
import signal
import sqlite3
from contextlib import closing
from urllib.parse import unquote, urlparse

from support import case
from support.pages import open_page
from support.services import Opener
from support.waiting import wait_for

ROWS = re.compile(r"Rows: ([\d,]+)")
ENOUGH_ROWS = 20


class RecordingTest(case.SystemTestCase):
    def start_recording(self):
        """Starts the program and a recording, by mouse; the program."""
        home = self.make_home(self)
        home.write_settings(case.default_settings())
        self.opener = Opener(home)
        app = self.start(home=home, env={"PATH": f"{self.opener.folder}:{os.environ['PATH']}"})
        app.instrument.wait_open()
        app.click_item("Record")
        self.wait_rows(app, ENOUGH_ROWS)
        return app

    def rows(self, app):
        """The rows so far, as the record button says."""
        button = app.find("Stop recording")
        match = ROWS.search(button.description) if button else None
        return int(match.group(1).replace(",", "")) if match else 0

    def wait_rows(self, app, rows):
        wait_for(lambda: self.rows(app) >= rows, lambda: f"{rows} rows are recorded, so far {self.rows(app)}")

    def recording(self, home):
        """The path of the only recording; nothing else is beside it."""
        files = sorted((home.data / "Recordings").iterdir())
        self.assertEqual([path.suffix for path in files], [".qrec"], files)
        return files[0]

    def query(self, path, sql):
        with closing(sqlite3.connect(f"file:{path}?mode=ro", uri=True)) as connection:
            return connection.execute(sql).fetchall()

    def check_complete(self, path, reason):
        self.assertEqual(self.query(path, "PRAGMA integrity_check"), [("ok",)])
        self.assertEqual(self.query(path, "SELECT value FROM properties WHERE key = 'end_reason'"), [(reason,)])
        times = [row[0] for row in self.query(path, "SELECT t FROM measurements")]
        self.assertGreaterEqual(len(times), ENOUGH_ROWS)
        self.assertEqual(times, sorted(set(times)))

    def test_it_outlasts_an_unplug_and_ends_in_a_report(self):
        app = self.start_recording()
        app.instrument.do("unplug")
        wait_for(lambda: "Waiting for the instrument" in app.find("Stop recording").description,
                 "the record button says that the instrument is away")
        open_page(app, "wave")
        app.instrument.do("replug")
        before = self.rows(app)
        self.wait_rows(app, before + ENOUGH_ROWS)
        self.desktop.key("ctrl+r")
        app.wait_item("Recording saved")
        path = self.recording(app.home)
        self.check_complete(path, "stopped")
        self.assertEqual(self.query(path, "SELECT reason FROM gaps"), [("unplugged",)])

        app.click_item("Show report")
        address = wait_for(self.opener.opened, "the report is opened")[0]
        with open(unquote(urlparse(address).path), encoding="utf-8") as report:
            page = report.read()
        for text in ("<dt>Measurements</dt>", "Unplugged", "</html>"):
            self.assertTrue(text in page, f"{text} is in the report")
        app.click_item("Close this notice")
        app.wait_gone("Recording saved")

    def test_closing_the_window_finishes_it(self):
        app = self.start_recording()
        app.click_item("Close")
        self.assertEqual(app.wait_exit(), 0)
        self.check_complete(self.recording(app.home), "stopped")

    def test_the_next_start_finishes_what_a_crash_interrupted(self):
        crashed = self.start_recording()
        os.kill(crashed.pid, signal.SIGKILL)
        crashed.wait_exit()
        app = self.start(home=crashed.home)
        app.wait_item("A recording was interrupted")
        app.click_item("Finish it")
        app.wait_item("Recording saved")
        self.check_complete(self.recording(app.home), "interrupted")


if __name__ == "__main__":
    case.main()
