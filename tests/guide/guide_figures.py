# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares the numbers that the guide shows of the models with those in the sources.

A comment such as "<!-- constants: src/scoring/curve.cpp low high; src/scoring/other.h table -->" stands
before each table and names what the table shows, in its order. Every constant of the models is to be
shown, but for those listed here.
"""
import functools
import os
import re
import sys

from page import Findings, pages

MARK = re.compile(r"<!-- constants: (.*?) -->")
COMMENT = re.compile(r"//[^\n]*")
NUMBER = re.compile(r"-?\d+(?:\.\d+)?")

# Constants of the models that are no figure of a rule, or follow from one.
NOT_SHOWN = {
    "secondsPerYear": "a year of 365.25 days in seconds",
    "log10Of3": "told as log₁₀ 3",
    "log10Of1001": "told as log₁₀ 1,001",
    "smallestHalvedSample": "told in words: the first alone of fewer than four",
    "unlimitedSplits": "no limit",
    "plainTradingWords": "about words, told in short",
    "iconLimit": "icons of a row",
    "shortestPhrase": "characters of an idea",
    "longestPhrase": "characters of an idea",
    "highestScore": "0 to 100, told with each figure",
    "letterCount": "a place in a table",
    "keywordSearchLimit": "told with the rank",
}


@functools.cache
def source(root, path):
    with open(os.path.join(root, path), encoding="utf-8") as file:
        return COMMENT.sub("", file.read()).replace("'", "")


def values_of(root, path, name):
    """The numbers of a constant, in order; a fraction keeps no zeros at its end."""
    text = source(root, path)
    found = re.search(rf"\b{name}(?:\[\])?\s*(?:=\s*([^;{{]+);|=?\s*(\{{.*?\}});)", text, re.DOTALL)
    if not found:
        raise ValueError(f"{path} has no constant {name}")
    body = re.sub(r'"[^"]*"', "", found[1] or found[2])
    return [float(number) for number in NUMBER.findall(body)]


def named_values_of(root, path, name):
    """Words and numbers of a list such as {"US", 1.0}."""
    text = source(root, path)
    body = re.search(rf"\b{name}(?:\[\])?\s*=?\s*\{{(.*?)\}};", text, re.DOTALL)[1]
    return {word: float(number)
            for word, number in re.findall(r'"([^"]+)"\)?,\s*([\d.]+)', body)}


def shown_numbers(rows):
    """The numbers of a table's cells, but for those in the words at the left of one with two columns."""
    numbers = []
    for row in rows:
        cells = row if all(re.fullmatch(r"-?[\d,.]+", cell) for cell in row) else row[1:]
        for cell in cells:
            numbers += [float(number.replace(",", "")) for number in re.findall(r"-?\d[\d,]*(?:\.\d+)?", cell)]
    return numbers


def constants_in(root, folder):
    """Names and files of the numbers that the models are made of."""
    found = []
    for name in sorted(os.listdir(os.path.join(root, folder))):
        if name.endswith((".cpp", ".h")):
            path = f"{folder}/{name}"
            found += [(path, constant) for constant in re.findall(
                r"constexpr (?:double|int|qsizetype|size_t|std::int64_t|CurvePoint|RankAtGap|"
                r"std::array<double, \d+>) (\w+)(?:\[\])?\s*(?:=|\{)", source(root, path))]
    return found


def main():
    root = sys.argv[1]
    findings = Findings()
    shown = set()
    page = next(page for page in pages(root) if page.name == "figures.md")
    for number, line in page.prose:
        mark = MARK.search(line)
        if not mark:
            continue
        where = f"{page.name}:{number}"
        rows = page.table_after(number)
        expected = []
        for part in mark[1].split(";"):
            path, *names = part.split()
            for name in names:
                shown.add((path, name))
                if name in ("factors", "markets"):
                    told = {word: float(row[1]) for row in rows
                            for word in ([row[0]] if name == "factors" else row[0].split())}
                    findings.check(told == named_values_of(root, path, name),
                                   f"{where}: {name} differ from {path}")
                else:
                    expected += values_of(root, path, name)
        if expected:
            told = shown_numbers(rows)
            findings.check(told == expected, f"{where}: shows {told}, the sources have {expected}")
    models = constants_in(root, "src/scoring")
    for name in NOT_SHOWN.keys() - {name for _, name in models}:
        findings.check(False, f"{name} is listed as not shown, and no model has it")
    for path, name in models:
        findings.check((path, name) in shown or name in NOT_SHOWN, f"{path}: {name} is not in the guide")
    versions = "".join(source(root, path) for path in (
        "src/scoring/popularity_model.h", "src/clients/autocomplete_client.h",
        "src/model/keyword_snapshot.h", "src/scoring/keyword_pipeline.h"))
    rows = page.table_after(next(h.line for h in page.headings() if h.text == "Versions") + 3)
    for row in rows:
        findings.check('"' + row[1].strip("`") + '"' in versions, f"no model has the version {row[1]}")
    return findings.end()


if __name__ == "__main__":
    sys.exit(main())
