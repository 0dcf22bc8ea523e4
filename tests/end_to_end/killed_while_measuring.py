# SPDX-License-Identifier: GPL-3.0-or-later
"""The program is killed in the middle of measuring; the next start has every keyword and goes on."""
from flow import run
from window_driver import check, wait_for

KEYWORDS = ["collage maker", "photo editor", "remove background", "retro photo"]


def is_half_way(veltrix):
    rows = veltrix.rows()
    waiting = sum(row[5] == "Pending" for row in rows)
    return len(rows) == len(KEYWORDS) and 0 < waiting < len(rows)


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app("Lumen Photo Editor")
        veltrix.add_keywords(KEYWORDS)
        wait_for("some keywords to be measured and some not", lambda: is_half_way(veltrix), 60)
        veltrix.kill()

    saved = flow.state()
    check(flow.saved_keywords() == KEYWORDS, f"all keywords, got {flow.saved_keywords()}")
    measured = {snapshot["id"]: snapshot for snapshot in saved["snapshots"]}
    check(0 < len(measured) < len(KEYWORDS), f"some measurements, got {len(measured)}")

    with flow.started() as veltrix:
        wait_for("every keyword", lambda: veltrix.keywords() == KEYWORDS)
        wait_for("measuring to go on to its end", lambda: veltrix.measured_rows(4), 120)
    after = flow.state()
    check(
        sorted(snapshot["keyword"] for snapshot in after["snapshots"]) == KEYWORDS,
        "one measurement a keyword",
    )
    kept = {s["id"]: s for s in after["snapshots"] if s["id"] in measured}
    check(kept == measured, "the measurements from before to be kept as they were")


if __name__ == "__main__":
    run(steps)
