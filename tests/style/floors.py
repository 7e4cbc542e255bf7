#!/usr/bin/env python3
"""A floor includes only what lies under it: each #include of src/ against the list of floors."""

import re
import sys
from pathlib import Path

# From the ground up: a folder of src/ is a floor.
FLOORS = [
    "platform",
    "texts",
    "records",
    "context",
    "files",
    "formulas",
    "installation",
    "slip",
    "contributions",
    "tax",
    "severance",
    "archive",
    "history",
    "closing",
    "run_end",
    "calc",
    "run",
    "nzutil",
]
HEIGHT = {name: height for height, name in enumerate(FLOORS)}
PROGRAM = "velmor.cpp"


def complaints(path, text):
    folder = path.split("/")[0]
    if path == PROGRAM:
        height = len(FLOORS)
    elif folder in HEIGHT and "/" in path:
        height = HEIGHT[folder]
    else:
        yield f"src/{path}: stands on no floor"
        return
    for number, line in enumerate(text.splitlines(), 1):
        match = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
        if not match:
            continue
        other = match.group(1).split("/")[0]
        if other not in HEIGHT:
            yield f"src/{path}:{number}: {match.group(1)} stands on no floor"
        elif HEIGHT[other] > height:
            yield f"src/{path}:{number}: {folder} includes {other} ({match.group(1)})"


def main():
    root = Path(__file__).resolve().parents[2] / "src"
    wrong = [
        complaint
        for file in sorted([*root.rglob("*.cpp"), *root.rglob("*.h")])
        for complaint in complaints(
            file.relative_to(root).as_posix(), file.read_text(encoding="utf-8")
        )
    ]
    print("\n".join(wrong), end="\n" if wrong else "")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
