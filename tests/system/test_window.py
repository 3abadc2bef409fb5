# SPDX-License-Identifier: GPL-3.0-or-later
"""The frameless window under a real mouse: moving, maximising, all edges, and where it comes back."""

from support import case
from support.waiting import wait_for

TOLERANCE = 1
EDGE_GRIP = 3
BAR_HEIGHT = 60


def near(geometry, expected, tolerance=TOLERANCE):
    return geometry is not None and all(abs(a - b) <= tolerance for a, b in zip(geometry, expected))


class WindowTest(case.SharedApplicationTestCase):
    def setUp(self):
        if self.desktop.is_maximized(self.app.window):
            self.app.click_item("Maximize")
            wait_for(lambda: not self.desktop.is_maximized(self.app.window), "the window is restored")

    def geometry(self):
        return self.desktop.geometry(self.app.window)

    def title_bar(self):
        """A place on the title bar without a button."""
        close = self.app.wait_item("Close").center
        return self.geometry()[0] + 300, close[1]

    def wait_geometry(self, *expected):
        wait_for(lambda: near(self.geometry(), expected), lambda: f"{expected}, is {self.geometry()}")

    def test_title_bar_moves_the_window(self):
        x, y, width, height = self.geometry()
        start = self.title_bar()
        self.desktop.drag(start, (start[0] + 90, start[1] + 60))
        self.wait_geometry(x + 90, y + 60, width, height)
        start = self.title_bar()
        self.desktop.drag(start, (start[0] - 90, start[1] - 60))
        self.wait_geometry(x, y, width, height)

    def test_double_click_maximises_and_restores(self):
        before = self.geometry()
        self.desktop.double_click(*self.title_bar())
        wait_for(lambda: self.desktop.is_maximized(self.app.window), "the window is maximised")
        wait_for(lambda: self.geometry() == (0, 0, *self.screen_size),
                 lambda: f"{self.geometry()} fills the screen")
        self.desktop.double_click(*self.title_bar())
        wait_for(lambda: not self.desktop.is_maximized(self.app.window), "the window is restored")
        self.wait_geometry(*before)

    def test_dragging_a_maximised_window_restores_it(self):
        before = self.geometry()
        self.desktop.double_click(*self.title_bar())
        wait_for(lambda: self.geometry() == (0, 0, *self.screen_size), "the window fills the screen")
        start = self.title_bar()
        steps = iter(range(1, 1000))
        self.desktop.press(*start)
        self.addCleanup(self.desktop.release)

        def follows_the_mouse():
            mouse = (start[0] + 40 + next(steps) % 20, start[1] + 40)
            self.desktop.move(*mouse)
            x, y, width, height = self.geometry()
            return (near((width, height), before[2:]) and x < mouse[0] < x + width
                    and y < mouse[1] < y + BAR_HEIGHT + EDGE_GRIP)

        wait_for(follows_the_mouse, lambda: f"the window follows the mouse: {self.geometry()}")
        self.assertFalse(self.desktop.is_maximized(self.app.window))
        self.desktop.release()
        wait_for(lambda: self.geometry()[:2] != (0, 0), "it stays there")

    def test_every_edge_and_corner_resizes(self):
        for right in (-1, 0, 1):
            for down in (-1, 0, 1):
                if right or down:
                    with self.subTest(right=right, down=down):
                        self.check_edge(right, down)

    def check_edge(self, right, down):
        """Drags one edge or corner outwards and back: -1 left or top, 1 right or bottom, 0 neither."""
        before = self.geometry()
        for way in (1, -1):
            x, y, width, height = self.geometry()

            def grip(side, start, length):
                return {-1: start + EDGE_GRIP, 0: start + length // 2, 1: start + length - EDGE_GRIP}[side]

            place = (grip(right, x, width), grip(down, y, height))
            target = (place[0] + way * 40 * right, place[1] + way * 30 * down)
            self.desktop.drag(place, target)
            # The edge goes to where the mouse is; the one across stays.
            left, top = (target[0] if right < 0 else x), (target[1] if down < 0 else y)
            self.wait_geometry(left, top,
                               {-1: x + width - left, 0: width, 1: target[0] - x}[right],
                               {-1: y + height - top, 0: height, 1: target[1] - y}[down])
        self.assertTrue(near(self.geometry(), before, 2 * EDGE_GRIP), f"{self.geometry()} is {before} again")

    def test_the_smallest_size_holds(self):
        x, y, width, height = self.geometry()
        corner = (x + width - EDGE_GRIP, y + height - EDGE_GRIP)
        self.desktop.drag(corner, (x + 100, y + 100))
        wait_for(lambda: self.geometry()[2] < width and self.geometry()[3] < height,
                 "the window gets smaller")
        small = self.geometry()
        self.assertGreater(small[2], 400)
        self.assertGreater(small[3], 300)
        corner = (small[0] + small[2] - EDGE_GRIP, small[1] + small[3] - EDGE_GRIP)
        self.desktop.drag(corner, (x + width, y + height))
        self.wait_geometry(x, y, width, height)


class RestartTest(case.SystemTestCase):
    def test_the_window_comes_back_where_it_was(self):
        app = self.start()
        x, y, width, height = self.desktop.geometry(app.window)
        bar = (x + 300, app.wait_item("Close").center[1])
        self.desktop.drag(bar, (bar[0] + 77, bar[1] + 33))
        corner = (x + 77 + width - EDGE_GRIP, y + 33 + height - EDGE_GRIP)
        wait_for(lambda: near(self.desktop.geometry(app.window), (x + 77, y + 33, width, height)),
                 "it moved")
        self.desktop.drag(corner, (corner[0] - 60, corner[1] - 50))
        wait_for(lambda: near(self.desktop.geometry(app.window)[2:], (width - 60, height - 50),
                               2 * EDGE_GRIP),
                 "it shrank")
        left = self.desktop.geometry(app.window)
        app.click_item("Close")
        self.assertEqual(app.wait_exit(), 0)
        stored = app.home.settings()["windowGeometry"]
        self.assertEqual(tuple(int(stored[key]) for key in ("x", "y", "width", "height")), left)

        again = self.start(home=app.home)
        wait_for(lambda: self.desktop.geometry(again.window) == left,
                 lambda: f"{self.desktop.geometry(again.window)} is {left}")


if __name__ == "__main__":
    case.main()
