# SPDX-License-Identifier: GPL-3.0-or-later
"""A competitor over time: tracked, measured beside the own app, compared, untracked and taken back;
and who is above the own app."""
import re
from datetime import datetime, timezone

from flow import run
from window_driver import TABLES, check, find_all, table_rows, wait_for

COMPETITOR = "Foxglove Film Camera"
SHARED = "Where both rank"
ABOVE = "Apps above yours"


def rows_of(veltrix, table):
    tables = find_all(veltrix.root, TABLES, name=table)
    return table_rows(tables[0]) if tables else []


def research(veltrix):
    veltrix.key("Ctrl+2")
    veltrix.type_into("Search any App Store app", "film camera")
    veltrix.press("Search")
    veltrix.press(f"Research {COMPETITOR}")
    veltrix.button("Back to Apps")
    wait_for(
        "the keywords of its listing to be checked",
        lambda: veltrix.rows() and not veltrix.has(starts="Checking “"),
        60,
    )


def track(veltrix):
    check(not veltrix.has(name=SHARED), "nothing to be compared of an app that is not tracked")
    veltrix.press("Track competitor")
    veltrix.text(f"Ranks of {COMPETITOR} are kept from the next measurement on.")
    entry = veltrix.text(starts=today())
    check(
        entry.endswith(", tracked, ranks and changes are kept since then."),
        f"the day of tracking, got {entry!r}",
    )


def today():
    now = datetime.now(timezone.utc)
    return f"{now:%b} {now.day}, tracked"


def take_over_a_keyword_of_both(veltrix):
    """Gives the keyword. It is measured at once, beside the competitor."""
    rows = veltrix.rows()
    both = [
        row for row, cells in enumerate(rows)
        if cells[2].startswith("Rank ") and cells[3].startswith("your app ranks ")
    ]
    check(both, f"a phrase for which both rank, got {rows}")
    keyword = rows[both[0]][1]
    veltrix.choose_row(both[0])
    veltrix.key("space")
    wait_for("the row to be chosen", lambda: veltrix.rows()[both[0]][0] == "Chosen")
    veltrix.press("Track selected keywords")
    return keyword


def compare(veltrix, keyword):
    rows = wait_for("the keyword where both rank", lambda: rows_of(veltrix, SHARED), 60)
    check(len(rows) == 1, f"one keyword, got {rows}")
    place, own, theirs, lead = rows[0]
    check(place == f"{keyword}, United States", f"{keyword!r} in its storefront, got {place!r}")
    ranks = [int(re.fullmatch(rf"{whose} rank (\d+)", text)[1])
             for whose, text in (("your", own), ("their", theirs))]
    who = "you" if ranks[0] < ranks[1] else "they"
    check(lead == f"{who} lead by {abs(ranks[0] - ranks[1])}", f"who leads, got {rows[0]}")
    veltrix.text(f"You lead on {int(who == 'you')} of 1 keyword")

    veltrix.press("Compare over time")
    veltrix.dialog("Ranking history")
    veltrix.key("Escape")
    veltrix.wait_closed("Ranking history")
    veltrix.choose_row(0, SHARED)
    veltrix.key("Return")
    veltrix.dialog("Ranking history")
    veltrix.key("Escape")
    veltrix.wait_closed("Ranking history")
    veltrix.wait_focus(SHARED)
    return ranks


def take_back(flow, veltrix):
    veltrix.press("Untrack competitor")
    wait_for("nothing to be compared", lambda: not veltrix.has(TABLES, SHARED))
    flow.wait_state("no competitor", lambda state: state["competitors"] == [])
    veltrix.key("Ctrl+z")
    rows = wait_for("the comparison to be back", lambda: rows_of(veltrix, SHARED))
    check(len(rows) == 1, f"the keyword to be back, got {rows}")


def see_who_is_above(veltrix, keyword, own):
    veltrix.key("Ctrl+1")
    wait_for("metrics", lambda: veltrix.measured_rows(1), 60)
    veltrix.choose_keyword(keyword)
    veltrix.choose_from_menu("Who is above you")
    sheet = veltrix.dialog("Who is above you")
    veltrix.text("Ranks below ten are kept of your tracked competitors alone.", inside=sheet)
    veltrix.text(starts=f"“{keyword}” · United States · Your rank {own} on ", inside=sheet)
    rows = rows_of(veltrix, ABOVE)
    check(len(rows) <= own - 1, f"apps above rank {own} alone, got {rows}")
    places = [int(row[0].removeprefix("Rank ")) for row in rows]
    check(places == sorted(places) and all(place < own for place in places), f"ranks, got {rows}")
    veltrix.key("Escape")
    veltrix.wait_closed("Who is above you")


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app("Lumen Photo Editor")
        research(veltrix)
        track(veltrix)
        keyword = take_over_a_keyword_of_both(veltrix)
        own, _ = compare(veltrix, keyword)
        take_back(flow, veltrix)
    # What was kept is there at the next start.
    with flow.started() as veltrix:
        see_who_is_above(veltrix, keyword, own)


if __name__ == "__main__":
    run(steps)
