#!/usr/bin/env bash
# Every check and every test: style, release build, all tests under AddressSanitizer and
# UndefinedBehaviorSanitizer (unit tests, faults, fuzz corpus, scenarios through the whole program).
# Last line: how many passed and failed.
set -uo pipefail
cd "$(dirname "$0")"
. cmake/install_dependencies.sh

install_dependencies || exit 1
passed=0
failed=0

# check NAME COMMAND...: one check that counts as one test.
check() {
    local name=$1
    shift
    echo "== $name"
    if "$@"; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        echo "FAILED: $name"
    fi
}

build() {
    cmake --preset "$1" "${@:3}" >/dev/null && cmake --build --preset "$1" --target $2
}

check "style" tests/style/check.sh
# tests PRESET OPTION...: runs the tests of a build and adds up how they went.
tests() {
    local log=build-tests.log summary total broken
    ctest --preset "$1" -j "$(nproc)" "${@:2}" | tee "$log"
    summary=$(grep -E 'tests passed, [0-9]+ tests failed out of [0-9]+' "$log" || true)
    if [ -z "$summary" ]; then
        failed=$((failed + 1))
        return
    fi
    total=$(sed -E 's/.* out of ([0-9]+).*/\1/' <<<"$summary")
    broken=$(sed -E 's/.*, ([0-9]+) tests failed.*/\1/' <<<"$summary")
    passed=$((passed + total - broken))
    failed=$((failed + broken))
}

check "release build" build release "velmor nzutil slip_grid law_reference" \
    -DVELMOR_TESTS=ON -DVELMOR_BENCH=OFF
check "build with sanitizers" build asan all -DVELMOR_TESTS=ON -DVELMOR_BENCH=OFF

echo "== tests with sanitizers"
tests asan -LE grid
echo "== the grid of a year's figures"
tests release -L grid

echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
