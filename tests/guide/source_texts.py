# SPDX-License-Identifier: GPL-3.0-or-later
"""The texts that stand in the program's sources, and which of them tell of something that failed."""
import os
import re
from dataclasses import dataclass

# One part of a literal: raw, or with escapes.
PART = re.compile(r'(?:u8|u|U|L)?R"(?P<mark>[^()\s\\]{0,16})\((?P<raw>.*?)\)(?P=mark)"'
                  r'|(?:u8|u|U|L)?"(?P<plain>(?:[^"\\\n]|\\.)*)"', re.DOTALL)
GAP = re.compile(r"(?:\s|//[^\n]*\n)*")
COMMENT = re.compile(r"//[^\n]*")
CHARACTER = re.compile(r"'(?:[^'\\]|\\.)+'")
MARKER = re.compile(r"(?:\btr|\btranslate|\bQStringLiteral|\bQLatin1String|\bQT_TRANSLATE_NOOP|\bQT_TR_NOOP)"
                    r"\s*\(\s*$")
ESCAPES = {"n": "\n", "t": "\t", '"': '"', "\\": "\\", "'": "'", "r": "\r", "0": "\0"}


@dataclass(frozen=True)
class SourceText:
    """A literal of the sources, its adjacent parts put together."""

    text: str
    file: str
    line: int
    # It is thrown, or what an error is made with.
    thrown: bool


def plain(part):
    if part["raw"] is not None:
        return part["raw"]
    return re.sub(r"\\(.)", lambda m: ESCAPES.get(m[1], m[0]), part["plain"])


def is_thrown(source, start):
    """Whether the statement in which a literal stands throws it, or hands it to an error's base."""
    before = source[max(source.rfind(end, 0, start) for end in ";{}"):start]
    return bool(re.search(r"\bthrow\b|:\s*Error\(|\b\w*Error::\w+\(|\bfail\(", before))


def texts_of(path, name):
    with open(path, encoding="utf-8") as file:
        source = file.read()
    found = []
    position = 0
    while position < len(source):
        if (comment := COMMENT.match(source, position)) or (
                comment := CHARACTER.match(source, position)):
            position = comment.end()
            continue
        part = PART.match(source, position)
        if not part:
            position += 1
            continue
        start = position
        text = plain(part)
        position = part.end()
        while part := PART.match(source, GAP.match(source, position).end()):
            text += plain(part)
            position = part.end()
        found.append(SourceText(text, name, source.count("\n", 0, start) + 1, is_thrown(source, start)))
    return found


def all_texts(folder):
    """Every literal below the folder, in the order of the files' names."""
    found = []
    for at, folders, files in sorted(os.walk(folder)):
        folders.sort()
        for name in sorted(files):
            if name.endswith((".cpp", ".h")):
                path = os.path.join(at, name)
                found += texts_of(path, os.path.relpath(path, folder))
    return found
