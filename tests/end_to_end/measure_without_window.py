# SPDX-License-Identifier: GPL-3.0-or-later
"""Measuring without a window and without a display: by itself, beside an open window, and when the
window is wanted meanwhile."""
import json
import os
import signal
import subprocess

from flow import run
from window_driver import check, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["collage maker", "photo editor", "retro photo"]
DAY = 86_400
DONE, INCOMPLETE, WRONG_USE, BUSY = range(4)


def environment():
    """As a timer starts it: no display, no session."""
    kept = dict(os.environ)
    for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"):
        kept.pop(name, None)
    return kept


def measure(flow, *options):
    """Exit status and lines of standard output, and all of standard error."""
    ended = subprocess.run(
        [flow.program, "--measure", *options],
        env=environment(),
        capture_output=True,
        text=True,
        timeout=120,
        check=False,
    )
    return ended.returncode, ended.stdout.splitlines(), ended.stderr


def make_yesterdays(flow):
    """As if all had been measured a day earlier."""
    state = flow.state()
    for snapshot in state["snapshots"]:
        snapshot["fetchedAt"] -= DAY
    with open(flow.state_file, "w", encoding="utf-8") as file:
        json.dump(state, file)


def measured_days(flow, keyword):
    ids = [tracked["id"] for tracked in flow.state()["trackedKeywords"] if tracked["keyword"] == keyword]
    return len([s for s in flow.state()["snapshots"] if s["trackedKeywordId"] in ids])


def by_itself(flow):
    status, lines, errors = measure(flow, "--app", "lumen photo editor")
    check(status == DONE, f"status 0, got {status}: {errors}")
    check(lines[-1] == "3 keywords measured.", f"the sum, got {lines}")
    check(
        sorted(line.split(" · ")[0] for line in lines[:-1]) == KEYWORDS and "rank" in lines[0],
        f"a line a keyword, got {lines}",
    )
    check(errors == "", f"no progress without a terminal, got {errors}")
    check(measured_days(flow, KEYWORDS[0]) == 2, "today's beside yesterday's")

    status, lines, _ = measure(flow)
    check((status, lines) == (DONE, ["3 were measured today already."]), f"nothing, got {lines}")

    status, lines, errors = measure(flow, "--app", "Nobody")
    check(status == WRONG_USE and not lines and APP in errors, f"wrong use, got {status}: {errors}")


def beside_the_window(flow):
    with flow.started() as veltrix:
        wait_for("the keywords", lambda: veltrix.keywords() == KEYWORDS)
        status, lines, errors = measure(flow, "--all", "--json")
        check(status == DONE, f"status 0, got {status}: {errors}")
        messages = [json.loads(line) for line in lines]
        check(
            sorted(m["keyword"]["keyword"] for m in messages[:-1]) == KEYWORDS,
            f"the keywords as JSON, got {lines}",
        )
        check(messages[-1]["summary"]["measured"] == 3, f"the sum as JSON, got {lines[-1]}")

        veltrix.process.send_signal(signal.SIGSTOP)
        status, _, errors = measure(flow)
        veltrix.process.send_signal(signal.SIGCONT)
        check(status == BUSY and "does not answer" in errors, f"status 3, got {status}: {errors}")


def makes_room(flow):
    measuring = subprocess.Popen(
        [flow.program, "--measure", "--all"],
        env=environment(),
        stdout=subprocess.PIPE,
        text=True,
    )
    measuring.stdout.readline()
    with flow.started() as veltrix:
        wait_for("the keywords", lambda: veltrix.keywords() == KEYWORDS)
        last = measuring.stdout.read().splitlines()[-1]
        check(measuring.wait(timeout=30) == INCOMPLETE, "the measuring to end for the window")
        check("left for the next time" in last, f"what is left to be told, got {last}")


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)
    make_yesterdays(flow)
    by_itself(flow)
    beside_the_window(flow)
    makes_room(flow)


if __name__ == "__main__":
    run(steps)
