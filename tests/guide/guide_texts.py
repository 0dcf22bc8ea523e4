# SPDX-License-Identifier: GPL-3.0-or-later
"""Holds the page of messages to the sources, both ways: what it quotes stands in them, and what they can
tell of a failure stands on the page. Labels that any page names stand there, too."""
import os
import re
import sys

from page import Findings, pages
from source_texts import all_texts, readable, tells_failure

# Texts that the rule takes for a failure, and why a reader needs no help with them.
NO_FAILURE = {
    "This will delete … and its saved ranking snapshot history.\nThis action cannot be undone.": "a question",
    "This will delete … keywords and their saved ranking snapshot history.\nThis action cannot be undone.":
        "a question",
    "This will delete … and all of its saved keywords and ranking snapshots.\nThis action cannot be undone.":
        "a question",
    "Veltrix will start with an empty list. The file that couldn’t be loaded is kept under another name in "
    "the same folder.": "a question",
    "Missing ratings count as zero. If no usable ages or rating momentum exist, those factors use the upstream "
    "midpoint of 50. Rating momentum means lifetime ratings per year, not measured recent growth.":
        "explains a figure",
    "Not found in returned results": "a rank",
    "Not measured today": "a filter",
    "Not measured yet": "the state of an app",
    "… of … not measured today": "the state of an app",
    "Not available": "a date of a listing",
    "Not available in this build": "the hint of a link",
    "Try again": "a button",
    "… cannot be added": "a count, its lines give the reasons",
    "… tags cannot be used": "a count, its lines give the reasons",
    "Copy refused": "a button: copies the refused lines",
    "… refused": "a count, its lines give the reasons",
    "Write what you did: an empty note is not saved.": "says what to do",
}

# What stands in quotation marks and is no label of the window.
NO_LABELS = {
    "; ", "stock options", "↑ 3", "Top 1, 3, 10, 50", "You by 3", "6 / 8", "At rank 1", "photo editor", "./",
    "New subtitle", "coverage", "photos", "too many requests", "No space left on device", "Permission denied",
    "database disk image is malformed", "disk I/O error", "|",
    # Beginnings of longer texts.
    "Missing inputs", "New-app baseline", "Saved raw value",
}


def check_labels(guide, known, findings):
    """What pages put in quotation marks, or in italics with a capital, is a text of the program."""
    met = set()
    for page in guide:
        for line, text in page.prose:
            if text.startswith("<!--"):
                continue
            text = re.sub(r"`[^`]*`", "", text)
            labels = re.findall(r'"([^"]+)"', text)
            if page.name != "figures.md":
                labels += re.findall(r"(?<!\*)\*([A-Z][^*]+)\*(?!\*)", text)
            met.update(labels)
            for label in labels:
                findings.check(label in known or label in NO_LABELS,
                               f"{page.name}:{line}: the program has no “{label}”")
    for label in NO_LABELS - met:
        findings.check(False, f"“{label}” is listed as no label, and stands nowhere")


def main():
    root = sys.argv[1]
    findings = Findings()
    texts = all_texts(os.path.join(root, "src"))
    known = {readable(text.text) for text in texts}
    guide = pages(root)
    check_labels(guide, known, findings)
    page = next(page for page in guide if page.name == "troubleshooting.md")
    quoted = {}
    for line, text in page.quotations():
        findings.check(text in known, f"{page.name}:{line}: the program does not say “{text}”")
        findings.check(text not in quoted, f"{page.name}:{line}: “{text}” stands there twice")
        quoted[text] = line
    told = {}
    for text in texts:
        if tells_failure(text):
            told.setdefault(readable(text.text), text)
    for said, text in told.items():
        where = f"src/{text.file}:{text.line}"
        findings.check(said in quoted or said in NO_FAILURE, f"{where}: “{said}” is not on {page.name}")
    for said in NO_FAILURE:
        findings.check(said in told, f"“{said}” is listed as no failure, and nothing says it")
        findings.check(said not in quoted, f"“{said}” is listed as no failure, and stands on {page.name}")
    return findings.end()


if __name__ == "__main__":
    sys.exit(main())
