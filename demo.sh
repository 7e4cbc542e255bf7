#!/usr/bin/env bash
# Builds the batch, makes the demo installation and runs the batch on it: the operator's list with
# one line per employee, then the slip of one of them.
#
#   ./demo.sh [DIRECTORY]     the directory of the installation, demo-out when not given; an
#                             installation of an earlier run in it is made anew
set -euo pipefail
cd "$(dirname "$0")"
. cmake/install_dependencies.sh

install_dependencies
cmake --preset release -DVELMOR_TESTS=OFF -DVELMOR_BENCH=OFF >/dev/null
cmake --build --preset release --target velmor nzutil

directory=${1:-demo-out}
if [ -f "$directory/registro.ini" ]; then
    rm -rf "$directory"
fi
build/nzutil demo "$directory"
echo
SOLMAREL_REGISTRO="$directory/registro.ini" VELMOR_INTERFACCIA=console VELMOR_RISPOSTE=no \
    build/velmor
echo
build/nzutil cedolino "$directory" 001-000-0001
