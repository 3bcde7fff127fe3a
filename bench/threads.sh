#!/usr/bin/env bash
# One binary on one processor against the same binary on two (taskset -c 0 / taskset -c 0,1),
# side by side, on networks of ../shared/data: runs alternate, REPEATS times each, and the script
# prints the median wall and processor times, the peak memory of each, the speed-up and the
# memory ratio, and checks that both give the same standard output and results tree.
#
#   bench/threads.sh [NETWORK[:SWITCHES] ...]     (default: wikivote slashdot hepph dblp)
#
# Environment: REPEATS (default 3), CPUS (default "0,1": the processors of the threaded runs),
# VARNEL (a binary to use instead of building the working tree in build-bench), SCRATCH_DIR
# (where the runs write, default /tmp; /dev/shm leaves out the file system, see README).
set -euo pipefail
cd "$(dirname "$0")/.."
data=$(cd ../shared/data && pwd)
repeats=${REPEATS:-3}
cpus=${CPUS:-0,1}
if [ -n "${VARNEL:-}" ]; then
  binary=$VARNEL
else
  cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF >/dev/null
  cmake --build build-bench -j "$(nproc)" --target varnel >/dev/null
  binary="$PWD/build-bench/driver/varnel"
fi
cases=("$@")
[ ${#cases[@]} -gt 0 ] || cases=(wikivote slashdot hepph dblp)
scratch=$(mktemp -d "${SCRATCH_DIR:-/tmp}/varnel-threads-XXXXXX")
trap 'rm -rf "$scratch"' EXIT

median() { sort -n | awk '{a[NR] = $1} END {print a[int((NR + 1) / 2)]}'; }

printf '%-22s %9s %9s %9s %9s %8s %8s %8s %s\n' network "wall 1" "cpu 1" "wall 2" "cpu 2" \
    speed-up "MiB 1" "MiB 2" outputs
for case in "${cases[@]}"; do
  network=${case%%:*}
  switches=
  [ "$case" != "$network" ] && switches=${case#*:}
  cp "$data/$network.links" "$scratch/net.links"
  for i in $(seq "$repeats"); do
    for side in one two; do
      set=0
      [ "$side" = two ] && set=$cpus
      # Each side runs in a directory of its own under the same relative paths, so that the
      # paths the outputs name (and the suffixes -I adds to them) are the same for both.
      rm -rf "${scratch:?}/$side" && mkdir "$scratch/$side"
      # shellcheck disable=SC2086
      (cd "$scratch/$side" && /usr/bin/time -f '%e %U %S %M' -o "../$side.time.$i" \
          taskset -c "$set" "$binary" -i ../net.links -o res $switches >"../$side.out")
    done
  done
  same=same
  if ! cmp -s "$scratch/one.out" "$scratch/two.out" || ! diff -r -q "$scratch/one" "$scratch/two" >/dev/null; then
    same=DIFFER
  fi
  row=()
  for side in one two; do
    row+=("$(cat "$scratch/$side".time.* | awk '{print $1}' | median)")
    row+=("$(cat "$scratch/$side".time.* | awk '{print $2 + $3}' | median)")
  done
  peak_one=$(cat "$scratch"/one.time.* | awk '{print $4}' | sort -n | tail -n 1)
  peak_two=$(cat "$scratch"/two.time.* | awk '{print $4}' | sort -n | tail -n 1)
  printf '%-22s %9s %9s %9s %9s %8s %8s %8s %s\n' "$case" "${row[@]}" \
      "$(echo "${row[0]} ${row[2]}" | awk '{printf "%.2fx", $1 / $2}')" \
      "$((peak_one / 1024))" "$((peak_two / 1024))" "$same"
done
