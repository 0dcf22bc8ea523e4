# SPDX-License-Identifier: GPL-3.0-or-later
"""A user's first day: an app by name and one by link, keywords, metrics, a restart, a second start."""
import subprocess

from flow import run
from window_driver import check, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["photo editor", "collage maker", "retro photo"]


def add_keywords(veltrix):
    veltrix.press("Add keywords")
    veltrix.type_into("Enter keyword(s), comma-separated", " ,".join(KEYWORDS) + ", ,")
    veltrix.press("Add keywords", inside=veltrix.dialog("Add Keyword"))
    return wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)


def add_app_by_link(veltrix, link):
    veltrix.press("Add App")
    sheet = veltrix.dialog("Add App")
    veltrix.type_into("Search app name, ID, or App Store URL", link)
    veltrix.press("Search", inside=sheet)
    veltrix.press("Done", inside=sheet)
    veltrix.wait_closed("Add App")


def names(rows):
    return sorted(row[0].split(",")[0] for row in rows)


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        first = add_keywords(veltrix)
        check(names(first) == sorted(KEYWORDS), f"the keywords, got {names(first)}")
        check(all("Rank" in row[5] for row in first), f"ranks, got {first}")

        # The same app by its link is the same app; nothing is added twice.
        track_id = flow.state()["apps"][0]["trackId"]
        add_app_by_link(veltrix, f"apps.apple.com/us/app/lumen/id{track_id}?mt=8")
        veltrix.button(f"Choose app, currently {APP}")
        check(len(flow.state()["apps"]) == 1, "one app")

        # A second start finds the first one's window and ends.
        second = subprocess.run([flow.program], timeout=30, check=False)
        check(second.returncode == 0, "a second start to end with status 0")
        check(veltrix.process.poll() is None, "the first start to go on")

    with flow.started() as veltrix:
        veltrix.button(f"Choose app, currently {APP}")
        again = wait_for("the saved keywords", lambda: veltrix.measured_rows(len(KEYWORDS)))
        check(
            [row[1:5] for row in again] == [row[1:5] for row in first],
            f"the same metrics after a restart, got {again} after {first}",
        )


if __name__ == "__main__":
    run(steps)
