# SPDX-License-Identifier: GPL-3.0-or-later
"""Measuring without a window and without a display: by itself, beside an open window, and when the
window is wanted meanwhile."""
import json
import os
import resource
import signal
import subprocess
import time
import uuid

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


def track_more(flow, count):
    """Keywords that take a while: the pace is some seconds a search after the first few."""
    state = flow.state()
    for _ in range(count):
        tracked = dict(state["trackedKeywords"][0])
        tracked.update(id=str(uuid.uuid4()).upper(), keyword=f"photo filter {len(state['trackedKeywords'])}")
        state["trackedKeywords"].append(tracked)
    with open(flow.state_file, "w", encoding="utf-8") as file:
        json.dump(state, file)


def measured_today(flow):
    """UTC days since 2001, as the file counts."""
    today = int((time.time() - 978_307_200) // DAY)
    return len([s for s in flow.state()["snapshots"] if s["fetchedAt"] // DAY == today])


def begin(flow, *options):
    """A run that has measured its first keyword."""
    measuring = subprocess.Popen(
        [flow.program, "--measure", *options],
        env=environment(),
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        text=True,
    )
    first = measuring.stdout.readline()
    check("rank" in first, f"a first keyword, got {first} {measuring.poll()}")
    return measuring


def end(measuring, status):
    """The last line of one that ends with that status."""
    out, errors = measuring.communicate(timeout=120)
    check(measuring.returncode == status, f"{status}, got {measuring.returncode}: {out} {errors}")
    return out.splitlines()[-1]


def stops_at_a_signal(flow):
    for number in (signal.SIGINT, signal.SIGTERM):
        before = measured_today(flow)
        measuring = begin(flow)
        measuring.send_signal(number)
        last = end(measuring, INCOMPLETE)
        check("left for the next time" in last, f"what is left to be told, got {last}")
        measured = int(last.split()[0])
        check(measured_today(flow) == before + measured, f"all {measured} to be saved")


def makes_room(flow):
    measuring = begin(flow)
    with flow.started() as veltrix:
        wait_for("the keywords", lambda: len(veltrix.keywords()) > len(KEYWORDS))
        last = end(measuring, INCOMPLETE)
        check("left for the next time" in last, f"what is left to be told, got {last}")


def goes_on_when_the_window_closes(flow):
    with flow.started() as veltrix:
        wait_for("the keywords", lambda: len(veltrix.keywords()) > len(KEYWORDS))
        measuring = begin(flow)
    last = end(measuring, DONE)
    check("measured today already" in last, f"the rest and what the window did, got {last}")
    check(measured_today(flow) == len(flow.state()["trackedKeywords"]), "all to be measured")


def two_at_once(flow):
    track_more(flow, 6)
    first = begin(flow)
    second = begin(flow, "--app", APP)
    for measuring in (first, second):
        end(measuring, DONE)
    check(measured_today(flow) == len(flow.state()["trackedKeywords"]), "one measurement each")


def without_a_disk(flow):
    """Files may not grow: what is measured cannot be saved, and that is said."""
    track_more(flow, 1)
    before = flow.state()

    def no_room():
        resource.setrlimit(resource.RLIMIT_FSIZE, (1024, 1024))

    ended = subprocess.run(
        [flow.program, "--measure", "--storefront", "US"],
        env=environment(),
        capture_output=True,
        text=True,
        timeout=120,
        check=False,
        preexec_fn=no_room,
        restore_signals=False,  # SIGXFSZ stays ignored, as on a disk that is full.
    )
    last = ended.stdout.splitlines()[-1]
    check(ended.returncode == INCOMPLETE, f"status 1, got {ended.returncode}: {ended.stderr}")
    check("not saved" in last or "could not" in last, f"the reason, got {last}")
    check(flow.state() == before, "the state file as it was")


def without_a_state(flow):
    os.rename(flow.state_file, flow.state_file + ".kept")
    status, lines, _ = measure(flow)
    check((status, lines) == (DONE, ["No keyword is tracked."]), f"nothing tracked, got {lines}")
    os.mkdir(flow.state_file)
    status, lines, _ = measure(flow)
    check(status == INCOMPLETE and len(lines) == 1, f"one problem, got {status}: {lines}")
    check("aso_store_state.json" in lines[0] or "could not" in lines[0], f"a reason, got {lines}")
    os.rmdir(flow.state_file)
    os.rename(flow.state_file + ".kept", flow.state_file)


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)
    make_yesterdays(flow)
    by_itself(flow)
    beside_the_window(flow)
    track_more(flow, 9)
    stops_at_a_signal(flow)
    track_more(flow, 5)
    makes_room(flow)
    track_more(flow, 6)
    goes_on_when_the_window_closes(flow)
    two_at_once(flow)
    without_a_disk(flow)
    without_a_state(flow)


if __name__ == "__main__":
    run(steps)
