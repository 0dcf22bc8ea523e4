# SPDX-License-Identifier: GPL-3.0-or-later
"""Veltrix as a screen reader sees it: finds controls by role and name, presses, types, reads.

The demo and the end-to-end tests drive the unmodified program through this, with real key presses
where a user would use the keyboard.
"""
import filecmp
import json
import os
import signal
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

# In milliseconds, for one question and for a program that starts. By default a busy machine has less
# than a second to answer.
Atspi.set_timeout(15_000, 30_000)

# A program that is slowed down, by a sanitizer for example, is waited for so many times longer.
PATIENCE = float(os.environ.get("VELTRIX_PATIENCE", "1"))

BUTTONS = ("push button", "button", "toggle button", "radio button", "check box", "menu item")
FIELDS = ("text", "entry")
CELLS = ("table cell", "list item")
TABLES = ("table", "tree table", "tree")
KEYS = {
    "BackSpace": 0xFF08,
    "Tab": 0xFF09,
    "Return": 0xFF0D,
    "Escape": 0xFF1B,
    "Home": 0xFF50,
    "Left": 0xFF51,
    "Up": 0xFF52,
    "Right": 0xFF53,
    "Down": 0xFF54,
    "Page_Down": 0xFF56,
    "End": 0xFF57,
    "Menu": 0xFF67,
    "F5": 0xFFC2,
    "Delete": 0xFFFF,
    "space": 0x20,
}
# Key codes of the usual keyboard: modifiers are held down, so they need a key and not a symbol.
MODIFIERS = {"Shift": 50, "Ctrl": 37}


class DriveError(Exception):
    """Something that should be on the screen is not."""


def check(condition, what):
    if not condition:
        raise DriveError(f"expected {what}")


def wait_for(what, probe, seconds=30.0):
    """Polls until probe() gives something; a screen changes on its own time."""
    seconds *= PATIENCE
    deadline = time.monotonic() + seconds
    events = GLib.MainContext.default()
    while True:
        while events.iteration(False):
            pass
        try:
            result = probe()
        except GLib.Error:
            result = None  # What was being read has just gone.
        if result:
            return result
        if time.monotonic() > deadline:
            raise DriveError(f"waited {seconds:.0f} s in vain for {what}")
        time.sleep(0.05)


def children(node):
    for index in range(node.get_child_count()):
        child = node.get_child_at_index(index)
        if child is not None:
            yield child


def has_state(node, state):
    return node.get_state_set().contains(state)


def shown(node):
    """Every node below that is on the screen, this one included; vanishing ones are passed over."""
    try:
        if not has_state(node, Atspi.StateType.SHOWING):
            return
        below = list(children(node))
    except GLib.Error:
        return
    yield node
    for child in below:
        yield from shown(child)


def describe(root):
    """What is on the screen, a line a node, for a failure's report."""
    lines = []
    for node in shown(root):
        try:
            lines.append(f"{node.get_role_name()} {node.get_name()!r} {node.get_description()!r}")
        except GLib.Error:
            continue
    return "\n".join(lines)


def find_all(root, roles=None, name=None, starts=None):
    found = []
    for node in shown(root):
        try:
            if roles is not None and node.get_role_name() not in roles:
                continue
            own = node.get_name()
        except GLib.Error:
            continue
        if name is not None and own != name:
            continue
        if starts is not None and not own.startswith(starts):
            continue
        found.append(node)
    return found


def texts(root):
    """All names on the screen below `root`, in order."""
    return [node.get_name() for node in shown(root) if node.get_name()]


def table_rows(table):
    """A table as lists of cell texts."""
    grid = []
    for row in range(Atspi.Table.get_n_rows(table)):
        cells = [
            Atspi.Table.get_accessible_at(table, row, column)
            for column in range(Atspi.Table.get_n_columns(table))
        ]
        grid.append([cell.get_name() if cell else "" for cell in cells])
    return grid


