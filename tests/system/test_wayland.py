# SPDX-License-Identifier: GPL-3.0-or-later
"""The program on a Wayland desktop, where the system moves and resizes windows and places them as it likes."""

import re

from support import case
from support.pages import open_page
from support.waiting import wait_for
from support.wayland import WaylandDesktop

BAR = (300, 25)
CORNER = (3, 3)
STORED = {"valid": "true", "x": 500, "y": 300, "width": 911, "height": 631}


class WaylandTest(case.SystemTestCase):
    desktop_type = WaylandDesktop
    screen_size = (1280, 800)

    def geometry(self):
        return self.desktop.geometry(self.app.window)

    def place(self, offset):
        """A place on the screen by its offset from the corner of the window."""
        return tuple(a + b for a, b in zip(self.geometry(), offset))

    def drag(self, offset, right, down, *expected):
        """Drags and waits for the geometry expected. The system sees only movements after it took the drag over."""
        before = self.geometry()
        x, y = self.place(offset)
        self.desktop.press(x, y)

        def go(*shares):
            for share in shares:
                self.desktop.xdotool("mousemove", x + round(right * share), y + round(down * share))

        def taken_over():
            go(0.5, 0.75)
            return self.geometry() != before

        def arrived():
            # A resize is drawn some time after the mouse has moved; a move is immediate.
            if self.geometry()[2:] == expected[2:] and self.geometry() != expected:
                go(0.75, 1)
            return self.geometry() == expected

        wait_for(taken_over, "the system takes the drag over")
        go(1)
        wait_for(arrived, lambda: f"{expected}, is {self.geometry()}")
        self.desktop.release()

    def test_from_start_to_end(self):
        self.app = self.start(settings={**case.default_settings(), "windowGeometry": STORED})
        x, y, width, height = self.geometry()
        self.assertEqual((width, height), (STORED["width"], STORED["height"]))
        self.assertEqual(self.desktop.program_id(self.app.window), "org.quorvel.Quorvel")

        self.drag(BAR, 30, 40, x + 30, y + 40, width, height)
        # The corner whose resize also moves the window, twice: the press of the first must have ended.
        self.drag(CORNER, -15, -20, x + 15, y + 20, width + 15, height + 20)
        self.drag(CORNER, 15, 20, x + 30, y + 40, width, height)

        self.desktop.double_click(*self.place(BAR))
        wait_for(lambda: self.desktop.is_maximized(self.app.window), "the window is maximised")
        self.app.wait_item(re.compile(r"^Voltage [45]\.\d{3} V"))
        self.assertIsNone(self.app.find("Topmost"))
        for page in ("system", "charge"):
            open_page(self.app, page)
        self.app.wait_item(re.compile(r"^CC1 1\.\d\dV"))
        # Weston leaves maximised windows alone, so the window restores itself.
        self.drag(BAR, -20, 160, x + 10, y + 200, width, height)

        self.desktop.click(*self.place(self.app.wait_item("Close").center))
        self.assertEqual(self.app.wait_exit(), 0)
        stored = self.app.home.settings()["windowGeometry"]
        self.assertEqual({key: int(stored[key]) for key in ("x", "y", "width", "height")},
                         {key: STORED[key] for key in ("x", "y", "width", "height")})


if __name__ == "__main__":
    case.main()
