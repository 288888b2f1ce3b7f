#!/usr/bin/env bash
# Installs what is missing, builds and runs every test: test.sh [release|debug|asan]
set -euo pipefail
preset=${1:-release}
cd "$(dirname "$0")/.."
scripts/install.sh test
scripts/build.sh "$preset"
ctest --preset "$preset"
