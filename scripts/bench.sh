#!/usr/bin/env bash
# Measures what the program costs, prints each figure beside its bound, and fails when one is missed:
# bench.sh [TAKES]. With a number it plays that many takes in real time on each link instead.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh test
scripts/build.sh release KVNBench
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} build/release/bin/KVNBench "$@"
