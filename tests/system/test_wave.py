# SPDX-License-Identifier: GPL-3.0-or-later
"""The wave page under a real mouse: pause, zoom, drag, read-out, overview; recording goes on meanwhile."""

import re

from support import case
from support.pages import open_page
from support.waiting import wait_for

VIEW_SAMPLES = 60
CHART_ROLE = "chart"
#: A part of the chart where its plot surely is.
PLOT_LEFT, PLOT_RIGHT = 0.15, 0.8


class WaveTest(case.SharedApplicationTestCase):
    settings = {**case.default_settings(), "powerWaveAnalysis": {"controlPanelCollapsed": "false"}}

    def setUp(self):
        # A page that is opened anew starts with an empty recording.
        open_page(self.app, "gauge")
        open_page(self.app, "wave")
        self.app.wait_item("Pause")

    def chart(self):
        return next(item for item in self.app.items() if item.role == CHART_ROLE)

    def place(self, fraction):
        """A place on the chart, at a fraction of its width."""
        x, y, width, height = self.chart().extents
        return x + width * fraction, y + height * 0.4

    def index(self):
        """The sample that the read-out tells of, or None while it is hidden."""
        item = self.app.find(re.compile(r"^Index: \d+$"))
        return int(item.name.split()[1]) if item else None

    def wait_index(self):
        return wait_for(lambda: (lambda index: None if index is None else (index,))(self.index()),
                        lambda: f"the read-out shows: {self.app.texts()}")[0]

    def pause(self):
        """Pauses; the newest sample's index."""
        self.app.click_item("Pause")
        self.app.wait_item("Play")
        self.desktop.move(*self.desktop.idle_place)
        return self.wait_index()

    def play(self):
        self.app.click_item("Play")
        self.app.wait_item("Pause")

    def record(self, samples):
        """Lets the recording grow to at least so many samples, and pauses; the newest sample's index."""
        while True:
            newest = self.pause()
            if newest + 1 >= samples:
                return newest
            self.play()
            self.wait_packets(2 * (samples - newest))

    def wait_packets(self, count):
        before = int(self.instrument.status()["sent"])
        wait_for(lambda: int(self.instrument.status()["sent"]) >= before + count,
                 f"{count} packets are sent", timeout_s=60)

    def settled_picture(self):
        """The chart's pixels once they stand still."""
        pictures = []

        def settled():
            pictures.append(self.desktop.picture(self.chart().extents))
            return pictures[-1] if pictures[-2:-1] == [pictures[-1]] else None

        return wait_for(settled, "the chart stands still")

    def test_paused_view_stands_still_and_recording_goes_on(self):
        self.instrument.do("set mainInputVoltage 4.5")
        self.instrument.do("set mainOutputCurrent 1.25")
        self.wait_packets(20)
        newest = self.pause()
        self.app.wait_item("Voltage: 4.500 V")
        self.app.wait_item("Current: 1.250 A")
        picture = self.settled_picture()
        self.instrument.do("set mainInputVoltage 3.1")
        self.wait_packets(30)
        self.assertTrue(self.desktop.picture(self.chart().extents) == picture, "the chart is as it was")
        self.assertEqual(self.index(), newest)
        self.play()
        wait_for(lambda: self.desktop.picture(self.chart().extents) != picture, "the chart moves again")
        self.assertGreater(self.pause(), newest + 10)
        self.app.wait_item("Voltage: 3.100 V")
        self.instrument.do("auto all")

    def test_drag_moves_the_view_and_hover_reads_it_out(self):
        newest = self.record(VIEW_SAMPLES + 40)
        self.desktop.move(*self.place(PLOT_RIGHT))
        self.desktop.move(*self.place(PLOT_RIGHT - 0.05))
        before = self.wait_index()
        self.desktop.drag(self.place(PLOT_LEFT), self.place(PLOT_RIGHT))
        self.desktop.move(*self.place(PLOT_RIGHT - 0.05))
        wait_for(lambda: self.index() is not None and self.index() < before - 20,
                 lambda: f"older samples show: {self.index()}, before {before}, newest {newest}")
        right = self.wait_index()
        self.desktop.move(*self.place(PLOT_LEFT + 0.05))
        wait_for(lambda: self.index() is not None and self.index() < right - 20,
                 "the read-out follows the mouse")
        self.desktop.move(*self.desktop.idle_place)
        wait_for(lambda: self.index() is None, "the read-out goes with the mouse")

    def test_overview_goes_anywhere(self):
        newest = self.record(VIEW_SAMPLES * 2)
        x, y, width, height = self.chart().extents
        window = self.desktop.geometry(self.app.window)
        strip = (y + height + window[1] + window[3]) / 2 - 5
        self.desktop.click(x + width * 0.02, strip)
        first = self.wait_index()
        self.assertLess(first, VIEW_SAMPLES)
        self.desktop.drag((x + width * 0.1, strip), (x + width * 0.98, strip))
        wait_for(lambda: (self.index() or 0) > newest - VIEW_SAMPLES,
                 lambda: f"the end shows: {self.index()}")

    def test_recording_goes_on_through_a_resize(self):
        before = self.record(10)
        self.play()
        x, y, width, height = self.desktop.geometry(self.app.window)
        corner = (x + width - 3, y + height - 3)
        self.desktop.drag(corner, (corner[0] - 150, corner[1] - 100), steps=30)
        self.desktop.drag((corner[0] - 153, corner[1] - 103), corner, steps=30)
        wait_for(lambda: abs(self.desktop.geometry(self.app.window)[2] - width) < 12,
                 "the window is as before")
        self.assertGreater(self.pause(), before + 10)

    def test_nothing_is_lost_by_an_unplug(self):
        newest = self.record(VIEW_SAMPLES + 10)
        self.instrument.do("unplug")
        self.app.wait_item("Device Status Not Connected")
        self.assertEqual(self.index(), newest)
        # Unplugged in the middle of a drag as well.
        self.desktop.drag(self.place(PLOT_LEFT), self.place(PLOT_RIGHT))
        self.play()
        kept = self.pause()
        self.assertGreaterEqual(kept, newest)
        self.play()
        self.assertEqual(self.pause(), kept)
        self.play()
        self.instrument.do("replug")
        self.app.wait_item("Device Status Connected")
        self.assertGreater(self.record(kept + 10), kept)


if __name__ == "__main__":
    case.main()
