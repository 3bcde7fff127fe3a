#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang (AddressSanitizer and UndefinedBehaviorSanitizer)
# and runs each for SECONDS (default 60), starting from its seeds in fuzz/corpus/<target>.
# Inputs that find new coverage collect in build-fuzz/corpus/<target> (kept between runs). Any
# crash, leak, sanitizer report, timeout or memory blow-up stops that target and fails the script;
# its input is saved as build-fuzz/findings/<target>-*: once fixed, copy it into
# fuzz/corpus/<target>/ so that the replay tests keep it.
#   BUILD_DIR   build directory (default: build-fuzz)
#   TARGETS     targets to run (default: all)
#   JOBS        parallel build jobs (default: number of cores)
set -euo pipefail
cd "$(dirname "$0")/.."
root="$PWD"
seconds="${1:-60}"
build="$(realpath -m "${BUILD_DIR:-build-fuzz}")"
targets=(${TARGETS:-link_reader network switches result_files})

CC=clang CXX=clang++ cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVARNEL_FUZZ=ON \
  -DVARNEL_TESTS=OFF -DVARNEL_PYTHON=OFF >/dev/null
cmake --build "$build" -j "${JOBS:-$(nproc)}" --target "${targets[@]/#/fuzz_}" >/dev/null

mkdir -p "$build/findings"
# The targets' scratch directories go below one of our own, removed at the end even after a
# finding, when a target stops without its own clean-up.
scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT
summary=()
failed=0
for target in "${targets[@]}"; do
  corpus="$build/corpus/$target"
  mkdir -p "$corpus"
  log="$build/findings/$target.log"
  echo "== $target: ${seconds}s"
  status=0
  TMPDIR="$scratch" UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
    "$build/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2560 \
    -max_len=65536 -print_final_stats=1 -artifact_prefix="$build/findings/$target-" \
    "$corpus" "$root/fuzz/corpus/$target" >"$log" 2>&1 || status=$?
  # The last status line ("#runs DONE cov: N ft: N ...") and the final statistics.
  line=$(grep -E '^#[0-9]+' "$log" | tail -n 1 || true)
  cov=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' <<<"$line")
  ft=$(sed -n 's/.* ft: \([0-9]*\).*/\1/p' <<<"$line")
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")
  if [ "$status" -ne 0 ]; then
    failed=1
    echo "   FINDING (exit $status); see $log"
    grep -E 'ERROR|SUMMARY|runtime error|Test unit written' "$log" | head -n 8 | sed 's/^/   /'
  fi
  summary+=("$(printf '%-14s %12s %10s %8s %8s %s' "$target" "${runs:-?}" "${speed:-?}" \
                 "${cov:-?}" "${ft:-?}" "$([ "$status" -eq 0 ] && echo ok || echo FINDING)")")
done
printf '\n%-14s %12s %10s %8s %8s %s\n' target executions "exec/s" cov ft result
printf '%s\n' "${summary[@]}"
exit "$failed"
