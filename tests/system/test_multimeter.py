# SPDX-License-Identifier: GPL-3.0-or-later
"""The multimeter page: functions switched from both sides, steady readings recorded, rows deleted."""

import re

from support import case
from support.accessibility import STATE_CHECKED
from support.pages import current_page, open_page
from support.waiting import wait_for

FUNCTIONS = ("Voltage", "Resistance", "Capacitance", "Diode", "Buzzer")
FUNCTION_ROLE = "radio button"
ROW_ROLE = "row"


class MultimeterTest(case.SharedApplicationTestCase):
    def setUp(self):
        self.instrument.do("reading OL")
        open_page(self.app, "multimeter")
        self.app.click_item("Clear")
        wait_for(lambda: not self.rows(), "the table is empty")

    def rows(self):
        """The table's rows from top to bottom."""
        rows = [item for item in self.app.items() if item.role == ROW_ROLE]
        return sorted(rows, key=lambda item: item.extents[1])

    def checked_functions(self):
        """The chosen function as assistive technology sees it."""
        return [item.name for item in self.app.items()
                if item.role == FUNCTION_ROLE and item.has_state(STATE_CHECKED)]

    def voltages(self):
        return [re.search(r"Voltage (\S+),", row.name)[1] for row in self.rows()]

    def show_reading(self, text):
        """Makes the instrument hold a reading until it is on the screen."""
        self.instrument.do(f"reading {text}")
        self.app.wait_item(re.compile(r"Gear " + re.escape(re.match(r"[-\d.]+|\w+", text)[0])))

    def record(self, text):
        before = len(self.rows())
        self.show_reading(text)
        wait_for(lambda: len(self.rows()) == before + 1, f"{text} is recorded")

    def test_a_click_switches_the_instrument(self):
        self.instrument.do("reading auto")
        for number, function in reversed(list(enumerate(FUNCTIONS))):
            self.app.click_item(function)
            self.app.wait_item(re.compile(f"^{function} Gear"))
            wait_for(lambda number=number: self.instrument.status()["function"] == str(number),
                     f"the instrument measures {function}")
            self.assertEqual(self.instrument.screen_requests()[-1], (1, 4, number, 255, 255))
            # A late reading of the former function may show that function until the next reading.
            wait_for(lambda function=function: self.checked_functions() == [function],
                     lambda: f"only {function} is checked: {self.checked_functions()}")

    def test_the_page_follows_the_instrument(self):
        self.instrument.do("reading auto")
        before = len(self.instrument.screen_requests())
        for number in (1, 2, 3, 4, 0):
            self.instrument.do(f"function {number}")
            self.app.wait_item(re.compile(f"^{FUNCTIONS[number]} Gear"))
        self.assertEqual(current_page(self.app), "multimeter")
        # A click afterwards causes the only request.
        self.app.click_item("Diode")
        wait_for(lambda: self.instrument.status()["function"] == "3", "the click is sent")
        self.assertEqual(self.instrument.screen_requests()[before:], [(1, 4, 3, 255, 255)])
        self.app.click_item("Voltage")
        wait_for(lambda: self.instrument.status()["function"] == "0", "the instrument measures voltage")

    def test_buzzer_stays_chosen_though_it_reports_diode(self):
        self.app.click_item("Buzzer")
        wait_for(lambda: self.instrument.status()["function"] == "4", "the instrument is a buzzer")
        self.show_reading("0.021V")
        self.assertIsNotNone(self.app.find(re.compile("^Buzzer Gear 0.021 V")))
        self.app.click_item("Voltage")
        self.app.wait_item(re.compile("^Voltage Gear"))

    def test_steady_readings_are_recorded_once_newest_first(self):
        self.app.click_item("Voltage")
        self.record("1.234V")
        self.show_reading("OL")
        self.record("2.500V")
        # The first reading returns within the time in which it is not recorded again.
        self.show_reading("1.234V")
        self.record("3.750V")
        self.assertEqual(self.voltages(), ["3.750V", "2.500V", "1.234V"])
        self.assertIn("Resistance --", self.rows()[0].name)

    def test_an_unplug_empties_reading_and_table(self):
        self.app.click_item("Voltage")
        self.record("1.500V")
        self.instrument.do("unplug")
        self.app.wait_item("Not Connected")
        self.app.wait_item(re.compile("Gear --"))
        self.assertEqual(self.rows(), [])
        self.instrument.do("replug")
        self.record("1.700V")


if __name__ == "__main__":
    case.main()
