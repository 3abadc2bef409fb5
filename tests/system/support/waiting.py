# SPDX-License-Identifier: GPL-3.0-or-later
"""Waiting for conditions, never for a fixed time."""

import time

POLL_INTERVAL_S = 0.03
DEFAULT_TIMEOUT_S = 20.0


class NotReached(AssertionError):
    """A condition did not come true in time."""


def wait_for(condition, what, timeout_s=DEFAULT_TIMEOUT_S):
    """Polls condition() until it returns a true value, and returns that value. Raises NotReached at the time limit."""
    deadline = time.monotonic() + timeout_s
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() > deadline:
            raise NotReached(f"not within {timeout_s:g} s: {what() if callable(what) else what}")
        time.sleep(POLL_INTERVAL_S)


def stays(condition, seconds):
    """Returns whether condition() is true at every poll for the given time. For events that must not happen."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not condition():
            return False
        time.sleep(POLL_INTERVAL_S)
    return True
