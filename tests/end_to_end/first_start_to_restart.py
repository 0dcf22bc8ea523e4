# SPDX-License-Identifier: GPL-3.0-or-later
"""A user's first day: an app by name and one by link, keywords, metrics, a restart, a second start."""
import json
import os
import subprocess
import sys

from window_driver import DriveError, Veltrix, wait_for, walk

KEYWORDS = ["photo editor", "collage maker", "retro photo"]


def check(condition, what):
    if not condition:
        raise DriveError(f"expected {what}")


def add_app_by_name(veltrix):
    veltrix.press("Add App")
    sheet = veltrix.dialog("Add App")
    veltrix.type_into("Search app name, ID, or App Store URL", "Lumen Photo Editor")
    veltrix.press("Search", inside=sheet)
    veltrix.press("Track Lumen Photo Editor")
    veltrix.button("Choose app, currently Lumen Photo Editor")


def add_keywords(veltrix):
    veltrix.press("Add keywords")
    veltrix.type_into("Enter keyword(s), comma-separated", " ,".join(KEYWORDS) + ", ,")
    veltrix.press("Add keywords", inside=veltrix.dialog("Add Keyword"))
    return wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)


def track_id_of(state_path, name):
    with open(state_path, encoding="utf-8") as file:
        state = json.load(file)
    return next(app["trackId"] for app in state["apps"] if app["appName"] == name)


def add_app_by_link(veltrix, link):
    veltrix.press(starts="Choose app, currently ")
    veltrix.press("Add App")
    sheet = veltrix.dialog("Add App")
    veltrix.type_into("Search app name, ID, or App Store URL", link)
    veltrix.press("Search", inside=sheet)


def names(rows):
    return sorted(row[0].split(",")[0] for row in rows)


def main():
    program, folder = sys.argv[1:3]
    state_path = os.path.join(folder, "data", "Veltrix", "aso_store_state.json")
    veltrix = Veltrix(program, folder)
    try:
        add_app_by_name(veltrix)
        first = add_keywords(veltrix)
        check(names(first) == sorted(KEYWORDS), f"the keywords, got {names(first)}")
        check(all("Rank" in row[4] for row in first), f"ranks, got {first}")

        # The same app by its link is the same app; nothing is added twice.
        track_id = track_id_of(state_path, "Lumen Photo Editor")
        add_app_by_link(veltrix, f"apps.apple.com/us/app/lumen/id{track_id}?mt=8")
        veltrix.button("Choose app, currently Lumen Photo Editor")
        with open(state_path, encoding="utf-8") as file:
            check(len(json.load(file)["apps"]) == 1, "one app")

        # A second start finds the first one's window and ends.
        second = subprocess.run([program], timeout=30, check=False)
        check(second.returncode == 0, "a second start to end with status 0")
        check(veltrix.process.poll() is None, "the first start to go on")
    except DriveError:
        for node in walk(veltrix.root):
            print(node.get_role_name(), repr(node.get_name()), file=sys.stderr)
        raise
    finally:
        veltrix.close()

    veltrix = Veltrix(program, folder)
    try:
        veltrix.button("Choose app, currently Lumen Photo Editor")
        again = wait_for("the saved keywords", lambda: veltrix.measured_rows(len(KEYWORDS)))
        check(
            [row[1:5] for row in again] == [row[1:5] for row in first],
            f"the same metrics after a restart, got {again} after {first}",
        )
    finally:
        veltrix.close()
    print("1 passed, 0 failed")
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except DriveError as error:
        print(f"The end-to-end test failed: {error}.", file=sys.stderr)
        sys.exit(1)
