#!/usr/bin/env bash
# Configures a preset and builds it: build.sh PRESET [TARGET...]
set -euo pipefail
preset=${1:?usage: build.sh PRESET [TARGET...]}
shift
cd "$(dirname "$0")/.."
cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset" ${1:+--target "$@"}
