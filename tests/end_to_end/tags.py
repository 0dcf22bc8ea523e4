# SPDX-License-Identifier: GPL-3.0-or-later
"""A tag by keyboard: added, filtered by, there again after a restart, and undone."""
from flow import run
from window_driver import check, find_all, wait_for

APP = "Lumen Photo Editor"
KEYWORDS = ["photo editor", "collage maker", "retro photo"]
TAG = "autumn"


def quit_by_key(veltrix):
    veltrix.key("Ctrl+q")
    wait_for("the program to end", lambda: veltrix.process.poll() is not None)
    check(veltrix.process.returncode == 0, "an end with status 0")


def tagged(veltrix):
    """The keywords whose rows name the tag."""
    return [row[0].split(", ")[0] for row in veltrix.rows() if f"Tags: {TAG}" in row[0]]


def is_open(veltrix):
    return bool(find_all(veltrix.root, ("text",), name="Find or add a tag"))


def tag_first(veltrix, text):
    """Types a tag for the first row."""
    veltrix.choose_row(0)
    veltrix.key("Ctrl+t")
    wait_for("the tags of the keyword", lambda: is_open(veltrix))
    veltrix.wait_focus("Find or add a tag")
    veltrix.type_keys(text)
    veltrix.key("Return")
    veltrix.key("Escape")
    wait_for("the tags to close", lambda: not is_open(veltrix))


def filter_by_tag(veltrix):
    veltrix.tab_to("Tag filter: All Tags")
    veltrix.key("Return")
    veltrix.wait_focus("Search tags")
    veltrix.key("Return")
    veltrix.key("Escape")


def steps(flow):
    with flow.started() as veltrix:
        veltrix.add_app(APP)
        veltrix.add_keywords(KEYWORDS)
        first = wait_for("keywords", lambda: sorted(veltrix.keywords()) == sorted(KEYWORDS))
        check(first, "all keywords")
        keyword = veltrix.keywords()[0]
        tag_first(veltrix, TAG)
        wait_for("the tag in the row", lambda: tagged(veltrix) == [keyword])
        filter_by_tag(veltrix)
        wait_for("the one keyword", lambda: veltrix.keywords() == [keyword])
        quit_by_key(veltrix)

    with flow.started() as veltrix:
        wait_for("the tag again", lambda: tagged(veltrix) == [keyword])
        check(len(veltrix.rows()) == len(KEYWORDS), "all keywords at the start")
        tag_first(veltrix, TAG)
        wait_for("no tag", lambda: tagged(veltrix) == [])
        veltrix.key("Ctrl+z")
        wait_for("the tag after undoing", lambda: tagged(veltrix) == [keyword])
        quit_by_key(veltrix)


if __name__ == "__main__":
    run(steps)
