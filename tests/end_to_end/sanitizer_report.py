# SPDX-License-Identifier: GPL-3.0-or-later
"""Succeeds, but leaves what a sanitizer would write about the program: tests/end_to_end/run has to fail."""
import os

from flow import run


def steps(flow):
    del flow
    options = dict(option.split("=", 1) for option in os.environ["ASAN_OPTIONS"].split(":"))
    with open(options["log_path"] + ".1", "w", encoding="ascii") as report:
        report.write("A report that a test has made up.\n")


if __name__ == "__main__":
    run(steps)
