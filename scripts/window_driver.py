# SPDX-License-Identifier: GPL-3.0-or-later
"""Veltrix as a screen reader sees it: finds controls by role and name, presses, types, reads.

The demo and the end-to-end test drive the unmodified program through this.
"""
import os
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402


class DriveError(Exception):
    """Something that should be on the screen is not."""


def children(node):
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield child


def walk(node):
    """Every node below, this one included; nodes that vanish meanwhile are passed over."""
    yield node
    try:
        below = list(children(node))
    except GLib.Error:
        return
    for child in below:
        yield from walk(child)


def is_shown(node):
    return node.get_state_set().contains(Atspi.StateType.SHOWING)


def find_all(root, roles, name=None, starts=None):
    found = []
    for node in walk(root):
        try:
            if node.get_role_name() not in roles:
                continue
            own = node.get_name()
            if name is not None and own != name:
                continue
            if starts is not None and not own.startswith(starts):
                continue
            if is_shown(node):
                found.append(node)
        except GLib.Error:
            continue
    return found


def wait_for(what, probe, seconds=30.0):
    """Polls until probe() gives something; a screen changes on its own time."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        result = probe()
        if result:
            return result
        time.sleep(0.1)
    raise DriveError(f"waited {seconds:.0f} s in vain for {what}")


class Veltrix:
    """The running program, seen through its accessible names."""

    BUTTONS = ("push button", "button", "toggle button", "menu item")
    FIELDS = ("text", "entry")

    def __init__(self, program, pictures):
        self.pictures = pictures
        self.process = subprocess.Popen([program])
        self.count = 0
        self.root = wait_for("the program", self._application)

    def _application(self):
        if self.process.poll() is not None:
            raise DriveError(f"the program ended with status {self.process.returncode}")
        desktop = Atspi.get_desktop(0)
        for application in children(desktop):
            if application.get_process_id() == self.process.pid and application.get_child_count():
                return application
        return None

    def dialog(self, name):
        """The sheet or popover of that name."""
        return wait_for(f"“{name}”", lambda: find_all(self.root, ("dialog",), name=name))[0]

    def button(self, name, starts=None, inside=None):
        return wait_for(
            f"the button “{name or starts}”",
            lambda: find_all(inside or self.root, self.BUTTONS, name=name, starts=starts),
        )[0]

    def press(self, name=None, starts=None, inside=None):
        Atspi.Action.do_action(self.button(name, starts, inside), 0)

    def has(self, roles, name=None, starts=None):
        return bool(find_all(self.root, roles, name=name, starts=starts))

    def type_into(self, field, text):
        node = wait_for(
            f"the field “{field}”", lambda: find_all(self.root, self.FIELDS, name=field)
        )[0]
        if not Atspi.EditableText.set_text_contents(node, text):
            raise DriveError(f"the field “{field}” takes no text")

    def rows(self):
        """The keyword table as lists of cell texts."""
        tables = find_all(self.root, ("table", "tree table", "tree"), name="Keywords")
        if not tables:
            return []
        table = tables[0]
        grid = []
        for row in range(Atspi.Table.get_n_rows(table)):
            cells = [
                Atspi.Table.get_accessible_at(table, row, column)
                for column in range(Atspi.Table.get_n_columns(table))
            ]
            grid.append([cell.get_name() if cell else "" for cell in cells])
        return grid

    def measured_rows(self, count):
        """The rows once all `count` keywords carry their metrics, else nothing."""
        rows = self.rows()
        done = [row for row in rows if not any("Awaiting" in c or "Pending" in c for c in row)]
        return rows if len(done) == count else None

    def picture(self, title):
        """Saves what the screen shows once it has settled."""
        time.sleep(0.7)
        self.count += 1
        path = os.path.join(self.pictures, f"{self.count:02d}-{title}.png")
        subprocess.run(["import", "-window", "root", path], check=True)

    def close(self):
        self.process.terminate()
        try:
            return self.process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            raise DriveError("the program did not end") from None
