# SPDX-License-Identifier: GPL-3.0-or-later
"""Drives the unmodified program in a real window: a display, a desktop, the virtual instrument."""
