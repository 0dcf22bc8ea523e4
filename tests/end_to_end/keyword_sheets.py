# SPDX-License-Identifier: GPL-3.0-or-later
"""One keyword by the keyboard alone: its analysis, its history day by day, its ranked apps while
nobody answers."""
import json
import os
import re
from datetime import datetime, timedelta, timezone

from flow import run
from saved_history import add_earlier_days
from window_driver import check, find_all, texts, wait_for

KEYWORD = "photo editor"
# The days before today, nearest first: a rank, a day without a check, a check without a rank, a rank.
EARLIER = [24, "none", None, 19]


def measure(flow):
    with flow.started() as veltrix:
        veltrix.add_app("Lumen Photo Editor")
        veltrix.add_keywords([KEYWORD])
        wait_for("metrics", lambda: veltrix.measured_rows(1), 60)


def let_time_pass(flow):
    """Four days of checks before today, and ranked apps that were fetched an hour ago."""
    add_earlier_days(flow.state_file, lambda *_: EARLIER)
    path = os.path.join(os.path.dirname(flow.state_file), "ranked_apps_cache_v1.json")
    with open(path, encoding="utf-8") as file:
        cache = json.load(file)
    for saved in cache.values():
        saved["fetchedAt"] -= 3600
    with open(path, "w", encoding="utf-8") as file:
        json.dump(cache, file)


def read_analysis(flow, veltrix):
    veltrix.choose_keyword(KEYWORD)
    veltrix.key("Return")
    sheet = veltrix.dialog("Keyword analysis")
    said = texts(sheet)
    snapshot = max(flow.state()["snapshots"], key=lambda snapshot: snapshot["fetchedAt"])
    for expected in (
        f"{KEYWORD} · United States",
        f"Target guidance: {snapshot['opportunity']['label']}",
        f"Position: {snapshot['position']}",
        f"Search popularity: {snapshot['popularityScore']} / 100",
        f"Difficulty · estimate: {snapshot['difficultyScore']} / 100",
        "Autocomplete visibility",
        "Sample: 10 of up to 10 apps · Missing inputs: 0 rating counts · 0 release dates",
        "Competition",
        f"{snapshot['competition']['score']} / 100",
    ):
        check(expected in said, f"{expected!r} in the analysis, got {said}")
    check(any(text.startswith("Saved observation: ") for text in said), "the observation's date")
    veltrix.key("Escape")
    veltrix.wait_closed("Keyword analysis")
    veltrix.wait_focus("Keywords")


def read_history(flow, veltrix):
    today = max(flow.state()["snapshots"], key=lambda snapshot: snapshot["fetchedAt"])
    reference = datetime(2001, 1, 1, tzinfo=timezone.utc)
    newest = reference + timedelta(seconds=today["fetchedAt"])

    def day(before):
        return f"{newest - timedelta(days=before):%b} {(newest - timedelta(days=before)).day}"

    veltrix.choose_from_menu("Ranking history")
    sheet = veltrix.dialog("Ranking history")
    veltrix.text("Hover to inspect a saved check", inside=sheet)
    veltrix.tab_to("Ranking trend")
    for key, expected in (
        ("Left", f"{day(0)}: rank {today['position']}"),
        ("Left", f"{day(1)}: rank 24"),
        ("Left", f"No check saved on {day(2)}"),
        ("Left", f"{day(3)}: Not ranked"),
        ("Left", f"{day(4)}: rank 19"),
        ("End", f"{day(0)}: rank {today['position']}"),
        ("Home", f"{day(4)}: rank 19"),
        ("Right", f"{day(3)}: Not ranked"),
        ("Ctrl+Right", f"{day(1)}: rank 24"),
    ):
        veltrix.key(key)
        veltrix.text(expected, inside=sheet)
    chart = veltrix.find("the chart", ("chart",), "Ranking trend", inside=sheet)
    checks = [chart.get_child_at_index(i).get_name() for i in range(chart.get_child_count())]
    ranked = ["Rank 19", "Not ranked", "Rank 24", f"Rank {today['position']}"]
    check(checks == ranked, f"the checks {ranked}, got {checks}")
    veltrix.key("Escape")
    veltrix.text("Hover to inspect a saved check", inside=sheet)
    veltrix.key("Escape")
    veltrix.wait_closed("Ranking history")
    veltrix.wait_focus("Keywords")


def has_saved_line(sheet):
    line = next(text for text in texts(sheet) if text.startswith("Results from "))
    return re.fullmatch(r"Results from .*\d{1,2}:\d\d.*(?<!Refreshing…)", line)


def ranked_names(sheet):
    buttons = find_all(sheet, ("push button",), starts="View details for ")
    return [button.get_name() for button in buttons]


def see_saved_apps(flow, veltrix):
    flow.end_services()
    veltrix.choose_from_menu("View ranked apps")
    sheet = veltrix.dialog(f"Top Apps “{KEYWORD}” in United States")
    for _ in range(2):
        problem = veltrix.text(starts="Showing saved results. ", inside=sheet)
        check(len(problem) > len("Showing saved results. "), "a reason for the failed refresh")
        wait_for("the date of the saved apps, and no refresh", lambda: has_saved_line(sheet))
        count = re.fullmatch(r"Showing (\d+) of (\d+) results", veltrix.text(starts="Showing 25 of "))
        check(count is not None and int(count[2]) > 25, "more saved apps than are shown")
        check(len(ranked_names(sheet)) > 5, "the saved apps on the screen")
        # Trying again fails again and takes nothing away.
        veltrix.press("Retry refresh", inside=sheet)
    veltrix.key("Escape")
    veltrix.wait_closed(starts="Top Apps ")


def steps(flow):
    measure(flow)
    let_time_pass(flow)
    with flow.started() as veltrix:
        wait_for("the saved keyword", lambda: veltrix.measured_rows(1))
        read_analysis(flow, veltrix)
        read_history(flow, veltrix)
        see_saved_apps(flow, veltrix)


if __name__ == "__main__":
    run(steps)
