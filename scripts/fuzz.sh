#!/usr/bin/env bash
# Feeds whatever reads text from outside with inputs that are made up, and fails where something
# does not hold: fuzz.sh [SECONDS for each target]. What it has learned stays in build/fuzz.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh check
scripts/build.sh fuzz

# One target: its executions and coverage, or the input that was found and how to repeat it.
play() {
    local seconds=$1 target=$2 work=build/fuzz/runs/$2
    mkdir -p "$work/corpus"
    if "build/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 \
        -artifact_prefix="$work/" -print_final_stats=1 \
        "$work/corpus" "tests/fuzz/seeds/$target" >"$work/log" 2>&1; then
        printf '%-14s %9s executions, cov: %s\n' "$target" \
            "$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/log")" \
            "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$work/log" | tail -n 1)"
        return
    fi
    grep -E '^This does not hold|ERROR|runtime error' "$work/log" || tail -n 20 "$work/log"
    local input
    input=$(sed -n 's/.*Test unit written to //p' "$work/log" | tail -n 1)
    echo "$target: found $input; repeat it with: build/fuzz/bin/fuzz_$target $input"
    return 1
}
export -f play

find tests/fuzz/seeds -mindepth 1 -maxdepth 1 -printf '%f\n' | sort |
    xargs -P 2 -I TARGET bash -c 'play "$@"' play "${1:-60}" TARGET
