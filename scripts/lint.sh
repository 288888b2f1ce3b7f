#!/usr/bin/env bash
# Checks formatting, code and scripts; any finding fails. Needs a built release preset.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh check
mapfile -t sources < <(git ls-files '*.cpp' '*.h')
clang-format --dry-run -Werror "${sources[@]}"
shellcheck scripts/*.sh .ci/run
# Generated code is left out; flags that only the compiler of the build knows are passed over.
run-clang-tidy -quiet -j "$(nproc)" -p build/release -extra-arg=-Wno-unknown-warning-option \
    '^((?!_autogen).)*$' >build/clang-tidy.log 2>&1 || {
    grep -E 'warning:|error:' build/clang-tidy.log | sort -u
    exit 1
}
echo "Formatting, code and scripts are clean."
