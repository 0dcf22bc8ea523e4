# SPDX-License-Identifier: GPL-3.0-or-later
"""A user's first day without a mouse, in the smallest window: every step is a key. The accessibility
tree is read, and nothing in it is pressed."""
import os
import struct

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

from flow import run
from window_driver import BUTTONS, check, children, find_all, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["photo editor", "collage maker", "retro photo"]
COMPETITOR = "Foxglove Film Camera"
SIZE = (800, 500)


def rectangle(left, top, width, height):
    return struct.pack(">iiii", left, top, left + width - 1, top + height - 1)


def remember_small_window():
    """The preferences of somebody whose window was small at the end."""
    place = rectangle(60, 40, *SIZE)
    geometry = struct.pack(">IHH", 0x01D9D0CB, 3, 0) + place + place
    geometry += struct.pack(">iBBi", 0, 0, 0, 1280) + place
    escaped = "".join(f"\\x{byte:x}" for byte in geometry)
    path = os.path.join(os.environ["XDG_CONFIG_HOME"], "Veltrix", "Veltrix.conf")
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(f"[General]\nwindowGeometry=@ByteArray({escaped})\n")


def check_size(veltrix):
    window = next(children(veltrix.root))
    extents = Atspi.Component.get_extents(window, Atspi.CoordType.SCREEN)
    size = (extents.width, extents.height)
    check(size == SIZE, f"a window of {SIZE}, got {size}")


def add_app(veltrix):
    veltrix.key("Ctrl+Shift+n")
    veltrix.dialog("Add App")
    veltrix.wait_focus("Search app name, ID, or App Store URL")
    veltrix.type_keys(APP)
    veltrix.key("Return")
    veltrix.button(f"Track {APP}")
    veltrix.tab_to(f"Track {APP}")
    veltrix.key("Return")
    # The sheet stays for further apps.
    veltrix.text(f"Added {APP}")
    veltrix.key("Escape")
    veltrix.wait_closed("Add App")
    veltrix.button(f"Choose app, currently {APP}")


def add_keywords(veltrix):
    veltrix.key("Ctrl+n")
    veltrix.dialog("Add Keyword")
    veltrix.type_keys(", ".join(KEYWORDS))
    veltrix.key("Ctrl+Return")
    veltrix.wait_closed("Add Keyword")
    rows = wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)
    check(sorted(veltrix.keywords()) == sorted(KEYWORDS), f"the keywords, got {rows}")


def read_analysis(veltrix):
    veltrix.choose_keyword("collage maker")
    veltrix.key("Return")
    sheet = veltrix.dialog("Keyword analysis")
    veltrix.text("collage maker · United States", inside=sheet)
    # It is longer than the window: it scrolls from where the focus is.
    veltrix.key("End")
    veltrix.key("Escape")
    veltrix.wait_closed("Keyword analysis")
    veltrix.wait_focus("Keywords")


def read_history(veltrix):
    veltrix.choose_from_menu("Ranking history")
    sheet = veltrix.dialog("Ranking history")
    veltrix.tab_to("Last 14 days")
    veltrix.key("Right")
    veltrix.wait_focus("Last 30 days")
    veltrix.text("Last 30 days", inside=sheet)
    veltrix.key("Escape")
    veltrix.wait_closed("Ranking history")
    veltrix.wait_focus("Keywords")


def read_ranked_apps(veltrix):
    veltrix.choose_from_menu("View ranked apps")
    sheet = veltrix.dialog(starts="Top Apps ")
    rows = wait_for(
        "the ranked apps", lambda: find_all(sheet, BUTTONS, starts="View details for ")
    )
    names = [row.get_name() for row in rows]
    veltrix.tab_to(names[0])
    veltrix.key("Down")
    veltrix.wait_focus(names[1])
    veltrix.key("Return")
    details = veltrix.dialog("App details")
    veltrix.button(starts="Back to Top Apps ", inside=details)
    veltrix.key("Escape")
    veltrix.wait_closed("App details")
    veltrix.wait_focus(names[1])
    veltrix.key("Escape")
    veltrix.wait_closed(starts="Top Apps ")
    veltrix.wait_focus("Keywords")


def track_competitor(flow, veltrix):
    veltrix.key("Ctrl+2")
    veltrix.wait_focus("Search any App Store app")
    veltrix.type_keys("film camera")
    veltrix.key("Return")
    veltrix.button(f"Research {COMPETITOR}")
    veltrix.tab_to(f"Research {COMPETITOR}")
    veltrix.key("Return")
    veltrix.button("Track competitor")
    veltrix.tab_to("Track competitor")
    veltrix.key("space")
    flow.wait_state(
        "the competitor",
        lambda state: [c["name"] for c in state["competitors"]] == [COMPETITOR],
    )


def look_at_settings(veltrix):
    veltrix.key("Ctrl+,")
    veltrix.dialog("Settings")
    veltrix.tab_to("Show data folder")
    veltrix.key("Escape")
    veltrix.wait_closed("Settings")


def remove_keyword(flow, veltrix):
    veltrix.key("Ctrl+1")
    veltrix.choose_keyword("retro photo")
    veltrix.key("Delete")
    veltrix.dialog("Delete Keyword?")
    veltrix.wait_focus("Cancel")
    veltrix.tab_to("Delete Keyword")
    veltrix.key("Return")
    veltrix.wait_closed("Delete Keyword?")
    wait_for("the keyword to be gone", lambda: flow.saved_keywords() == sorted(KEYWORDS[:2]))


def steps(flow):
    remember_small_window()
    with flow.started() as veltrix:
        check_size(veltrix)
        add_app(veltrix)
        add_keywords(veltrix)
        read_analysis(veltrix)
        read_history(veltrix)
        read_ranked_apps(veltrix)
        track_competitor(flow, veltrix)
        look_at_settings(veltrix)
        remove_keyword(flow, veltrix)
        rows = veltrix.rows()
        veltrix.key("Ctrl+q")
        wait_for("the program to end", lambda: veltrix.process.poll() is not None)
        check(veltrix.process.returncode == 0, "an end with status 0")

    with flow.started() as veltrix:
        check_size(veltrix)
        veltrix.button(f"Choose app, currently {APP}")
        again = wait_for("the saved keywords", lambda: veltrix.measured_rows(2))
        check([row[1:5] for row in again] == [row[1:5] for row in rows], f"{rows}, got {again}")
        veltrix.key("Ctrl+2")
        veltrix.button(f"Research {COMPETITOR}")


if __name__ == "__main__":
    run(steps)
