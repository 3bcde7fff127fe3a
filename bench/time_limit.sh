#!/usr/bin/env bash
# A time-limited run and what tells its work: node attempts, exact and approximate cliques, the
# core left, the time after the search's closing block, user and system time and peak memory.
#   bench/time_limit.sh SECONDS [NETWORK]   (default network: ../shared/data/facebook.links)
# facebook takes about 9 minutes at -t 0.1 and about an hour at -t 1.
set -euo pipefail
cd "$(dirname "$0")/.."
limit="${1:?usage: bench/time_limit.sh SECONDS [NETWORK]}"
network="$(realpath "${2:-../shared/data/facebook.links}")"
cmake -S . -B build-bench -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF -DVARNEL_PYTHON=OFF >/dev/null
cmake --build build-bench -j "$(nproc)" --target varnel >/dev/null
binary="$PWD/build-bench/driver/varnel"
scratch=$(mktemp -d /tmp/varnel-time-XXXXXX)
trap 'rm -rf "$scratch"' EXIT
cp "$network" "$scratch/"
name=$(basename "$network")
# Every console line with the seconds since the start, to find the search's closing block.
(cd "$scratch" && /usr/bin/time -f '%e %U %S %M' -o time.txt "$binary" -i "$name" -t "$limit" |
   python3 -u -c '
import sys, time
start = time.monotonic()
for line in sys.stdin:
    sys.stdout.write(f"{time.monotonic() - start:.3f} {line}")' >console.txt)
read -r wall user system peak_kib <"$scratch/time.txt"
console="$scratch/console.txt"
attempts=$(grep -c 'Locating cliques' "$console" || true)
closing=$(grep -m1 'Altogether' "$console" | cut -d' ' -f1)
end=$(tail -n 1 "$console" | cut -d' ' -f1)
core=$(grep -m1 -B3 'found too slow' "$console" | sed -n 's/.*out of \([0-9]*\) skipped.*/\1/p' | tail -n 1)
printf 'network %s, -t %s\n' "$name" "$limit"
printf 'wall %s s, user %s s, system %s s (%s %% of CPU), peak %s MiB\n' "$wall" "$user" "$system" \
  "$(python3 -c "print(round(100 * $system / ($user + $system), 1))")" "$((peak_kib / 1024))"
printf 'node attempts %s, core %s nodes\n' "$attempts" "${core:-0}"
grep -E 'number of +exact cliques|number of approx. cliques|Altogether' "$console" | cut -d' ' -f2-
printf 'after the closing block: %s s\n' "$(python3 -c "print(round(${end} - ${closing:-$end}, 1))")"
printf 'results: %s, %s k directories\n' "$(du -sh "$scratch/${name}_files" | cut -f1)" \
  "$(find "$scratch/${name}_files" -maxdepth 1 -name 'k=*' | wc -l)"
