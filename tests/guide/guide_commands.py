# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs what the guide tells its readers to type, page by page, in the order of the page; compares what
is printed, and looks whether the paths exist and the questions to the history have answers."""
import glob
import os
import re
import sqlite3
import subprocess
import sys
import tempfile

from home import DATA, World
from page import Findings, pages
from source_texts import all_texts

# What has happened before a page begins.
HOMES = {
    "README.md": "empty",
    "backup.md": "measured",
    "every-day.md": "tracked",
    "exporting.md": "measured",
    "figures.md": "empty",
    "first-steps.md": "empty",
    "history-database.md": "years",
    "limits.md": "empty",
    "privacy.md": "empty",
    "removing.md": "measured",
    "troubleshooting.md": "measured",
    "your-data.md": "years",
}


def packages_name(root, block):
    """The package of this version, for the machine that Debian calls amd64."""
    with open(os.path.join(root, "CMakeLists.txt"), encoding="utf-8") as file:
        version = re.search(r"project\(veltrix\s+VERSION\s+([\d.]+)", file.read())[1]
    with open(os.path.join(root, "cmake/VeltrixPackage.cmake"), encoding="utf-8") as file:
        package = file.read()
    # With this the packager names a file <name>_<version>_<architecture>.deb.
    named_so = ("set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)" in package and "set(CPACK_PACKAGE_NAME veltrix)" in package
                and "CPACK_DEBIAN_PACKAGE_RELEASE" not in package)
    return named_so and f"./veltrix_{version}_amd64.deb" in block.text


def names_the_units(root, block):
    with open(os.path.join(root, "src/effects/linux/daily_timer.cpp"), encoding="utf-8") as file:
        source = file.read()
    units = re.findall(r"veltrix-measure\.\w+", block.text)
    return units and all(f'"{unit}"' in source for unit in units)


def names_the_package(_, block):
    return block.text == "sudo apt remove veltrix"


# Blocks marked "by-hand": why they are not run, and what is looked at instead.
BY_HAND = {
    ("first-steps.md", "sudo apt install"): ("changes the machine", packages_name),
    ("removing.md", "sudo apt remove"): ("changes the machine", names_the_package),
    ("every-day.md", "systemctl --user list-timers"): ("needs a session's service manager", names_the_units),
    ("removing.md", "systemctl --user disable"): ("needs a session's service manager", names_the_units),
}

# Paths that no test home has: why, and the part of their name that the sources make it of.
NOT_HERE = {
    "~/.config/systemd/user/veltrix-measure.timer": ("written by the settings", "veltrix-measure.timer"),
    "~/.config/systemd/user/veltrix-measure.service": ("written by the settings", "veltrix-measure.service"),
    "~/.config/Veltrix": ("written by the window", "/Veltrix"),
    "~/.cache/Veltrix": ("filled by the window", "/Veltrix"),
    "~/.config/Veltrix/Veltrix.conf": ("written by the window", "/Veltrix/Veltrix.conf"),
    "~/.cache/Veltrix/artwork/": ("filled by the window", "/artwork"),
    "~/.cache/Veltrix/updates/": ("filled by an update", "/updates"),
    "aso_store_state.unreadable-….json": ("after damage", "unreadable"),
    "aso_store_state.replaced-….json": ("after another program wrote it", "replaced"),
    "history.version-1.sqlite": ("after an upgrade from the first version", "%1/%2.version-%3"),
    "history.sqlite-journal": ("while the database is written", "-journal"),
    "caches.sqlite": ("made for more than a hundred keywords", "/caches.sqlite"),
    "told_ranks_v1.json": ("after a run with --notify", "/told_ranks_v1.json"),
    "/usr/bin/veltrix": ("installed by the package", None),
    "/usr/share/veltrix": ("installed by the package", None),
}

FILE_NAME = re.compile(r"^[\w.…*-]+\.(json|sqlite|conf|csv|tar\.gz|lock|timer|service|sqlite-journal)$")


def is_path(span):
    return span.startswith(("~/", "/")) or bool(FILE_NAME.match(span)) or span == ".veltrix.lock"


def found(home, span):
    """A path as a reader takes it: in the home, in the folder of the commands, or in the data folder."""
    pattern = span.replace("…", "*")
    if pattern.startswith("~/"):
        return glob.glob(os.path.join(home, pattern[2:]))
    if pattern.startswith("/"):
        return glob.glob(pattern)
    return glob.glob(os.path.join(home, pattern)) or glob.glob(os.path.join(home, DATA, pattern))


def matches(printed, expected, is_about):
    """Equal line by line; "…" stands for anything, as a whole line for any lines, and where figures
    change, each number for any."""
    patterns = []
    for line in expected.strip("\n").split("\n"):
        pattern = re.escape(line)
        if is_about:
            pattern = re.sub(r"\d+", r"\\d+", pattern)
        patterns.append(r"[\s\S]*" if line == "…" else pattern.replace("…", ".*"))
    return re.fullmatch("\n".join(patterns), printed.strip("\n")) is not None


class Reader:
    """Somebody who does what one page says."""

    def __init__(self, world, page, findings):
        self.world, self.page, self.findings = world, page, findings
        self.home = world.home(HOMES[page.name], page.name.removesuffix(".md"))
        self.paths = {span for _, span in page.code_spans() if is_path(span)}
        self.seen = set()
        self.look()

    def look(self):
        self.seen |= {path for path in self.paths - self.seen if found(self.home, path)}

    def read(self):
        for block in self.page.blocks:
            where = f"{self.page.name}:{block.line}"
            if block.info == "sh":
                self.run(block, where)
            elif block.info == "sh by-hand":
                self.check_by_hand(block, where)
            elif block.info == "sql":
                self.ask(block, where)
            else:
                self.findings.check(block.info in ("text", "text about"),
                                    f"{where}: no such kind of block: “{block.info}”")
            self.look()
        for path in sorted(self.paths):
            self.findings.check(path in self.seen or path in NOT_HERE,
                                f"{self.page.name}: “{path}” is not there")

    def run(self, block, where):
        ended = self.world.run(self.home, block.text)
        self.findings.check(ended.returncode == 0,
                            f"{where}: ended with {ended.returncode}: {ended.stdout}{ended.stderr}")
        expected = self.page.expected_after(block)
        if expected:
            printed = ended.stdout.replace(self.home, "/home/you").replace("\r\n", "\n")
            self.findings.check(matches(printed, expected.text, expected.info == "text about"),
                                f"{where}: prints\n{printed}\nand not\n{expected.text}")

    def check_by_hand(self, block, where):
        known = [check for (page, start), (_, check) in BY_HAND.items()
                 if page == self.page.name and block.text.startswith(start)]
        self.findings.check(len(known) == 1, f"{where}: is not in the list of what is done by hand")
        for check in known:
            self.findings.check(check(self.world.root, block), f"{where}: names something else")

    def ask(self, block, where):
        ended = subprocess.run(
            ["sqlite3", "-readonly", "-header", os.path.join(self.home, DATA, "history.sqlite")],
            input=block.text, text=True, capture_output=True, check=False, cwd=self.home)
        self.findings.check(ended.returncode == 0 and not ended.stderr, f"{where}: {ended.stderr}")
        self.findings.check(len(ended.stdout.splitlines()) > 1, f"{where}: has no answer")


def schema_of(database):
    """Tables and their columns, as the database itself tells them."""
    with sqlite3.connect(f"file:{database}?mode=ro", uri=True) as connection:
        tables = [row[0] for row in connection.execute(
            "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'")]
        return {table: [row[1] for row in connection.execute(f"PRAGMA table_info({table})")]
                for table in tables}


def documented_tables(page):
    """What stands under headings such as "### `tag`": the first column of the table there."""
    tables = {}
    for heading in page.headings():
        name = re.fullmatch(r"`(\w+)`.*", heading.text)
        if name:
            after = next(number for number, line in page.prose
                         if number > heading.line and line.startswith("|"))
            tables[name[1]] = [row[0].strip("`") for row in page.table_after(after - 1)]
    return tables


def check_schema(world, guide, findings):
    page = next(page for page in guide if page.name == "history-database.md")
    real = schema_of(os.path.join(world.folder, "history-database", DATA, "history.sqlite"))
    told = documented_tables(page)
    for table in sorted(real.keys() | told.keys()):
        findings.check(real.get(table) == told.get(table),
                       f"{page.name}: table {table} has {real.get(table)}, told are {told.get(table)}")


def check_lists(root, guide, findings):
    """Nothing stands in the lists above that no page needs, and the sources know what they say."""
    spans = {span for page in guide for _, span in page.code_spans()}
    texts = {text.text for text in all_texts(os.path.join(root, "src"))}
    for path, (_, part) in NOT_HERE.items():
        findings.check(path in spans, f"“{path}” is in the list of what is not here, and on no page")
        findings.check(part is None or part in texts, f"“{part}” of “{path}” is not in the sources")
    for page, start in BY_HAND:
        told = [block for other in guide if other.name == page for block in other.blocks
                if block.info == "sh by-hand" and block.text.startswith(start)]
        findings.check(len(told) == 1, f"“{start}” is done by hand in {page}, which has {len(told)} of it")
    findings.check({page.name for page in guide} == HOMES.keys(), "every page needs a home")


def main():
    root, program, services, user = sys.argv[1:5]
    findings = Findings()
    guide = pages(root)
    check_lists(root, guide, findings)
    with tempfile.TemporaryDirectory() as folder:
        world = World(root, program, services, user, folder)
        try:
            for page in guide:
                if page.name in HOMES:
                    Reader(world, page, findings).read()
            check_schema(world, guide, findings)
        finally:
            world.close()
    return findings.end()


if __name__ == "__main__":
    sys.exit(main())
