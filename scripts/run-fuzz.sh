#!/usr/bin/env bash
# Runs the fuzz targets of build/fuzz for a bounded time each, then a short soak.
#   scripts/run-fuzz.sh [SECONDS_PER_TARGET] [SOAK_STEPS]
# The corpora live in build/fuzz/corpus-*, seeded from the golden scripts, the example and
# fuzz/seeds; findings (crash-*, leak-*, timeout-*) land in build/fuzz/findings.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-60}"
soak_steps="${2:-20000}"
build=build/fuzz
bin="$build/fuzz"
findings="$build/findings"
mkdir -p "$build/corpus-ticket" "$build/corpus-script" "$findings"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:symbolize=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"

run() {
  local target="$1"; shift
  echo "== $target: ${seconds}s"
  "$bin/$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -max_len=4096 \
    -print_final_stats=1 -print_funcs=0 -artifact_prefix="$findings/$target-" "$@"
}

run fuzz-ticket "$build/corpus-ticket" fuzz/seeds/ticket tests/golden
run fuzz-script -dict=fuzz/script.dict "$build/corpus-script" tests/golden examples

echo "== quillon-soak: $soak_steps steps"
"$bin/quillon-soak" "$soak_steps" "$(date +%s)"
