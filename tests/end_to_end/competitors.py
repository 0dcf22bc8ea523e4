# SPDX-License-Identifier: GPL-3.0-or-later
"""A competitor from search to research, its keywords taken over and measured, and its removal."""
from flow import run
from window_driver import BUTTONS, check, wait_for

COMPETITOR = "Foxglove Film Camera"


def research(veltrix):
    veltrix.key("Ctrl+2")
    veltrix.text("No competitors yet")
    veltrix.type_into("Search any App Store app", "film camera")
    veltrix.press("Search")
    veltrix.press(f"Research {COMPETITOR}")
    veltrix.button("Back to Apps")
    wait_for(
        "the keywords of its listing to be checked",
        lambda: veltrix.rows() and not veltrix.has(starts="Checking “"),
        60,
    )
    rows = veltrix.rows()
    ranked = sum("Rank " in rank for _, _, rank, _, _ in rows)
    veltrix.text(f"Keyword coverage: {ranked} / {len(rows)}")
    check(len(rows) >= 3, f"at least three keyword phrases, got {rows}")
    check(
        all(row[4].startswith("Estimated difficulty: ") for row in rows), f"difficulties, got {rows}"
    )
    check(all(row[3].startswith("your app ") for row in rows), f"own ranks, got {rows}")
    return [keyword for _, keyword, _, _, _ in rows]


def track(flow, veltrix):
    veltrix.press("Track competitor")
    veltrix.button("Untrack competitor")
    flow.wait_state(
        "the competitor",
        lambda state: [c["name"] for c in state["competitors"]] == [COMPETITOR],
    )


def take_over_keywords(flow, veltrix, keywords):
    """Rows are chosen by the space bar; what is tracked then is measured in the other workspace."""
    veltrix.choose_row(1)
    veltrix.key("space")
    veltrix.key("Down")
    veltrix.key("space")
    wait_for(
        "two rows to be chosen",
        lambda: [row[1] for row in veltrix.rows() if row[0] == "Chosen"] == keywords[1:3],
    )
    veltrix.press("Track selected keywords")
    wait_for(
        "the rows to be tracked",
        lambda: [row[1] for row in veltrix.rows() if row[0] == "Already tracking"] == keywords[1:3],
    )
    check(flow.saved_keywords() == sorted(keywords[1:3]), "the two keywords to be saved")

    veltrix.key("Ctrl+1")
    rows = wait_for("metrics", lambda: veltrix.measured_rows(2), 60)
    names = sorted(row[0].split(", ")[0] for row in rows)
    check(names == sorted(keywords[1:3]), f"the two keywords, got {names}")


def remove(flow, veltrix):
    veltrix.key("Ctrl+2")
    veltrix.press("Back to Apps")
    veltrix.press("Close search results")
    # The field has the keyboard before, too; a press takes a moment.
    wait_for("the results to be closed", lambda: not veltrix.has(BUTTONS, "Close search results"))
    veltrix.wait_focus("Search any App Store app")
    veltrix.tab_to(f"Research {COMPETITOR}")
    veltrix.choose_from_menu("Remove competitor")
    veltrix.text("No competitors yet")
    flow.wait_state("no competitor", lambda state: state["competitors"] == [])
    check(len(flow.saved_keywords()) == 2, "the keywords to stay")


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app("Lumen Photo Editor")
        keywords = research(veltrix)
        track(flow, veltrix)
        take_over_keywords(flow, veltrix, keywords)
        remove(flow, veltrix)


if __name__ == "__main__":
    run(steps)
