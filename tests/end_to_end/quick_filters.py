# SPDX-License-Identifier: GPL-3.0-or-later
"""The quick filters by keyboard: chosen by arrows, left by Escape, there again after a restart."""
from flow import run
from window_driver import check, find_all, has_state, wait_for

from gi.repository import Atspi

APP = "Lumen Photo Editor"
KEYWORDS = ["photo editor", "collage maker", "retro photo", "light leak effect"]
FILTERS = ("radio button",)
NOTHING = "Every keyword has been measured today."


def quit_by_key(veltrix):
    veltrix.key("Ctrl+q")
    wait_for("the program to end", lambda: veltrix.process.poll() is not None)
    check(veltrix.process.returncode == 0, "an end with status 0")


def chosen(veltrix):
    """The name of the filter that is taken."""
    names = [
        node.get_name()
        for node in find_all(veltrix.root, FILTERS)
        if node.get_name().endswith(" of 6") and has_state(node, Atspi.StateType.CHECKED)
    ]
    return names[0] if len(names) == 1 else None


def wait_chosen(veltrix, title):
    return wait_for(
        f"the filter “{title}”", lambda: (chosen(veltrix) or "").startswith(f"{title}, ")
    )


def top_ten(rows):
    """The keywords whose ranking says one of the first ten."""
    ranked = [row for row in rows if row[5].startswith("Rank ")]
    return [
        row[0].split(", ")[0] for row in ranked if int(row[5].split(",")[0].split()[1]) <= 10
    ]


def choose_top_ten(veltrix):
    expected = top_ten(veltrix.rows())
    check(len(veltrix.rows()) == len(KEYWORDS), "all keywords at first")
    veltrix.tab_to(f"All, {len(KEYWORDS)} keywords, 1 of 6")
    veltrix.key("Right")
    wait_chosen(veltrix, "Top 10")
    wait_for(f"the keywords {expected}", lambda: veltrix.keywords() == expected)
    count = f"{len(expected)} keyword" + ("" if len(expected) == 1 else "s")
    veltrix.wait_focus(f"Top 10, {count}, 2 of 6")
    return expected


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)
        expected = choose_top_ten(veltrix)
        quit_by_key(veltrix)

    with flow.started() as veltrix:
        wait_chosen(veltrix, "Top 10")
        wait_for(f"the keywords {expected}", lambda: veltrix.keywords() == expected)
        veltrix.tab_to(chosen(veltrix))
        veltrix.key("End")
        wait_chosen(veltrix, "Not measured today")
        veltrix.text(NOTHING)
        quit_by_key(veltrix)

    with flow.started() as veltrix:
        veltrix.text(NOTHING)
        veltrix.tab_to("Show all keywords")
        veltrix.key("Escape")
        wait_chosen(veltrix, "All")
        wait_for("all keywords", lambda: len(veltrix.rows()) == len(KEYWORDS))
        quit_by_key(veltrix)


if __name__ == "__main__":
    run(steps)
