# SPDX-License-Identifier: GPL-3.0-or-later
"""Looks whether the guide's links, headings and pictures are there, and whether each picture is made of
a scene of the gallery and told in words."""
import os
import re
import sys

from page import Findings, pages


def made_pictures(root):
    """Pictures of scripts/guide-pictures, and the scene of each."""
    with open(os.path.join(root, "scripts", "guide-pictures"), encoding="utf-8") as file:
        listed = re.search(r"^pictures=\(\n(.*?)^\)", file.read(), re.DOTALL | re.MULTILINE)[1]
    return dict(line.strip().strip('"').split(" ") for line in listed.splitlines())


def scenes(root):
    folder = os.path.join(root, "tests", "ui", "gallery")
    text = ""
    for name in sorted(os.listdir(folder)):
        with open(os.path.join(folder, name), encoding="utf-8") as file:
            text += file.read()
    return set(re.findall(r'"([a-z0-9-]+)"', text))


def check_link(folder, page, guide, where, target, findings):
    if target.startswith(("https://", "mailto:")):
        findings.check(False, f"{where}: “{target}” leaves the guide, which has to be read offline")
        return
    path, _, anchor = target.partition("#")
    if path:
        findings.check(os.path.exists(os.path.join(folder, path)), f"{where}: “{path}” is not there")
    if anchor:
        aim = next((other for other in guide if other.name == path), None) if path else page
        findings.check(aim is not None and anchor in [h.anchor for h in aim.headings()],
                       f"{where}: no heading is called “{anchor}”")


def main():
    root = sys.argv[1]
    folder = os.path.join(root, "docs", "guide")
    guide = pages(root)
    findings = Findings()
    shown = set()
    for page in guide:
        for line, _, target in page.links():
            check_link(folder, page, guide, f"{page.name}:{line}", target, findings)
        for line, words, target in page.pictures():
            findings.check(len(words.split()) >= 4, f"{page.name}:{line}: the picture is not told in words")
            shown.add(target)
    linked = {target.partition("#")[0] for page in guide if page.name == "README.md"
              for _, _, target in page.links()}
    for page in guide:
        findings.check(page.name in linked | {"README.md"}, f"the contents do not name {page.name}")
    made = {f"images/{name}.png" for name in made_pictures(root)}
    there = {f"images/{name}" for name in os.listdir(os.path.join(folder, "images"))}
    findings.check(shown == made == there, f"shown, made and kept pictures differ: {shown ^ made | made ^ there}")
    known = scenes(root)
    for name, scene in made_pictures(root).items():
        findings.check(scene in known, f"{name}.png: no scene of the gallery is called {scene}")
    with open(os.path.join(root, "README.md"), encoding="utf-8") as file:
        findings.check("(docs/guide/README.md)" in file.read(), "README.md does not point to the guide")
    return findings.end()


if __name__ == "__main__":
    sys.exit(main())
