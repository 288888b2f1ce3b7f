#!/usr/bin/env bash
# Measures what the program costs, prints each figure beside its bound, and fails when one is missed.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh test
scripts/build.sh release KVNBench
QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen} build/release/bin/KVNBench
