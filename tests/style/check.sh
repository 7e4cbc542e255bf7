#!/usr/bin/env bash
# Style that a machine can check: format, includes that respect the floors, words that have no place.
set -uo pipefail
cd "$(dirname "$0")/../.."

status=0
sources=$(find src tests bench -name '*.cpp' -o -name '*.h')
if ! clang-format --dry-run --Werror $sources; then
    echo "clang-format: run clang-format -i on the files above"
    status=1
fi
if grep -nE '\b(TODO|FIXME|XXX)\b' $sources; then
    echo "marks of unfinished work"
    status=1
fi
python3 tests/style/floors.py || status=1
exit $status
