# SPDX-License-Identifier: GPL-3.0-or-later
"""Measured every day: turned on and off in the settings, with a stand-in for the service manager, and
told in a notification that opens the overview."""
import json
import os
import signal
import subprocess

from desktop_notifications import DesktopNotifications
from flow import run
from gi.repository import Atspi
from window_driver import BUTTONS, check, children, find_all, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["collage maker", "photo editor", "retro photo"]
DAY = 86_400
# What it was told last decides what it says; it runs next on 2026-11-23 at 08:30 (UTC).
MANAGER = """#!/bin/sh
state=$(dirname "$0")/state
case "$*" in
*enable\\ veltrix*) echo enabled >"$state" ;;
*disable*) rm -f "$state" ;;
*show*timer*)
    if [ -e "$state" ]; then
        echo UnitFileState=enabled
        echo ActiveState=active
        echo NextElapseUSecRealtime=@1795422600
    fi
    ;;
esac
"""


def install_manager(flow):
    folder = os.path.join(os.path.dirname(flow.data), "manager")
    os.mkdir(folder)
    path = os.path.join(folder, "systemctl")
    with open(path, "w", encoding="utf-8") as file:
        file.write(MANAGER)
    os.chmod(path, 0o755)
    os.environ["PATH"] = folder + os.pathsep + os.environ["PATH"]


def turn_on_and_off(veltrix):
    unit = os.path.join(os.environ["XDG_CONFIG_HOME"], "systemd/user/veltrix-measure.timer")
    veltrix.key("Ctrl+,")
    settings = veltrix.dialog("Settings")
    veltrix.text(starts="Off.", inside=settings)
    veltrix.press("Measure every day", inside=settings)
    text = veltrix.text(starts="Next run: ", inside=settings)
    check("2026" in text, f"the next run, got {text}")
    check(os.path.exists(unit), "the timer's unit")
    veltrix.press("Measure every day", inside=settings)
    veltrix.text(starts="Off.", inside=settings)
    check(not os.path.exists(unit), "nothing to be left of the timer")
    veltrix.press("Done", inside=settings)
    veltrix.wait_closed("Settings")


def make_yesterdays(flow, places):
    """As if all had been measured a day earlier, so many places lower."""
    state = flow.state()
    for snapshot in state["snapshots"]:
        snapshot["fetchedAt"] -= DAY
        snapshot["position"] += places
    with open(flow.state_file, "w", encoding="utf-8") as file:
        json.dump(state, file)


def window():
    """The application of a window that somebody else has started."""
    for application in children(Atspi.get_desktop(0)):
        if find_all(application, BUTTONS, starts="Overview"):
            return application
    return None


def told(flow):
    desktop = DesktopNotifications()
    make_yesterdays(flow, 20)
    measuring = subprocess.Popen([flow.program, "--measure", "--notify"])
    try:
        wait_for("a notification", lambda: desktop.shown, 60)
        title, text = desktop.shown[0]
        check(title == "3 keywords rose", f"what happened, got {title}")
        check("collage maker" in text and "→" in text, f"which keywords, got {text}")
        check(measuring.poll() is None, "somebody to be there who hears of the click")
        desktop.click()
        opened = wait_for("the window", window)
        check(measuring.wait(timeout=30) == 0, "all to be measured")
        wait_for("the overview", lambda: find_all(opened, name="Movers"))
        os.kill(opened.get_process_id(), signal.SIGTERM)
        wait_for("the window to close", lambda: window() is None)
    finally:
        measuring.kill()
        measuring.wait()
    again = subprocess.run([flow.program, "--measure", "--all", "--notify"], timeout=60, check=False)
    check(again.returncode == 0 and len(desktop.shown) == 1, "nothing to be told twice")
    desktop.close()


def steps(flow):
    install_manager(flow)
    with flow.started() as veltrix:
        turn_on_and_off(veltrix)
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)
        check(not veltrix.has(name="Movers"), "the keywords to be shown")
        second = subprocess.run([flow.program, "--overview"], timeout=30, check=False)
        check(second.returncode == 0, "a second start to end")
        veltrix.text("Movers")
    told(flow)


if __name__ == "__main__":
    run(steps)
