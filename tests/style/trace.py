#!/usr/bin/env python3
"""The trace tells the operator the suite's own procedures: no phase of ours has a place in its ring."""

import re
import sys
from pathlib import Path

STYLE = Path(__file__).resolve().parent
SOURCES = STYLE.parents[1] / "src"
LIST = STYLE / "procedures.txt"
# A name that goes to the trace: written in the call, or kept beside it as a constant that the call names
# or hands on ("LEGGIREC (" is followed by file and record).
WRITTEN = re.compile(r'\bTRACCIA\(\s*(?:std::string\(\s*)?"([^"]*)"')
CONSTANT = re.compile(r'\bTRACCIA\(\s*(\w+)\s*\)')
RECORD = re.compile(r'\bbegin_record\([^;"]*"([^"]*)"')
PSEUDO = re.compile(r'\bk(?:Read|Write)Name = "([^"]*)"')


def names_in(text):
    """Each name that the text hands to the trace, with its position; None for one not found."""
    for pattern in (WRITTEN, RECORD, PSEUDO):
        for match in pattern.finditer(text):
            yield match.start(), match.group(1)
    for match in CONSTANT.finditer(text):
        value = re.search(rf'\b{match.group(1)}\b(?:\[\])? *= *"([^"]*)"', text)
        if value:
            yield match.start(), value.group(1)


def complaints(path, text, procedures):
    for position, name in names_in(text):
        procedure = re.sub(r" \($", "", name)
        if procedure not in procedures:
            line = text.count("\n", 0, position) + 1
            yield f"src/{path}:{line}: {name} is no procedure of the suite"


def main():
    procedures = {
        line for line in LIST.read_text(encoding="utf-8").splitlines() if not line.startswith("#")
    }
    wrong = [
        complaint
        for file in sorted([*SOURCES.rglob("*.cpp"), *SOURCES.rglob("*.h")])
        for complaint in complaints(
            file.relative_to(SOURCES).as_posix(), file.read_text(encoding="utf-8"), procedures
        )
    ]
    print("\n".join(wrong), end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
