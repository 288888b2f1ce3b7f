#!/usr/bin/env bash
# Checks formatting, code and scripts; any finding fails.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh check
mapfile -t sources < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run -Werror "${sources[@]}"
shellcheck scripts/*.sh .ci/run
# Every library and program is checked as one source, so that what all its files include is read once.
# Generated code is left out; flags that only the compiler of the build knows are passed over.
scripts/build.sh lint autogen >build/autogen.log 2>&1 || {
    cat build/autogen.log
    exit 1
}
run-clang-tidy -quiet -j "$(nproc)" -p build/lint -extra-arg=-Wno-unknown-warning-option \
    'Unity/' >build/clang-tidy.log 2>&1 || {
    grep -E 'warning:|error:' build/clang-tidy.log | sort -u
    exit 1
}
echo "Formatting, code and scripts are clean."
