# SPDX-License-Identifier: GPL-3.0-or-later
"""The installed program in the hands of a user: installed.py STAGE PROGRAM HOME NEW_VERSION.

HOME is the user's folder as it is seen from outside the program's root."""
import json
import os
import subprocess
import sys

from window_driver import Atspi, DriveError, Veltrix, check, describe, saved_state, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["photo editor", "collage maker", "retro photo"]


class Stages:
    def __init__(self, program, home, version):
        self.veltrix = Veltrix(program)
        self.data = os.path.join(home, ".local", "share")
        self.noted = os.path.join(home, "rows.json")
        self.handed = os.path.join(home, "handed.deb")
        self.version = version

    def measured(self):
        rows = wait_for("metrics", lambda: self.veltrix.measured_rows(len(KEYWORDS)), 180)
        for row in rows:
            print("  " + row[0])
        return rows

    def symbol_is_drawn(self, name):
        """A symbol is an SVG of the program's own: its place has more than the colour of the ground."""
        button = self.veltrix.button(name)
        area = Atspi.Component.get_extents(button, Atspi.CoordType.SCREEN)
        side = 16
        left = area.x + (area.width - side) // 2
        top = area.y + (area.height - side) // 2
        look = ["import", "-window", "root", "-crop", f"{side}x{side}+{left}+{top}", "-format", "%k", "info:"]
        colours = int(subprocess.run(look, check=True, capture_output=True, text=True).stdout)
        check(colours > 2, f"a symbol on “{name}”, got {colours} colours")
        print(f"  the symbol of “{name}” has {colours} colours")

    def measure(self):
        self.veltrix.add_app(APP)
        self.veltrix.add_keywords(KEYWORDS)
        rows = self.measured()
        check(all("Rank" in row[5] for row in rows), f"ranks, got {rows}")
        with open(self.noted, "w", encoding="utf-8") as file:
            json.dump([row[1:6] for row in rows], file)
        self.symbol_is_drawn("Settings")
        self.symbol_is_drawn("Refresh")
        self.veltrix.press("Settings")
        self.veltrix.dialog("Settings")
        self.veltrix.text("App Store search")
        self.veltrix.press("Dark")
        wait_for("a dark window", lambda: self.veltrix.brightness() < 0.3)

    def update(self):
        self.veltrix.press("Settings")
        self.veltrix.dialog("Settings")
        self.veltrix.press("Check Now")
        print("  " + self.veltrix.text(f"Version {self.version} is available."))
        self.veltrix.press("Download")
        wait_for("the package to be handed to the desktop", lambda: os.path.exists(self.handed), 60)
        print("  " + self.veltrix.text(starts=f"Version {self.version} was verified and handed to"))

    def again(self):
        rows = self.measured()
        with open(self.noted, encoding="utf-8") as file:
            before = json.load(file)
        check([row[1:5] for row in rows] == [row[:4] for row in before], f"{before}, got {rows}")
        wait_for("a dark window", lambda: self.veltrix.brightness() < 0.3)
        tracked = sorted(keyword["keyword"] for keyword in saved_state(self.data)["trackedKeywords"])
        check(tracked == sorted(KEYWORDS), f"the keywords in the state file, got {tracked}")
        self.veltrix.press("Settings")
        self.veltrix.dialog("Settings")
        self.veltrix.text(f"{self.version} ({self.version})")


def main():
    stage, *arguments = sys.argv[1:]
    stages = Stages(*arguments)
    try:
        getattr(stages, stage)()
    except DriveError as error:
        # On the standard output, whose reader is still there when all processes end with this one.
        print(describe(stages.veltrix.root))
        print(f"The window did not do it: {error}.", flush=True)
        sys.exit(1)
    finally:
        stages.veltrix.close()


if __name__ == "__main__":
    main()
