#!/usr/bin/env python3
"""A floor includes only what lies under it: each #include of src/ against the list of floors."""

import re
import sys
from pathlib import Path

# From the ground up. A file belongs to the first floor whose pattern matches its path under src/.
FLOORS = [
    ("platform", r"platform/"),
    ("texts", r"texts/"),
    ("records", r"records/(numbers|descriptor|fields|dictionary/)"),
    ("run_base", r"run/(trace|failure_handler|utilities|environment|period|messages)\."),
    ("files", r"files/"),
    ("records_named", r"records/(named_access|formula)\."),
    ("installation", r"nzutil/(file_layout|field_value|tool_error|installation|document|description|demo)\."),
    ("slip", r"calc/(slip|fixed_data|contract|slip_lines|slip_line_walks|taxable_bases|seniority)\."),
    ("contributions", r"closing/(contributions|contribution_cuts|wage_ceiling|allowances)\."),
    ("tax", r"tax/"),
    ("severance", r"severance/"),
    ("archives", r"(archive|history)/"),
    ("closing", r"closing/"),
    ("run_end", r"run/(end_of_run|control_lists|treasury_list)\."),
    ("calc", r"calc/"),
    ("run", r"run/"),
    ("nzutil", r"nzutil/"),
    ("program", r"velmor\.cpp"),
]


def floor_of(path):
    for height, (name, pattern) in enumerate(FLOORS):
        if re.match(pattern, path):
            return height, name
    return None, None


def main():
    root = Path(__file__).resolve().parents[2] / "src"
    wrong = 0
    for file in sorted([*root.rglob("*.cpp"), *root.rglob("*.h")]):
        path = file.relative_to(root).as_posix()
        height, name = floor_of(path)
        if height is None:
            print(f"src/{path}: stands on no floor")
            wrong += 1
            continue
        for number, line in enumerate(file.read_text(encoding="utf-8").splitlines(), 1):
            match = re.match(r'#include "([^"]+)"', line)
            if not match:
                continue
            other_height, other = floor_of(match.group(1))
            if other_height is None:
                print(f"src/{path}:{number}: {match.group(1)} stands on no floor")
                wrong += 1
            elif other_height > height:
                print(f"src/{path}:{number}: {name} includes {other} ({match.group(1)})")
                wrong += 1
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
