#!/usr/bin/env bash
# Builds with counters, runs every test and prints which lines and branches of src/ and simulator/
# they reach, as text and as pages in out/coverage.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh coverage
scripts/build.sh coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage
mkdir -p out/coverage
# Branches that only an exception of the standard library would take are not counted.
gcovr --root . --filter src/ --filter simulator/ --exclude '.*_autogen/' \
    --exclude-throw-branches --exclude-unreachable-branches \
    --html-details out/coverage/index.html --txt out/coverage/lines.txt --print-summary build/coverage
cat out/coverage/lines.txt
