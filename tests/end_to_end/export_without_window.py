# SPDX-License-Identifier: GPL-3.0-or-later
"""Exporting without a window and without a display: the table and the history, by itself and beside
an open window, to standard output and to a file."""
import csv
import io
import json
import os
import resource
import signal
import subprocess

from flow import run
from window_driver import check, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["collage maker", "photo editor", "retro photo"]
DAY = 86_400
MARK = "\ufeff"
DONE, INCOMPLETE, WRONG_USE, BUSY = range(4)


def environment():
    """As a job starts it: no display, no session."""
    kept = dict(os.environ)
    for name in ("DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"):
        kept.pop(name, None)
    return kept


def export(flow, *options, **process):
    """Exit status, standard output and standard error."""
    ended = subprocess.run(
        [flow.program, "--export", *options],
        env=environment(),
        capture_output=True,
        timeout=60,
        check=False,
        **process,
    )
    return ended.returncode, ended.stdout.decode("utf-8"), ended.stderr.decode("utf-8")


def exported(flow, *options):
    """What is written by one that succeeds and says nothing else."""
    status, out, errors = export(flow, *options)
    check((status, errors) == (DONE, ""), f"status 0, got {status}: {errors}")
    return out


def rows_of(text):
    return list(csv.DictReader(io.StringIO(text, newline="")))


def add_past(flow, days):
    """As if every keyword had been measured on so many days before, each at another rank."""
    state = flow.state()
    for snapshot in list(state["snapshots"]):
        for day in range(1, days + 1):
            earlier = dict(snapshot)
            earlier.update(
                id=f"{day:08X}{snapshot['id'][8:]}",
                fetchedAt=snapshot["fetchedAt"] - day * DAY,
                position=day,
            )
            state["snapshots"].append(earlier)
    with open(flow.state_file, "w", encoding="utf-8") as file:
        json.dump(state, file)


def all_forms(flow, days):
    """Everything that can be exported, which is the same whoever does it."""
    table = exported(flow, "csv")
    rows = rows_of(table)
    check(not table.startswith(MARK), "no mark on standard output")
    check([row["Keyword"] for row in rows] == KEYWORDS, f"a row a keyword, got {table}")
    check(all(row["App"] == APP and row["Best"] for row in rows), f"whole rows, got {table}")

    objects = json.loads(exported(flow, "json"))
    check([one["keyword"] for one in objects] == KEYWORDS, f"an object a keyword, got {objects}")
    for row, one in zip(rows, objects):
        check(one["measuredAt"][:10] == row["Measured at (UTC)"][:10], f"one date, got {one}")
        check(str(one["rank"]) == row["Ranking"] or one["rank"] is None, f"one rank, got {one}")
        check(str(one["bestRank"]) == row["Best"], f"one best rank, got {one} and {row}")

    history = exported(flow, "csv", "--history")
    lines = rows_of(history)
    check(len(lines) == len(KEYWORDS) * (days + 1), f"all measurements, got {len(lines)}")
    dates = [line["Measured at (UTC)"] for line in lines if line["Keyword"] == KEYWORDS[0]]
    check(dates == sorted(dates), f"oldest first, got {dates[:3]}")

    records = json.loads(exported(flow, "json", "--history", "--app", APP, "--storefront", "us"))
    check(len(records) == len(lines), f"the same in JSON, got {len(records)}")
    for line, record in zip(lines, records):
        check(
            (record["keyword"], record["fetchedAt"][:10])
            == (line["Keyword"], line["Measured at (UTC)"][:10]),
            f"the same order, got {record['keyword']}",
        )
    check(records[0]["position"] == days, f"raw values, got {records[0]['position']}")

    status, out, errors = export(flow, "json", "--app", "Nobody")
    check((status, out) == (WRONG_USE, "") and APP in errors, f"wrong use, got {status}: {errors}")
    return table, history


