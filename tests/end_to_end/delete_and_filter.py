# SPDX-License-Identifier: GPL-3.0-or-later
"""Two storefronts, the filter between them, and the two deletions with their confirmations."""
from flow import run
from window_driver import check, texts, wait_for

APP = "Lumen Photo Editor"


def wait_keywords(veltrix, keywords):
    wait_for(f"the keywords {keywords}", lambda: veltrix.keywords() == keywords)


def filter_by_storefront(veltrix):
    """New keywords belong to the storefront that is shown; the filter shows only its own."""
    veltrix.pick_storefront("Storefront filter: ", "Germany")
    wait_for("an empty table", lambda: not veltrix.rows())
    veltrix.add_keywords(["bildbearbeitung"])
    wait_keywords(veltrix, ["bildbearbeitung"])
    veltrix.pick_storefront("Storefront filter: ", "United States")
    wait_keywords(veltrix, ["collage maker", "photo editor"])
    veltrix.pick_storefront("Storefront filter: ", "All Countries")
    wait_keywords(veltrix, ["bildbearbeitung", "collage maker", "photo editor"])
    wait_for("metrics", lambda: veltrix.measured_rows(3), 120)


def ask(veltrix, question, message):
    veltrix.key("Delete")
    sheet = veltrix.dialog(question)
    said = texts(sheet)
    check(message in said, f"the message {message!r}, got {said}")
    return sheet


def delete_keyword(flow, veltrix):
    message = (
        "This will delete collage maker and its saved ranking snapshot history.\n"
        "This action cannot be undone."
    )
    veltrix.choose_keyword("collage maker")
    veltrix.press("Cancel", inside=ask(veltrix, "Delete Keyword?", message))
    veltrix.wait_closed("Delete Keyword?")
    veltrix.wait_focus("Keywords")
    check(len(veltrix.rows()) == 3, "three keywords after cancelling")
    check(len(flow.saved_keywords()) == 3, "three saved keywords after cancelling")

    veltrix.press("Delete Keyword", inside=ask(veltrix, "Delete Keyword?", message))
    wait_keywords(veltrix, ["bildbearbeitung", "photo editor"])
    flow.wait_state(
        "nothing of the keyword",
        lambda state: [k["keyword"] for k in state["trackedKeywords"]]
        == ["photo editor", "bildbearbeitung"]
        and {s["keyword"] for s in state["snapshots"]} == {"photo editor", "bildbearbeitung"},
    )


def delete_app(flow, veltrix):
    message = (
        f"This will delete {APP} and all of its saved keywords and ranking snapshots.\n"
        "This action cannot be undone."
    )
    veltrix.tab_to("Apps", ("list",))
    veltrix.press("Cancel", inside=ask(veltrix, "Delete App?", message))
    veltrix.wait_closed("Delete App?")
    check(len(flow.state()["apps"]) == 1, "the saved app after cancelling")

    veltrix.press("Delete App", inside=ask(veltrix, "Delete App?", message))
    veltrix.button("Choose app, currently none")
    veltrix.text("Add keywords to discover your next opportunity")
    flow.wait_state(
        "nothing",
        lambda state: not any(state[k] for k in ("apps", "trackedKeywords", "snapshots")),
    )


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(["photo editor", "collage maker"])
        wait_keywords(veltrix, ["collage maker", "photo editor"])
        filter_by_storefront(veltrix)
        delete_keyword(flow, veltrix)
        delete_app(flow, veltrix)


if __name__ == "__main__":
    run(steps)
