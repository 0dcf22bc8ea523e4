# SPDX-License-Identifier: GPL-3.0-or-later
"""A page of the guide as the tests see it: its fenced blocks, tables, code spans, quotations and links."""
import os
import re
from dataclasses import dataclass

FENCE = re.compile(r"^ *```(.*)$")
CODE = re.compile(r"`([^`\n]+)`")
LINK = re.compile(r"!?\[([^\]]*)\]\(([^)\s]+)\)")
BOLD = re.compile(r"\*\*(.+?)\*\*")


@dataclass(frozen=True)
class Block:
    """A fenced block: its info string, its text, and the line on which it begins."""

    info: str
    text: str
    line: int

    @property
    def language(self):
        return self.info.split(" ")[0]


@dataclass(frozen=True)
class Heading:
    text: str
    line: int

    @property
    def anchor(self):
        """As web sites name it."""
        return re.sub(r"[^\w\- ]", "", self.text.lower()).replace(" ", "-")


class Page:
    def __init__(self, text, name="page.md"):
        self.name = name
        self.lines = text.splitlines()
        self.blocks = []
        # What is not in a fenced block.
        self.prose = []
        self._read()

    @classmethod
    def load(cls, path):
        with open(path, encoding="utf-8") as file:
            return cls(file.read(), os.path.basename(path))

    def _read(self):
        begun = None
        for number, line in enumerate(self.lines, start=1):
            fence = FENCE.match(line)
            if begun is None and fence:
                begun = (fence[1].strip(), number, [])
            elif begun is not None and fence:
                self.blocks.append(Block(begun[0], "\n".join(begun[2]), begun[1]))
                begun = None
            elif begun is not None:
                begun[2].append(line)
            else:
                self.prose.append((number, line))
        if begun is not None:
            raise ValueError(f"{self.name}:{begun[1]}: the block has no end")

    def expected_after(self, block):
        """The block that shows what another prints: the next one, with nothing but empty lines between."""
        following = [other for other in self.blocks if other.line > block.line]
        if not following or following[0].language != "text":
            return None
        end = block.line + block.text.count("\n") + 2
        between = self.lines[end:following[0].line - 1]
        return following[0] if not any(line.strip() for line in between) else None

    def code_spans(self):
        return [(number, span) for number, line in self.prose for span in CODE.findall(line)]

    def links(self):
        return [(number, text, target) for number, line in self.prose
                for text, target in LINK.findall(CODE.sub("", line))]

    def pictures(self):
        return [(number, text, target) for number, line in self.prose
                for text, target in re.findall(r"!\[([^\]]*)\]\(([^)\s]+)\)", line)]

    def quotations(self):
        """What stands in bold, by its line."""
        return [(number, text) for number, line in self.prose for text in BOLD.findall(line)]

    def headings(self):
        return [Heading(line.lstrip("#").strip(), number) for number, line in self.prose
                if line.startswith("#")]

    def table_after(self, line):
        """The cells of the first table behind a line, header and rule left out."""
        rows = []
        for _, text in [(n, t) for n, t in self.prose if n > line]:
            if text.startswith("|"):
                rows.append([cell.strip() for cell in text.strip().strip("|").split("|")])
            elif rows:
                break
            elif text.strip():
                raise ValueError(f"{self.name}:{line}: no table follows")
        return rows[2:]


def pages(root):
    folder = os.path.join(root, "docs", "guide")
    return [Page.load(os.path.join(folder, name)) for name in sorted(os.listdir(folder))
            if name.endswith(".md")]


class Findings:
    """What is wrong, gathered so that one run tells all of it."""

    def __init__(self):
        self.found = []
        self.checked = 0

    def check(self, holds, what):
        self.checked += 1
        if not holds:
            self.found.append(what)

    def end(self):
        for what in self.found:
            print(f"guide: {what}")
        print(f"{self.checked - len(self.found)} passed, {len(self.found)} failed")
        return 1 if self.found or not self.checked else 0