def to_a_file(flow, table):
    """Whole, or as it was."""
    folder = os.path.dirname(flow.data)
    path = os.path.join(folder, "ranks.csv")
    check(exported(flow, "csv", "--output", path) == "", "nothing on standard output")
    with open(path, encoding="utf-8", newline="") as file:
        check(file.read() == MARK + table, "the table, with the mark for spreadsheets")

    def no_room():
        resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096))

    for target in (["--output", path], []):
        status, out, errors = export(
            flow,
            "json",
            "--history",
            *target,
            preexec_fn=no_room,
            restore_signals=False,  # SIGXFSZ stays ignored, as on a disk that is full.
        )
        check((status, out) == (INCOMPLETE, ""), f"status 1 and nothing else, got {status}: {out}")
        check("could not be written" in errors, f"the reason, got {errors}")
    with open(path, encoding="utf-8", newline="") as file:
        check(file.read() == MARK + table, "the file as it was")
    left = [name for name in os.listdir(folder) if "ranks.csv" in name]
    check(left == ["ranks.csv"], f"no leftover, got {left}")

    status, _, errors = export(flow, "csv", "--output", os.path.join(folder, "none", "x.csv"))
    check(status == INCOMPLETE and "x.csv" in errors, f"the folder to be missing, got {errors}")


def refuses_a_damaged_state(flow):
    """Nothing is no export of something that cannot be read."""
    with open(flow.state_file, "rb") as file:
        whole = file.read()
    with open(flow.state_file, "wb") as file:
        file.write(whole[:-20])
    status, out, errors = export(flow, "json")
    check((status, out) == (INCOMPLETE, "") and errors, f"status 1, got {status}: {out} {errors}")
    with open(flow.state_file, "wb") as file:
        file.write(whole)


def to_one_who_leaves(flow):
    """As "| head -n 2" does."""
    exporting = subprocess.Popen(
        [flow.program, "--export", "json", "--history"],
        env=environment(),
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
    )
    check(exporting.stdout.readline() == b"[\n", "the first line")
    exporting.stdout.close()
    errors = exporting.stderr.read()
    check((exporting.wait(60), errors) == (DONE, b""), f"a quiet end, got {errors}")


def keeps_nobody_waiting(flow):
    """One that reads as slowly as "| less" does not hold the data meanwhile."""
    exporting = subprocess.Popen(
        [flow.program, "--export", "json", "--history"],
        env=environment(),
        stdout=subprocess.PIPE,
    )
    first = exporting.stdout.readline()
    with flow.started() as veltrix:
        wait_for("the keywords", lambda: veltrix.keywords() == KEYWORDS)
        check(exporting.poll() is None, "the reader to have most before him")
    rest = exporting.stdout.read()
    status = exporting.wait(60)
    check(status == DONE, f"status 0, got {status}")
    check(json.loads(first + rest) != [], "all of it, though late")


def steps(flow):
    days = 120
    check(exported(flow, "csv").count("\r\n") == 1, "the header alone")
    check(exported(flow, "json", "--history") == "[]\n", "an empty array")
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        wait_for("metrics", lambda: veltrix.measured_rows(len(KEYWORDS)), 120)
    add_past(flow, days)
    alone = all_forms(flow, days)
    to_a_file(flow, alone[0])
    to_one_who_leaves(flow)
    keeps_nobody_waiting(flow)
    refuses_a_damaged_state(flow)
    with flow.started() as veltrix:
        wait_for("the keywords", lambda: veltrix.keywords() == KEYWORDS)
        check(all_forms(flow, days) == alone, "the same beside a window")
        to_a_file(flow, alone[0])
        to_one_who_leaves(flow)
        veltrix.process.send_signal(signal.SIGSTOP)
        status, out, errors = export(flow, "csv")
        veltrix.process.send_signal(signal.SIGCONT)
        check(
            (status, out) == (BUSY, "") and "does not answer" in errors,
            f"status 3, got {status}: {errors}",
        )


if __name__ == "__main__":
    run(steps)
