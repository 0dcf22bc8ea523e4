# SPDX-License-Identifier: GPL-3.0-or-later
"""Homes in which the guide's commands run: the program beside the sample services, and data that it
has made itself."""
import os
import shutil
import sqlite3
import subprocess
import sys
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts"))
from saved_history import add_earlier_days  # noqa: E402

DATA = ".local/share/Veltrix"
EARLIER_DAYS = 3_000


class World:
    """The sample services and the program, and homes to copy."""

    def __init__(self, root, program, services, user, folder):
        self.root, self.user, self.folder = root, user, folder
        bundle = os.path.join(folder, "bundle")
        self.bin = os.path.join(bundle, "bin")
        resources = os.path.join(bundle, "share", "veltrix")
        os.makedirs(self.bin)
        os.makedirs(resources)
        shutil.copy(program, os.path.join(self.bin, "veltrix"))
        ready = os.path.join(folder, "services.txt")
        # The day is set, so that the ranks on the pages stay.
        self.services = subprocess.Popen(
            [services, "--port", "0", "--date", "2026-11-22", "--ready-file", ready, "--certificate-file",
             os.path.join(resources, "TrustedCertificates.pem")], stdout=subprocess.DEVNULL)
        deadline = time.monotonic() + 20
        while not (os.path.exists(ready) and os.path.getsize(ready)):
            if time.monotonic() > deadline:
                raise RuntimeError("the sample services did not start")
            time.sleep(0.02)
        subprocess.run([os.path.join(root, "scripts", "demo-bundle"), ready, resources], check=True)
        # Suggestions are asked for once a second; nothing of the guide needs them.
        info = os.path.join(resources, "Info.plist")
        with open(info, encoding="utf-8") as file:
            text = file.read()
        with open(info, "w", encoding="utf-8") as file:
            file.write(text.replace("MZSearchHints.woa", "none"))
        self.made = {}

    def close(self):
        self.services.terminate()
        self.services.wait()

    def environment(self, home):
        """As a terminal without a desktop has it."""
        kept = {name: value for name, value in os.environ.items()
                if not name.startswith(("XDG_", "QT_", "DBUS_")) and name not in ("DISPLAY", "WAYLAND_DISPLAY")}
        runtime = home + ".run"
        os.makedirs(runtime, mode=0o700, exist_ok=True)
        kept.update(HOME=home, PATH=self.bin + ":/usr/bin:/bin", LC_ALL="C.UTF-8", TZ="UTC",
                    XDG_RUNTIME_DIR=runtime)
        return kept

    def run(self, home, script):
        return subprocess.run(["bash", "-euo", "pipefail", "-c", script], cwd=home, text=True, timeout=120,
                              env=self.environment(home), capture_output=True, check=False)

    def measured(self, home, options=""):
        ended = self.run(home, f"veltrix --measure {options}")
        if ended.returncode != 0:
            raise RuntimeError(f"measuring failed: {ended.stdout}{ended.stderr}")

    def does(self, home, work):
        subprocess.run([self.user, work, os.path.join(home, DATA)], check=True,
                       env=self.environment(home))

    def home(self, kind, name):
        """A new home: nothing in it, or what is tracked, or measured too, or kept for years."""
        return self.copy(kind, os.path.join(self.folder, name))

    def copy(self, kind, home):
        if kind not in self.made:
            made = os.path.join(self.folder, "made-" + kind)
            self.made[kind] = made
            getattr(self, "make_" + kind)(made)
        shutil.copytree(self.made[kind], home, symlinks=True)
        return home

    def make_empty(self, home):
        os.makedirs(home)

    def make_tracked(self, home):
        os.makedirs(os.path.join(home, DATA))
        self.does(home, "begin")

    def make_measured(self, home):
        self.make_tracked(home)
        self.measured(home)
        self.does(home, "write")

    def make_years(self, home):
        """So much that a part has moved into the history."""
        self.copy("measured", home)
        add_earlier_days(os.path.join(home, DATA, "aso_store_state.json"),
                         lambda place, newest: [newest] * EARLIER_DAYS)
        # A run that ends early leaves the rest of the move to the next one.
        for _ in range(6):
            self.measured(home, "--all --storefront gb")
            if self.has_moved(home):
                return
        raise RuntimeError("nothing has moved into the history")

    @staticmethod
    def has_moved(home):
        history = os.path.join(home, DATA, "history.sqlite")
        with sqlite3.connect(f"file:{history}?mode=ro", uri=True) as connection:
            return connection.execute("SELECT count(*) FROM observation").fetchone()[0] > 0
