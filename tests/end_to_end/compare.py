# SPDX-License-Identifier: GPL-3.0-or-later
"""The own rank beside a competitor's by keyboard: its line turned off and on, a note on the day,
removed and undone, and there again after a restart."""
import re

from flow import run
from window_driver import check, find_all, has_state, wait_for

from gi.repository import Atspi

APP = "Lumen Photo Editor"
COMPETITOR = "Foxglove Film Camera"
KEYWORD = "film camera"
NOTE = "New subtitle"
BOXES = ("check box",)


def track_and_measure(veltrix):
    veltrix.add_app(APP)
    veltrix.key("Ctrl+2")
    veltrix.type_into("Search any App Store app", "film camera")
    veltrix.press("Search")
    veltrix.press(f"Research {COMPETITOR}")
    veltrix.press("Track competitor")
    veltrix.button("Untrack competitor")
    veltrix.key("Ctrl+1")
    veltrix.add_keywords([KEYWORD])
    wait_for("metrics", lambda: veltrix.measured_rows(1), 60)


def open_history(veltrix):
    veltrix.choose_keyword(KEYWORD)
    veltrix.choose_from_menu("Ranking history")
    return veltrix.dialog("Ranking history")


def entry(sheet):
    return wait_for(
        "the competitor in the legend",
        lambda: find_all(sheet, BOXES, starts=f"{COMPETITOR}, orange squares"),
    )[0]


def is_on(sheet):
    return has_state(entry(sheet), Atspi.StateType.CHECKED)


def toggle_the_line(veltrix, sheet):
    wait_for("the competitor's line, for it ranks", lambda: is_on(sheet))
    spoken = entry(sheet).get_name()
    check(re.search(r", rank \d+$", spoken), f"its rank, got {spoken!r}")
    veltrix.tab_to(spoken)
    veltrix.key("space")
    wait_for("the line to be off", lambda: not is_on(sheet))
    veltrix.wait_focus(f"{COMPETITOR}, orange squares")
    veltrix.key("space")
    wait_for("the line to be on", lambda: is_on(sheet))
    veltrix.wait_focus(spoken)
    return int(re.search(r"\d+$", spoken)[0])


def inspect_by_keyboard(veltrix, rank):
    # Tab goes on from the legend, not back to the chart.
    veltrix.key("Escape")
    veltrix.wait_closed("Ranking history")
    sheet = open_history(veltrix)
    wait_for("the competitor's line", lambda: is_on(sheet))
    veltrix.tab_to("Ranking trend")
    veltrix.key("End")
    said = wait_for(
        "the day in words",
        lambda: [
            node.get_name()
            for node in find_all(sheet)
            if f"{COMPETITOR} rank {rank}" in (node.get_name() or "")
        ],
    )[0]
    check(f": {APP} " in said, f"the own rank beside it, got {said!r}")


def note_by_keyboard(veltrix):
    veltrix.key("n")
    veltrix.wait_focus("What did you do?")
    veltrix.key("Return")
    veltrix.text("Write what you did: an empty note is not saved.")
    veltrix.type_keys(NOTE)
    veltrix.key("Return")
    veltrix.button(starts="Note, ")
    veltrix.wait_focus("Ranking trend")


def remove_and_undo(veltrix):
    veltrix.press(starts="Note, ")
    veltrix.press("Remove note")
    veltrix.text(f"Removed “{NOTE}”")
    check(not veltrix.has(starts="Note, "), "no note")
    veltrix.key("Ctrl+z")
    veltrix.button(starts="Note, ")


def steps(flow):
    with flow.started() as veltrix:
        track_and_measure(veltrix)
        sheet = open_history(veltrix)
        rank = toggle_the_line(veltrix, sheet)
        inspect_by_keyboard(veltrix, rank)
        note_by_keyboard(veltrix)
        remove_and_undo(veltrix)
    with flow.started() as veltrix:
        wait_for("the saved keyword", lambda: veltrix.measured_rows(1))
        sheet = open_history(veltrix)
        mark = veltrix.button(starts="Note, ", inside=sheet)
        check(mark.get_name().endswith(f": {NOTE}"), f"the note, got {mark.get_name()!r}")
        wait_for("the competitor's line", lambda: is_on(sheet))


if __name__ == "__main__":
    run(steps)
