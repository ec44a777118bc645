#!/usr/bin/env bash
# Runs every fuzzer of a fuzz build for a number of seconds each, starting from the saved
# corpus of tests/fuzz/corpus/NAME; what the run adds is kept in BUILD/corpus/NAME, anything it
# finds in BUILD/findings. Exits 1 when a fuzzer found something.
#   scripts/run-fuzz.sh BUILD SECONDS
set -euo pipefail
cd "$(dirname "$0")/.."
build=$1
seconds=$2
status=0
for fuzzer in "$build"/tests/fuzz/fuzz_*; do
  name=$(basename "$fuzzer")
  name=${name#fuzz_}
  mkdir -p "$build/corpus/$name" "$build/findings"
  echo "== $name: $seconds s"
  if ! "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
      -artifact_prefix="$build/findings/$name-" "$build/corpus/$name" "tests/fuzz/corpus/$name" \
      2>"$build/findings/$name.log"; then
    status=1
    echo "$name: a finding, see $build/findings/$name.log"
    tail -n 30 "$build/findings/$name.log"
  fi
  grep -E "stat::(number_of_executed_units|average_exec_per_sec|new_units_added|peak_rss_mb)" "$build/findings/$name.log" || true
done
exit $status
