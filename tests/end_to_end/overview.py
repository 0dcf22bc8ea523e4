# SPDX-License-Identifier: GPL-3.0-or-later
"""From the start to how all apps stand, to the history of what moved most, and to an app's keywords."""
from flow import run
from saved_history import add_earlier_days
from window_driver import BUTTONS, check, find_all, table_rows, wait_for

KEYWORDS = ["collage maker", "photo editor"]


def measure(flow):
    with flow.started() as veltrix:
        veltrix.add_app("Lumen Photo Editor")
        veltrix.add_keywords(KEYWORDS)
        wait_for("metrics", lambda: veltrix.measured_rows(2), 60)


def movers(veltrix):
    tables = find_all(veltrix.root, ("table",), name="Movers")
    return table_rows(tables[0]) if tables else []


def see_standing(flow, veltrix):
    """The first keyword was not ranked yesterday, the second four places lower than now."""
    veltrix.key("Ctrl+0")
    rows = wait_for("two movers", lambda: len(movers(veltrix)) == 2 and movers(veltrix))
    changes = [row[4] for row in rows]
    check(changes == ["Entered results", "up 4"], f"an entry before a rise, got {rows}")
    card = veltrix.button(starts="Lumen Photo Editor, 2 keywords, ")
    said = card.get_name()
    check("2 risen and 0 fallen since yesterday" in said, f"both to have risen, got {said!r}")
    check(card.get_description().startswith("Average rank over 30 days: from "), "its line")


def open_history(veltrix):
    veltrix.tab_to("Movers", ("table",))
    veltrix.key("Return")
    sheet = veltrix.dialog("Ranking history")
    veltrix.text("Entered results", inside=sheet)
    veltrix.key("Escape")
    veltrix.wait_closed("Ranking history")
    veltrix.wait_focus("Movers")


def search(veltrix):
    veltrix.key("Ctrl+f")
    veltrix.wait_focus("Search apps and keywords")
    veltrix.type_keys("editor")
    # The app's name has the word, so both of its keywords stay; no other app is there.
    wait_for("the movers found", lambda: len(movers(veltrix)) == 2)
    veltrix.key("Escape")


def open_risen(veltrix):
    veltrix.press(starts="Lumen Photo Editor, 2 risen since yesterday")
    wait_for("the keywords that rose", lambda: sorted(veltrix.keywords()) == KEYWORDS)
    check(not find_all(veltrix.root, BUTTONS, starts="Lumen Photo Editor, 2 keywords, "), "no card")


def steps(flow):
    measure(flow)

    def earlier(place, newest):
        check(newest is not None, "a rank")
        return [None] if place == 0 else [newest + 4]

    add_earlier_days(flow.state_file, earlier)
    with flow.started() as veltrix:
        wait_for("the saved keywords", lambda: veltrix.measured_rows(2))
        see_standing(flow, veltrix)
        open_history(veltrix)
        search(veltrix)
        open_risen(veltrix)


if __name__ == "__main__":
    run(steps)
