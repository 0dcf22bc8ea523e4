# SPDX-License-Identifier: GPL-3.0-or-later
"""The texts that stand in the program's sources, and which of them tell of something that failed."""
import os
import re
from dataclasses import dataclass

# One part of a literal: raw, or with escapes.
PART = re.compile(r'(?:u8|u|U|L)?R"(?P<mark>[^()\s\\]{0,16})\((?P<raw>.*?)\)(?P=mark)"'
                  r'|(?:u8|u|U|L)?"(?P<plain>(?:[^"\\\n]|\\.)*)"', re.DOTALL)
GAP = re.compile(r"(?:\s|//[^\n]*\n)*")
# Between two literals of one text there is a value: QStringLiteral("…") + value + QStringLiteral("…").
VALUE = re.compile(r'\)\s*\+\s*[\w.:>()-]+\s*\+\s*(?:tr|QStringLiteral|QLatin1String)\(\s*(?=")')
COMMENT = re.compile(r"//[^\n]*")
# Not the mark within a number, as in 10'000.
CHARACTER = re.compile(r"(?<![0-9a-zA-Z])(?:u8|u|U|L)?'(?:[^'\\\n]|\\[^\n]{1,10}?)'")
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
    before = source[max(source.rfind(end, 0, start) for end in ";{}") + 1:start]
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
        while True:
            if part := PART.match(source, GAP.match(source, position).end()):
                text += plain(part)
            elif value := VALUE.match(source, position):
                part = PART.match(source, value.end())
                text += "%1" + plain(part)
            else:
                break
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


PLACE = re.compile(r"%L?\d|%s")
FAILURE = re.compile(
    r"(?i)could(?:n[’']t| not)|\bcan(?:n?ot|[’']t)\b|failed\b|refused|did not answer|does not answer"
    r"|\bnot (?:available|been read|saved|trusted|valid|safe|well-formed|measured|signed|an option)\b"
    r"|damaged|no longer|expired|too (?:large|often|long)|was (?:changed|removed|shortened)|\bunknown entity\b"
    r"|is missing|not found|unavailable in|no such|has more than|holds no|not closed|without older"
    r"|are used up|doesn[’']t|didn[’']t|try again|\bwas not done\b|not finite|another one than before|closed the connection|requires an|second start|sent (?:no|half)")
SENTENCE = re.compile(r"^[A-Z“%].*\s.*", re.DOTALL)


def readable(text):
    """A text as a reader meets it: values are dots, for their words are not known here."""
    return PLACE.sub("…", text).strip().rstrip(":")


def tells_failure(text):
    """Whether a literal tells the user of something that failed: it is thrown, or it is a sentence (with a
    blank, and with a capital or a value at its beginning) in words of failing."""
    if " " not in text.text.strip() or not re.search(r"[a-z]{2}", text.text):
        return False
    return text.thrown or bool(SENTENCE.match(text.text) and FAILURE.search(text.text))
