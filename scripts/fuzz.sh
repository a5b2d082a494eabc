#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every fuzz target of a fuzz build for a bounded time from its seed corpus (and what earlier
# runs kept in BUILD/fuzz-corpus), then prints a table of each target's executions, executions
# per second and coverage. Any finding (a crash, a sanitizer report, a leak, a timeout, running
# out of memory) fails the run; its input is in BUILD/fuzz-findings/TARGET/, and once the cause is
# fixed it belongs in tests/fuzz/regressions/TARGET/, which the tests replay.
#   scripts/fuzz.sh [BUILD] [SECONDS]
#   FUZZ_PARALLEL=2 runs that many targets at a time; FUZZ_TARGETS="a b" picks targets.
set -euo pipefail
build=${1:-build-fuzz}
seconds=${2:-60}
parallel=${FUZZ_PARALLEL:-1}
top=$(cd "$(dirname "$0")/.." && pwd)

targets=()
for target in "$build"/tests/fuzz/*_fuzz; do
  name=$(basename "$target")
  if [[ -n "${FUZZ_TARGETS:-}" && " $FUZZ_TARGETS " != *" $name "* ]]; then continue; fi
  targets+=("$name")
done
if [[ ${#targets[@]} -eq 0 ]]; then
  echo "no fuzz targets in $build/tests/fuzz" >&2
  exit 1
fi

run_target() {
  local name=$1
  local corpus="$build/fuzz-corpus/$name" findings="$build/fuzz-findings/$name"
  mkdir -p "$corpus" "$findings"
  local seeds=()
  for folder in "$top/tests/fuzz/corpus/$name" "$top/tests/fuzz/regressions/$name"; do
    [[ -d "$folder" ]] && seeds+=("$folder")
  done
  local status=0
  # CPU seconds as well as wall time: on a shared machine executions per CPU second say more.
  local timer=()
  [[ -x /usr/bin/time ]] && timer=(/usr/bin/time -o "$findings/time.txt" -f "%U %S")
  "${timer[@]}" "$build/tests/fuzz/$name" "$corpus" "${seeds[@]}" -max_total_time="$seconds" -max_len=32768 -timeout=10 \
    -rss_limit_mb=2560 -artifact_prefix="$findings/" -print_final_stats=1 >"$findings/log.txt" 2>&1 || status=$?
  echo "$status" >"$findings/status"
}

echo "fuzzing ${#targets[@]} targets for ${seconds}s each, $parallel at a time (load: $(cut -d' ' -f1-3 /proc/loadavg))"
for ((i = 0; i < ${#targets[@]}; i += parallel)); do
  for name in "${targets[@]:i:parallel}"; do
    echo "== $name"
    run_target "$name" &
  done
  wait
done

failed=0
printf '\n%-22s %12s %10s %12s %8s %8s %8s  %s\n' target executions exec/s "exec/cpu-s" cov ft corpus result
for name in "${targets[@]}"; do
  findings="$build/fuzz-findings/$name"
  log="$findings/log.txt"
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
  last=$(grep -E '^#[0-9]+' "$log" | tail -1 || true)
  cov=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' <<<"$last")
  ft=$(sed -n 's/.* ft: \([0-9]*\).*/\1/p' <<<"$last")
  corp=$(sed -n 's/.* corp: \([0-9]*\).*/\1/p' <<<"$last")
  per_cpu=?
  if [[ -s "$findings/time.txt" && -n "$runs" ]]; then
    per_cpu=$(awk -v runs="$runs" 'END { cpu = $1 + $2; if (cpu > 0) printf "%d", runs / cpu }' "$findings/time.txt")
  fi
  result=ok
  artefacts=$(find "$findings" -maxdepth 1 -type f \( -name 'crash-*' -o -name 'leak-*' -o -name 'timeout-*' \
    -o -name 'oom-*' -o -name 'slow-unit-*' \) | wc -l)
  if [[ "$(cat "$findings/status")" != 0 || "$artefacts" != 0 ]]; then
    result="FINDING: see $log"
    failed=1
  fi
  printf '%-22s %12s %10s %12s %8s %8s %8s  %s\n' "$name" "${runs:-?}" "${speed:-?}" "$per_cpu" "${cov:-?}" "${ft:-?}" "${corp:-?}" "$result"
done
exit $failed
