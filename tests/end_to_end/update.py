# SPDX-License-Identifier: GPL-3.0-or-later
"""A check for updates finds the newer version; its package is downloaded, verified and handed on."""
import os

from flow import run
from session_service import SessionService
from window_driver import check, wait_for

OPENER = """#!/bin/sh
printf '%s\\n' "$1" >"{handed}.new"
cp "${{1#file://}}" "{copy}"
mv "{handed}.new" "{handed}"
"""


class FileManager:
    """The desktop's file manager, which notes what it is asked to show."""

    NAME = "org.freedesktop.FileManager1"
    PATH = "/org/freedesktop/FileManager1"
    DESCRIPTION = f"""
<node>
  <interface name="{NAME}">
    <method name="ShowItems">
      <arg type="as" direction="in"/><arg type="s" direction="in"/>
    </method>
  </interface>
</node>"""

    def __init__(self):
        self.shown = []

    def _answer(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        self.shown += arguments.unpack()[0]
        invocation.return_value(None)

    def __enter__(self):
        self._service = SessionService(self.NAME, self.PATH, self.DESCRIPTION, self._answer)
        return self

    def __exit__(self, *_):
        self._service.close()


def stand_in_for_the_desktop(folder):
    """Puts an xdg-open first in the path that notes what it is given; tells where it does."""
    programs = os.path.join(folder, "programs")
    handed = os.path.join(folder, "handed.txt")
    copy = os.path.join(folder, "handed.deb")
    os.makedirs(programs)
    opener = os.path.join(programs, "xdg-open")
    with open(opener, "w", encoding="utf-8") as file:
        file.write(OPENER.format(handed=handed, copy=copy))
    os.chmod(opener, 0o755)
    os.environ["PATH"] = programs + os.pathsep + os.environ["PATH"]
    return handed, copy


def steps(flow):
    handed, copy = stand_in_for_the_desktop(os.path.dirname(flow.data))
    with FileManager() as files, flow.started() as veltrix:
        veltrix.press("Settings")
        veltrix.dialog("Settings")
        veltrix.press("Check Now")
        veltrix.text("Version 99.0.0 is available.")
        veltrix.text("What is new\n• Rankings load faster.\n• Charts mark days without a check.")
        check(not os.path.exists(handed), "nothing to be opened before the user asks")
        veltrix.press("Download")
        wait_for("the package to be handed to the desktop", lambda: os.path.exists(handed))
        with open(handed, encoding="utf-8") as file:
            path = file.read().strip()
        check(path.endswith(".deb"), f"a package, got {path}")
        with open(copy, "rb") as file:
            check(file.read(8) == b"!<arch>\n", "the package that the feed offers")
        veltrix.text(
            "Version 99.0.0 was verified and handed to the system’s installer. "
            f"The package is in “{path.removeprefix('file://')}”."
        )
        check(not files.shown, "nothing to be shown before the user asks")
        veltrix.press("Show in Folder")
        wait_for("the file manager to show the package", lambda: files.shown)
        expected = ["file://" + path.removeprefix("file://")]
        check(files.shown == expected, f"{expected} to be shown, got {files.shown}")


if __name__ == "__main__":
    run(steps)
