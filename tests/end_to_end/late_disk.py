# SPDX-License-Identifier: GPL-3.0-or-later
"""The disk of the state file comes late, goes and comes back; nobody reads what the program prints;
the system asks it to end. Nothing is lost and nothing is silent."""
import os
import stat

from flow import run
from window_driver import check, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["collage maker", "photo editor"]
NOT_LOADED = "The saved data couldn’t be loaded"
NOT_SAVED = "The last change couldn’t be saved"


class Disk:
    """A disk on which the state file really lies, with a link to it from the data folder."""

    def __init__(self, flow):
        self.here = os.path.join(flow.data, "disk")
        self.away = self.here + "-away"
        os.mkdir(self.here)
        os.rename(flow.state_file, os.path.join(self.here, "state.json"))
        os.symlink(os.path.join(self.here, "state.json"), flow.state_file)

    def take_away(self):
        os.rename(self.here, self.away)

    def bring(self):
        os.rename(self.away, self.here)


def ends_orderly(veltrix):
    status = veltrix.close()
    check(status == 0, f"SIGTERM to end the program with status 0, got {status}")


def goes_and_comes_back(flow, disk, veltrix, keyword):
    """A change while the disk is away is kept, told, and saved when it is back."""
    before = flow.saved_keywords()
    disk.take_away()
    veltrix.add_keywords([keyword])
    veltrix.text(starts=NOT_SAVED)
    check(not veltrix.has(starts="Keywords saved"), "nobody to say that they are saved")
    disk.bring()
    veltrix.press("Try again")
    wait_for("the failed save to be gone", lambda: not veltrix.has(starts=NOT_SAVED))
    flow.wait_state(keyword, lambda _: flow.saved_keywords() == sorted(before + [keyword]))


def without_reader(flow, name, redirection):
    """A start of the program with its output as a shell leaves it."""
    path = os.path.join(os.path.dirname(flow.data), name)
    with open(path, "w", encoding="utf-8") as script:
        script.write(f'#!/bin/bash\nexec "{flow.program}" {redirection}\n')
    os.chmod(path, stat.S_IRWXU)
    return path


def printed_lines(folder):
    """Files that hold what should have been printed."""
    found = []
    for place, _, names in os.walk(folder):
        for name in names:
            with open(os.path.join(place, name), "rb") as file:
                if b"ASOStore" in file.read():
                    found.append(name)
    return found


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        ends_orderly(veltrix)
    settings = os.path.join(os.path.dirname(flow.data), "config", "Veltrix", "Veltrix.conf")
    with open(settings, encoding="utf-8") as file:
        check("windowGeometry" in file.read(), "the window's place to be remembered")

    disk = Disk(flow)
    disk.take_away()
    with flow.started() as veltrix:
        veltrix.text(starts=NOT_LOADED)
        veltrix.text("Saved data not loaded")
        disk.bring()
        veltrix.press("Try again")
        wait_for("the keywords of the disk", lambda: veltrix.keywords() == KEYWORDS)
        goes_and_comes_back(flow, disk, veltrix, "retro photo")
        ends_orderly(veltrix)
    check(os.path.islink(flow.state_file), "the link to stay a link")

    program = flow.program
    for name, redirection, keyword in (
        ("closed", "<&- >&- 2>&-", "remove background"),
        ("broken-pipe", "<&- > >(true) 2>&1", "film camera"),
    ):
        flow.program = without_reader(flow, name, redirection)
        with flow.started() as veltrix:
            goes_and_comes_back(flow, disk, veltrix, keyword)
            ends_orderly(veltrix)
        flow.program = program
    check(not printed_lines(flow.data), f"no printed line in {printed_lines(flow.data)}")


if __name__ == "__main__":
    run(steps)
