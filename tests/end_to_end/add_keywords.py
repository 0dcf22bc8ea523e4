# SPDX-License-Identifier: GPL-3.0-or-later
"""A long list for two storefronts: typed lines, storefronts checked by keyboard, added by Ctrl+Enter."""
from flow import run
from window_driver import check

APP = "Lumen Photo Editor"
FIELD = "Enter keyword(s), comma-separated"
COUNT = 120


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.key("Ctrl+n")
        popover = veltrix.dialog("Add Keyword")
        veltrix.wait_focus(FIELD)
        lines = [f"keyword number {number}" for number in range(COUNT)]
        veltrix.type_into(FIELD, "\n".join(lines + ["Keyword number 1", "x" * 101]))
        veltrix.text(
            "122 keywords: 120 will be added, 1 is repeated, 1 cannot be added", inside=popover
        )
        veltrix.tab_to("Search storefronts")
        for letter in "germ":
            veltrix.key(letter)
        veltrix.key("Return")
        veltrix.text("2 chosen", inside=popover)
        veltrix.text(
            "122 keywords × 2 storefronts: 240 will be added, 1 is repeated, 1 cannot be added",
            inside=popover,
        )
        veltrix.key("Ctrl+Return")
        flow.wait_state(
            "the keywords of both storefronts", lambda state: len(state["trackedKeywords"]) == 240
        )
        places = {keyword["country"] for keyword in flow.state()["trackedKeywords"]}
        check(places == {"US", "DE"}, f"two storefronts, got {places}")
        # What was refused stays to be mended.
        veltrix.text("240 added, 1 refused", inside=popover)
        veltrix.key("Escape")
        veltrix.wait_closed("Add Keyword")


if __name__ == "__main__":
    run(steps)
