#!/usr/bin/env bash
# clang-tidy over the whole of src/, on all cores: tidy.sh [DIRECTORY OF A BUILD [FILE...]]. What it looks
# for stands in .clang-tidy; each finding is an error. With files, over those only.
set -uo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
files=("^$PWD/src/")
[ "$#" -gt 1 ] && files=("${@:2}")

if [ ! -f "$build/compile_commands.json" ]; then
    echo "no build in $build: cmake --preset release && cmake --build --preset release"
    exit 1
fi
# The sources are compiled by GCC, some of whose warnings clang does not know.
findings=$(run-clang-tidy -p "$build" -quiet -j "$(nproc)" -extra-arg=-Wno-unknown-warning-option \
    "${files[@]}" 2>/dev/null)
status=$?
grep -v -e '^clang-tidy' -e '^$' <<<"$findings" || true
[ "$status" -eq 0 ] && echo "clang-tidy: nothing found"
exit "$status"