class Veltrix:
    """The running program, seen through its accessible names."""

    def __init__(self, program, pictures=None, console=None):
        """`console` is a file that gets what the program prints; without one it goes where the
        driver's own lines go."""
        self.program = program
        self.console = console
        self.pictures = pictures
        self.count = 0
        self._told = []
        self._listener = Atspi.EventListener.new(self._hear)
        self._listener.register("object:state-changed:focused")
        self.process = subprocess.Popen([program], stdout=console, stderr=console)
        try:
            self.root = wait_for("the program", self._application)
            self.take_keyboard()
            # The pointer rests in a corner, where it lights up nothing.
            Atspi.generate_mouse_event(0, 0, "abs")
        except BaseException:
            self.kill()
            raise

    def _application(self):
        if self.process.poll() is not None:
            raise DriveError(f"the program ended with status {self.process.returncode}")
        for application in children(Atspi.get_desktop(0)):
            if application.get_process_id() == self.process.pid and application.get_child_count():
                return application
        return None

    def _hear(self, event):
        try:
            if event.detail1 and event.source.get_role_name() == "menu item":
                self._told.append(event.source.get_name())
        except GLib.Error:
            pass  # A menu that has closed meanwhile.

    def _is_active(self):
        return any(has_state(window, Atspi.StateType.ACTIVE) for window in children(self.root))

    def take_keyboard(self):
        """Gives the window the keyboard. No window manager does it on a bare display, but a second
        start of the program raises the first one's window and then ends."""
        if not self._is_active():
            second = subprocess.run(
                [self.program],
                stdout=self.console,
                stderr=self.console,
                timeout=30 * PATIENCE,
                check=False,
            )
            check(second.returncode == 0, "a second start to end with status 0")
            wait_for("the window to be active", self._is_active)

    # Finding.

    def find(self, what, roles, name=None, starts=None, inside=None, seconds=30.0):
        return wait_for(
            what, lambda: find_all(inside or self.root, roles, name, starts), seconds
        )[0]

    def has(self, roles=None, name=None, starts=None, inside=None):
        return bool(find_all(inside or self.root, roles, name, starts))

    def text(self, name=None, starts=None, inside=None, seconds=30.0):
        """Waits for a text on the screen and gives it whole."""
        node = self.find(f"the text “{name or starts}”", None, name, starts, inside, seconds)
        return node.get_name()

    def dialog(self, name=None, starts=None):
        """The sheet or popover of that name."""
        return self.find(f"“{name or starts}”", ("dialog",), name, starts)

    def wait_closed(self, name=None, starts=None):
        wait_for(
            f"“{name or starts}” to close",
            lambda: not self.has(("dialog",), name=name, starts=starts),
        )

    def button(self, name=None, starts=None, inside=None):
        return self.find(f"the button “{name or starts}”", BUTTONS, name, starts, inside)

    def table(self, name="Keywords"):
        return self.find(f"the table “{name}”", TABLES, name)

    def focused(self):
        """The control that has the keyboard. Cells call themselves focused when they are the current
        ones of their table, wherever the keyboard is."""
        for node in shown(self.root):
            if has_state(node, Atspi.StateType.FOCUSED) and node.get_role_name() not in CELLS:
                return node
        return None

    # Acting.

    def press(self, name=None, starts=None, inside=None):
        """Presses a button as assistive technology does."""
        button = self.button(name, starts, inside)
        wait_for(
            f"“{button.get_name()}” to be enabled",
            lambda: has_state(button, Atspi.StateType.ENABLED),
        )
        if not Atspi.Action.do_action(button, 0):
            raise DriveError(f"“{button.get_name()}” cannot be pressed")

    def type_into(self, field, text):
        node = self.find(f"the field “{field}”", FIELDS, field)
        if not Atspi.EditableText.set_text_contents(node, text):
            raise DriveError(f"the field “{field}” takes no text")

    def key(self, chord, times=1):
        """Presses a real key of the display's keyboard: "Return", "Ctrl+f", "a"."""
        *held, name = chord.split("+")
        symbol = KEYS.get(name, ord(name[0]))
        for modifier in held:
            Atspi.generate_keyboard_event(MODIFIERS[modifier], None, Atspi.KeySynthType.PRESS)
        for _ in range(times):
            Atspi.generate_keyboard_event(symbol, None, Atspi.KeySynthType.SYM)
        for modifier in reversed(held):
            Atspi.generate_keyboard_event(MODIFIERS[modifier], None, Atspi.KeySynthType.RELEASE)

    def type_keys(self, text):
        """Types a text into what has the keyboard, key by key."""
        for character in text:
            Atspi.generate_keyboard_event(ord(character), None, Atspi.KeySynthType.SYM)

    def wait_focus(self, name):
        def is_there():
            node = self.focused()
            return node is not None and node.get_name() == name

        wait_for(f"the keyboard to be on “{name}”", is_there)

    def tab_to(self, name, roles=None, most=40):
        """Presses Tab until the control of that name (and role) has the keyboard."""
        for _ in range(most):
            before = self.focused()
            if before is not None and before.get_name() == name:
                if roles is None or before.get_role_name() in roles:
                    return
            self.key("Tab")
            wait_for("the keyboard to move on", lambda: self.focused() not in (None, before))
        raise DriveError(f"Tab does not reach “{name}”")

    def pick_storefront(self, button, country):
        """Opens a storefront picker and takes a country by its name."""
        self.press(starts=button)
        field = self.find("the storefront search", FIELDS, "Search storefronts")
        self.wait_focus("Search storefronts")
        Atspi.EditableText.set_text_contents(field, country)
        self.key("Return")
        wait_for(f"{country} to be picked", lambda: not self.has(FIELDS, "Search storefronts"))

    # The keyword table.

    def rows(self):
        """The keyword table as lists of cell texts."""
        tables = find_all(self.root, TABLES, name="Keywords")
        return table_rows(tables[0]) if tables else []

    def keywords(self):
        return [row[0].split(", ")[0] for row in self.rows()]

    def measured_rows(self, count):
        """The rows once all `count` keywords carry their metrics, else nothing."""
        rows = self.rows()
        done = [row for row in rows if not any("Awaiting" in c or "Pending" in c for c in row)]
        return rows if len(done) == count else None

    def choose_row(self, row, table="Keywords"):
        """Puts the keyboard on a row of a table."""
        node = self.table(table)
        self.tab_to(table, TABLES)
        # With Ctrl the current row moves without being selected; plain arrows select.
        self.key("Ctrl+Home")
        self.key("Down", max(row, 1))
        self.key("Up", 1 - min(row, 1))
        cell = Atspi.Table.get_accessible_at(node, row, 0)
        wait_for(
            f"row {row + 1} to be the current one",
            lambda: has_state(cell, Atspi.StateType.FOCUSED),
        )

    def choose_keyword(self, keyword):
        self.choose_row(self.keywords().index(keyword))

    def choose_from_menu(self, item):
        """Opens the menu of what has the keyboard by its key and takes an item by the arrow keys.
        An open menu is no part of the tree; what is current in it is told as it changes."""
        self.key("Menu")
        seen = []
        while item not in seen:
            self._told.clear()
            self.key("Down")
            told = wait_for("an item of the menu", lambda: self._told)
            if told[-1] in seen:
                raise DriveError(f"“{item}” is not in the menu of {seen}")
            seen.append(told[-1])
        self.key("Return")

    def add_app(self, name):
        self.press("Add App")
        sheet = self.dialog("Add App")
        self.type_into("Search app name, ID, or App Store URL", name)
        self.press("Search", inside=sheet)
        self.press(f"Track {name}", inside=sheet)
        self.text(f"Added {name}", inside=sheet)
        self.press("Done", inside=sheet)
        self.wait_closed("Add App")
        self.button(f"Choose app, currently {name}")

    def add_keywords(self, keywords):
        self.press("Add keywords")
        popover = self.dialog("Add Keyword")
        self.type_into("Enter keyword(s), comma-separated", ", ".join(keywords))
        self.press("Add keywords", inside=popover)
        self.wait_closed("Add Keyword")

    # Pictures and the end.

    def picture(self, title):
        """Saves what the screen shows once it has settled: when it stays the same for a while."""
        self.count += 1
        path = os.path.join(self.pictures, f"{self.count:02d}-{title}.png")
        earlier = path + ".before"
        self._look(path)
        same = 0
        deadline = time.monotonic() + 5
        while same < 3 and time.monotonic() < deadline:
            os.replace(path, earlier)
            time.sleep(0.15)
            self._look(path)
            same = same + 1 if filecmp.cmp(earlier, path, shallow=False) else 0
        os.remove(earlier)

    @staticmethod
    def brightness():
        """The mean of the screen, from 0 (black) to 1 (white)."""
        look = ["import", "-window", "root", "-colorspace", "gray", "-format", "%[fx:mean]", "info:"]
        return float(subprocess.run(look, check=True, capture_output=True, text=True).stdout)

    @staticmethod
    def _look(path):
        # Without dates inside, equal pictures are equal files.
        options = ["-define", "png:exclude-chunk=date,time"]
        subprocess.run(["import", "-window", "root", *options, "png:" + path], check=True)

    def close(self):
        self._listener.deregister("object:state-changed:focused")
        self.process.terminate()
        try:
            return self.process.wait(timeout=10 * PATIENCE)
        except subprocess.TimeoutExpired:
            self.kill()
            raise DriveError("the program did not end") from None

    def kill(self):
        """Ends the program without a chance to save anything."""
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
        self.process.wait()


def state_path(data_folder):
    return os.path.join(data_folder, "Veltrix", "aso_store_state.json")


def saved_state(data_folder):
    """What the state file holds just now."""
    with open(state_path(data_folder), encoding="utf-8") as file:
        return json.load(file)
