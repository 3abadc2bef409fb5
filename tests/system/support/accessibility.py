# SPDX-License-Identifier: GPL-3.0-or-later
"""Reads a program's window as assistive technology does: names, roles, states and places of its items."""

import gi

gi.require_version("Gio", "2.0")
from gi.repository import Gio, GLib  # noqa: E402

CALL_TIMEOUT_MS = 5000
ACCESSIBLE = "org.a11y.atspi.Accessible"
COMPONENT = "org.a11y.atspi.Component"
PROPERTIES = "org.freedesktop.DBus.Properties"
ROOT_PATH = "/org/a11y/atspi/accessible/root"
SCREEN_COORDINATES = 0

# Bits of the state set.
STATE_CHECKED = 4
STATE_ENABLED = 8
STATE_FOCUSED = 12
STATE_SELECTED = 23
STATE_SHOWING = 25
STATE_VISIBLE = 30


def _connect(address):
    flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
    connection = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
    connection.set_exit_on_close(False)
    return connection


class Item:
    """One accessible item at the time of the look-up."""

    def __init__(self, bus, owner, path):
        self.bus = bus
        self.owner = owner
        self.path = path
        self.name = ""
        self.description = ""
        self.role = ""
        self.extents = (0, 0, 0, 0)  # x, y, width, height on the screen
        self.states = 0
        self.children = []

    def __repr__(self):
        return f"<{self.role} {self.name!r} {self.extents}>"

    def has_state(self, state):
        return bool(self.states >> state & 1)

    @property
    def center(self):
        x, y, width, height = self.extents
        return x + width / 2, y + height / 2

    def contains(self, other):
        """Returns whether another item's middle is inside this one."""
        x, y, width, height = self.extents
        other_x, other_y = other.center
        return x <= other_x <= x + width and y <= other_y <= y + height

    # Properties to ask for, each with the function that stores the answer.

    def _keep(self, attribute):
        return lambda answer: setattr(self, attribute, answer[0])

    def _keep_states(self, answer):
        words = answer[0]
        self.states = sum(word << (32 * index) for index, word in enumerate(words))

    def _keep_children(self, answer):
        self.children = [Item(self.bus, owner, path) for owner, path in answer[0]]

    def _property(self, name):
        return PROPERTIES, "Get", GLib.Variant("(ss)", (ACCESSIBLE, name))

    def questions(self):
        return [
            (self._property("Name"), self._keep("name")),
            (self._property("Description"), self._keep("description")),
            ((ACCESSIBLE, "GetRoleName", None), self._keep("role")),
            ((ACCESSIBLE, "GetState", None), self._keep_states),
            ((ACCESSIBLE, "GetChildren", None), self._keep_children),
            ((COMPONENT, "GetExtents", GLib.Variant("(u)", (SCREEN_COORDINATES,))), self._keep("extents")),
        ]


def _ask(items):
    """Asks about many items at once, because a program that draws answers only between two frames."""
    waiting = 0

    def on_reply(bus, result, keep):
        nonlocal waiting
        waiting -= 1
        try:
            keep(bus.call_finish(result).unpack())
        except GLib.Error:
            pass  # the item vanished meanwhile, or has no such answer

    for item in items:
        for (interface, method, arguments), keep in item.questions():
            item.bus.call(item.owner, item.path, interface, method, arguments, None,
                          Gio.DBusCallFlags.NO_AUTO_START, CALL_TIMEOUT_MS, None, on_reply, keep)
            waiting += 1
    context = GLib.MainContext.default()
    while waiting:
        context.iteration(True)


def snapshot(root):
    """The item and everything shown below it, depth first."""
    level = [root]
    while level:
        _ask(level)
        for item in level:
            if item is not root and not item.has_state(STATE_SHOWING):
                item.children = []
        level = [child for item in level for child in item.children]
    found = []

    def collect(item):
        if item is root or item.has_state(STATE_SHOWING):
            found.append(item)
        for child in item.children:
            collect(child)

    collect(root)
    return found


class AccessibilityBus:
    """The accessibility bus of a desktop's session."""

    def __init__(self, session_address):
        session = _connect(session_address)
        address = session.call_sync("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None,
                                    Gio.DBusCallFlags.NONE, CALL_TIMEOUT_MS, None).unpack()[0]
        self._bus = _connect(address)
        self._programs()  # the first call starts the registry, where programs announce themselves

    def _programs(self):
        found = self._bus.call_sync("org.a11y.atspi.Registry", ROOT_PATH, ACCESSIBLE, "GetChildren", None,
                                    None, Gio.DBusCallFlags.NONE, CALL_TIMEOUT_MS, None).unpack()[0]
        return [Item(self._bus, owner, path) for owner, path in found]

    def _process_id(self, item):
        return self._bus.call_sync("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                                   "GetConnectionUnixProcessID", GLib.Variant("(s)", (item.owner,)), None,
                                   Gio.DBusCallFlags.NONE, CALL_TIMEOUT_MS, None).unpack()[0]

    def program(self, process_id):
        """The root item of a process that shows windows, or None."""
        try:
            return next((item for item in self._programs() if self._process_id(item) == process_id), None)
        except GLib.Error:
            return None
