#!/usr/bin/env bash
# Benchmarks Varnel on the real networks of ../shared/data (or the files given as arguments):
# each network is copied into a scratch directory and run there; prints wall time, processor time
# (user + system), peak resident memory and the size of the results directory per network. Runs
# use every processor the process may; prefix with `taskset -c 0` for one.
#   VARNEL_ARGS   extra switches for every run (e.g. "-t 1" or "-D")
#   TIME_LIMIT    seconds before a run is stopped (default 600)
#   KEEP          set to keep the scratch directory
#   SCRATCH_DIR   where the scratch directory goes (default /tmp; /dev/shm leaves out the disk)
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF >/dev/null
cmake --build build-bench -j "$(nproc)" --target varnel >/dev/null
binary="$PWD/build-bench/driver/varnel"
if [ $# -gt 0 ]; then
  networks=("$@")
else
  networks=(../shared/data/lesmis.links ../shared/data/grqc.links ../shared/data/email-eu.links
            ../shared/data/hepph.links ../shared/data/wikivote.links ../shared/data/astroph.links
            ../shared/data/enron.links ../shared/data/dblp.links ../shared/data/slashdot.links)
fi
scratch=$(mktemp -d "${SCRATCH_DIR:-/tmp}/varnel-bench-XXXXXX")
[ -n "${KEEP:-}" ] || trap 'rm -rf "$scratch"' EXIT

printf '%-18s %-10s %10s %10s %12s %12s %s\n' network switches "wall (s)" "cpu (s)" "peak (MiB)" \
    "results" status
for network in "${networks[@]}"; do
  name=$(basename "$network")
  cp "$network" "$scratch/$name"
  log="$scratch/$name.log"
  status=ok
  # shellcheck disable=SC2086
  (cd "$scratch" && /usr/bin/time -f '%e %U %S %M' -o "$name.time" \
      timeout "${TIME_LIMIT:-600}" "$binary" -i "$name" ${VARNEL_ARGS:-} >"$log") || status="stopped"
  read -r wall user sys peak_kib < <(tail -n 1 "$scratch/$name.time") || true
  if grep -q '^ERROR' "$log"; then status="error: $(grep -m1 '^ERROR' "$log")"; fi
  if [ "$status" = stopped ]; then status="stopped at: $(grep -v '^_' "$log" | tail -n 1)"; fi
  results=$(du -sh "$scratch/$name"_files* 2>/dev/null | awk '{print $1}' | head -n1)
  printf '%-18s %-10s %10s %10s %12s %12s %s\n' "$name" "${VARNEL_ARGS:--}" "$wall" \
      "$(echo "${user:-0} ${sys:-0}" | awk '{printf "%.2f", $1 + $2}')" \
      "$(( ${peak_kib:-0} / 1024 ))" "${results:--}" "$status"
  rm -rf "$scratch/$name"_files*
done
