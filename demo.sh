#!/usr/bin/env bash
# Builds the batch, makes the demo installation and runs the batch on it: the operator's list with
# one line per employee, then the slip of one of them.
#
#   ./demo.sh [DIRECTORY]     the directory of the installation, demo-out when not given; what an
#                             earlier demo left there is made anew, anything else is not touched
set -euo pipefail
# A directory of the caller's is meant from where the caller stands.
directory=$(realpath -m "${1:-$(dirname "$0")/demo-out}")
cd "$(dirname "$0")"
. cmake/install_dependencies.sh

if [ -e "$directory/.velmor-demo" ]; then
    rm -rf "$directory"
elif [ -e "$directory" ] && [ -n "$(ls -A "$directory")" ]; then
    echo "$directory holds files that no demo has made: name another directory." >&2
    exit 1
fi

install_dependencies
cmake --preset release -DVELMOR_TESTS=OFF -DVELMOR_BENCH=OFF >/dev/null
cmake --build --preset release --target velmor nzutil

mkdir -p "$directory"
touch "$directory/.velmor-demo"
build/nzutil demo "$directory"
echo
SOLMAREL_REGISTRO="$directory/registro.ini" VELMOR_INTERFACCIA=console VELMOR_RISPOSTE=no \
    build/velmor </dev/null
echo
build/nzutil cedolino "$directory" 001-000-0001
