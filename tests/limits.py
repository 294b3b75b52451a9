#!/usr/bin/env python3
"""Holds the table of limits in docs/SECURITY.md to the constants in the code.

Each row names a file and a constant, whose value must be the number in the row; and each constant
whose name begins like that of a limit must have a row, or stand in NO_LIMITS. Run with the source
folder.
"""
import math
import pathlib
import re
import sys

FOLDERS = ["app", "automation", "base", "browser", "config", "demo", "net", "sound", "terminal", "ui"]
CONSTANT = r"\bconstexpr\s+[\w:]+\s+(\w+)\s*[={]\s*([^;]*);"
LIMIT = r"k?(Most|Longest|Largest|Max|Limit)([A-Z]\w*)?$"
ROW = r"^\|.*\| *([\d,]+) ?(\w+)?[^|]*\| *`([^`]+)` `([^`]+)` *\|.*\|$"
UNITS = {"KiB": 1024, "MiB": 1024 * 1024}

# What is named like a limit and can't be reached from outside.
NO_LIMITS = {
    ("app/StartUp.cpp", "kMostDots"),  # the splash's own
    ("automation/TriggerFilter.cpp", "kLongestPart"),  # a way to compute
    ("automation/TriggerMatcher.cpp", "kMostWithoutRow"),  # the same
    ("demo/Synthesis.h", "LargestWave"),  # of the world's own sounds
    ("demo/World.h", "MaxLife"),  # a rule of the game
    ("terminal/Output.cpp", "kLargest"),  # of a 16-bit number
}


def value_of(text):
    """Of a product of numbers, whatever types stand around them. None when it is none."""
    bare = re.sub(r"\b[\w:]+(?=\{)|(?<=\d)'", "", text)
    if re.search(r"[^\d\s*{}LU]", bare) or not re.search(r"\d", bare):
        return None
    return math.prod(int(number) for number in re.findall(r"\d+", bare))


def constants_in(root):
    """The values of all constants, by file and name."""
    return {(path.relative_to(root).as_posix(), name): value_of(text)
            for folder in FOLDERS
            for path in sorted((root / folder).rglob("*"))
            if path.suffix in (".h", ".cpp")
            for name, text in re.findall(CONSTANT, path.read_text())}


def rows_of(document):
    """The values of the table's rows, by file and name."""
    rows = re.findall(ROW, document, re.MULTILINE)
    return {(file, name): int(number.replace(",", "")) * UNITS.get(unit, 1)
            for number, unit, file, name in rows}


def faults(constants, rows):
    for key, value in rows.items():
        if key not in constants:
            yield f"{' '.join(key)}: there is no such constant"
        elif constants[key] != value:
            yield f"{' '.join(key)}: the document says {value}, the code {constants[key]}"
    for key in constants:
        if re.match(LIMIT, key[1]) and key not in rows and key not in NO_LIMITS:
            yield f"{' '.join(key)}: a limit that the document lacks"
    for key in NO_LIMITS - set(constants):
        yield f"{' '.join(key)}: there is no such constant"


def lost_rows(document, rows):
    """Lines of the table that are no rows, and rows that stand there twice."""
    lines = [line for line in document.splitlines() if re.match(r"\|.*`k?[A-Z]\w+` *\|", line)]
    if len(lines) != len(rows):
        yield f"{len(lines)} rows name constants, {len(rows)} can be read"


root = pathlib.Path(sys.argv[1])
document = (root / "docs/SECURITY.md").read_text()
rows = rows_of(document)
found = [*faults(constants_in(root), rows), *lost_rows(document, rows)]
print("\n".join(found) or f"{len(rows)} limits are as the document says")
sys.exit(1 if found or not rows else 0)
