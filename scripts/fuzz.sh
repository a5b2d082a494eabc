#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzz target of a fuzz build for a bounded time from its seed corpus and prints the
# executions per second of each. A target that finds a crash stops the run with its status.
set -euo pipefail
build=${1:-build-fuzz}
seconds=${2:-60}
top=$(cd "$(dirname "$0")/.." && pwd)
status=0
for target in "$build"/tests/fuzz/*_fuzz; do
  name=$(basename "$target")
  corpus="$build/fuzz-corpus/$name"
  mkdir -p "$corpus" "$build/fuzz-findings/$name"
  seeds="$top/tests/fuzz/corpus/$name"
  log="$build/fuzz-findings/$name/log.txt"
  echo "== $name for ${seconds}s"
  if ! "$target" "$corpus" ${seeds:+"$seeds"} -max_total_time="$seconds" -max_len=65536 -timeout=10 \
      -artifact_prefix="$build/fuzz-findings/$name/" -print_final_stats=1 >"$log" 2>&1; then
    echo "   FINDING: see $build/fuzz-findings/$name/"; status=1
  fi
  grep -E "stat::number_of_executed_units|stat::average_exec_per_sec|cov:" "$log" | tail -3 | sed 's/^/   /'
done
exit $status
