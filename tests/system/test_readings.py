# SPDX-License-Identifier: GPL-3.0-or-later
"""From the instrument to the screen and back: readings, unplugging, pages in step with the instrument."""

import re
import time

from support import case
from support.pages import SCREENS, current_page, open_page
from support.waiting import wait_for

EMPTY_VALUES = ("Voltage --", "Current --", "Capacity --")
EMPTY_PAGES = {
    "gauge": ("Not Connected", *EMPTY_VALUES, "Time 00:00:00"),
    "wave": ("Device Status Not Connected", "Output Current -- A", "Input Voltage -- V", "Capacity -- mAh"),
    "multimeter": ("Not Connected",),
    "charge": ("Device Status Not Connected", "Voltage --", "Current --", "Power --", "Capacity Counter --",
               "Elapsed Time 00:00:00", "CC1 --", "CC2 --", "D+ --", "D- --"),
}


class ReadingsTest(case.SharedApplicationTestCase):
    def setUp(self):
        open_page(self.app, "gauge")

    def shows(self, *texts):
        """Waits until every text is the start of some item's name."""
        def missing():
            shown = self.app.texts()
            return [text for text in texts if not any(name.startswith(text) for name in shown)]
        wait_for(lambda: not missing(), lambda: f"{missing()} shows; shown: {self.app.texts()}")

    def test_values_of_the_instrument_are_on_the_screen(self):
        self.instrument.do("set mainInputVoltage 4.321")
        self.instrument.do("set mainOutputCurrent 1.25")
        self.instrument.do("set mainTimeSec 3725")
        self.shows("Connected", "Voltage 4.321 V", "Current 1.250 A", "Time 01:02:05")
        card = self.app.find("Voltage 4.321 V")
        first = self.desktop.picture(card.extents)
        self.instrument.do("set mainInputVoltage 5.678")
        self.shows("Voltage 5.678 V")
        wait_for(lambda: self.desktop.picture(card.extents) != first, "the pixels change with the value")
        self.instrument.do("auto all")

    def test_unplugged_and_plugged_in_again(self):
        self.shows("Connected")
        self.instrument.do("unplug")
        self.shows("Not Connected", *EMPTY_VALUES, "Time 00:00:00")
        self.instrument.do("replug")
        self.shows("Connected")
        wait_for(lambda: self.app.find(re.compile(r"^Voltage [45]\.\d{3} V")), "readings return")

    def test_every_page_is_empty_without_an_instrument(self):
        self.instrument.do("unplug")
        for page, texts in EMPTY_PAGES.items():
            with self.subTest(page=page):
                open_page(self.app, page)
                self.shows(*texts)
                numbers = [text for text in self.app.texts()
                           if re.search(r"\d\.\d", text) and "Range" not in text]
                self.assertEqual(numbers, [])
        self.instrument.do("replug")
        open_page(self.app, "charge")
        wait_for(lambda: self.app.find(re.compile(r"^CC1 1\.\d\dV")), "readings return")

    def test_pages_follow_the_instrument_without_an_answer(self):
        before = len(self.instrument.screen_requests())
        for page in ("multimeter", "charge", "wave", "gauge", "multimeter"):
            self.instrument.do(f"screen {SCREENS[page]}")
            wait_for(lambda page=page: current_page(self.app) == page, f"page {page} shows")
        # A click afterwards causes the only request, so the earlier page changes caused none.
        open_page(self.app, "gauge")
        wait_for(lambda: len(self.instrument.screen_requests()) > before, "the click is sent")
        self.assertEqual(self.instrument.screen_requests()[before:], [(1, 1, 255, 255, 255)])

    def test_the_instrument_follows_the_pages(self):
        before = len(self.instrument.screen_requests())
        for page in ("wave", "multimeter", "charge", "user", "system", "gauge"):
            open_page(self.app, page)
            if page in SCREENS:
                wait_for(lambda page=page: self.instrument.status()["screen"] == str(SCREENS[page]),
                         f"the instrument shows screen {SCREENS[page]}")
        self.assertEqual([request[:2] for request in self.instrument.screen_requests()[before:]],
                         [(1, 3), (1, 4), (1, 2), (1, 1)])

    def test_pages_left_while_they_load(self):
        for attempt in range(24):
            self.instrument.do(f"screen {SCREENS['wave']}")
            # A different moment during the loading of the page each time.
            time.sleep(0.012 * attempt)
            self.instrument.do(f"screen {SCREENS['gauge']}")
            wait_for(lambda: current_page(self.app) == "gauge", "the gauge shows")
        self.shows("Connected", "Voltage")

    def test_broken_packets_leave_the_screen_alone(self):
        self.instrument.do("set mainInputVoltage 4.444")
        self.shows("Voltage 4.444 V")
        for command in ("garbage 200", "zero 50", "truncated 10 40", "write-errors 0", "drain"):
            self.instrument.do(command)
        self.assertIsNotNone(self.app.find("Voltage 4.444 V"))
        self.assertIsNotNone(self.app.find("Connected"))
        self.instrument.do("auto all")

    def test_the_window_stays_responsive_at_the_full_rate(self):
        self.instrument.do("burst 100000 1000")
        for page in ("charge", "gauge", "multimeter", "gauge"):
            open_page(self.app, page)
        self.instrument.do("burst 1")
        self.instrument.do("drain")
        self.assertEqual(self.instrument.status()["backlog"], "0")


if __name__ == "__main__":
    case.main()
