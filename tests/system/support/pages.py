# SPDX-License-Identifier: GPL-3.0-or-later
"""The tool pages: their order in the page column, and choosing one by mouse."""

import re

from .accessibility import STATE_CHECKED, STATE_SELECTED
from .waiting import wait_for

PAGES = ("gauge", "wave", "multimeter", "charge", "user", "system")
COLUMN_TOGGLE = re.compile("page list|页面")
TAB_ROLE = "page tab"

# The number of the instrument's screen that belongs to a page.
SCREENS = {"gauge": 1, "wave": 3, "multimeter": 4, "charge": 2}


def tabs(app):
    """The entries of the page column, top to bottom; their texts depend on the language."""
    found = [item for item in app.items() if item.role == TAB_ROLE]
    return found if len(found) == len(PAGES) else None


def current_page(app):
    """The name of the page chosen in the page column, or None."""
    for page, tab in zip(PAGES, tabs(app) or ()):
        if tab.has_state(STATE_CHECKED) or tab.has_state(STATE_SELECTED):
            return page
    return None


def open_page(app, page):
    """Clicks a page's entry in the page column and waits for it to be the current one."""
    tab = wait_for(lambda: tabs(app), "the page column shows")[PAGES.index(page)]
    app.desktop.click(*tab.center)
    app.desktop.move(*app.desktop.idle_place)
    wait_for(lambda: current_page(app) == page, lambda: f"page {page} is chosen, not {current_page(app)}")
