# SPDX-License-Identifier: GPL-3.0-or-later
"""The second suggestion for what is typed, taken and added by the keyboard alone."""
from flow import run
from window_driver import check, texts, wait_for

APP = "Lumen Photo Editor"
FIELD = "Enter keyword(s), comma-separated"
TYPED = "coll"


def second_suggestion(popover):
    return next((name for name in texts(popover) if ", suggestion 2 of " in name), None)


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.key("Ctrl+n")
        popover = veltrix.dialog("Add Keyword")
        veltrix.wait_focus(FIELD)
        veltrix.type_keys(TYPED)
        second = wait_for("a second suggestion", lambda: second_suggestion(popover))
        term = second.split(", suggestion ")[0]
        veltrix.key("Down")
        veltrix.key("Down")
        veltrix.wait_focus(second)
        veltrix.key("Return")
        veltrix.wait_focus(FIELD)
        veltrix.key("Ctrl+Return")
        veltrix.wait_closed("Add Keyword")
        flow.wait_state("the keyword", lambda state: len(state["trackedKeywords"]) == 1)
        check(flow.saved_keywords() == [term], f"{term} in the table, got {flow.saved_keywords()}")
        wait_for("the row of the keyword", lambda: veltrix.keywords() == [term])


if __name__ == "__main__":
    run(steps)
