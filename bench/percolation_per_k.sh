#!/usr/bin/env bash
# Prints the time each k's community stage of one Varnel run takes. Varnel runs once, on a copy of
# the network in a scratch directory, with its standard output a pipe read by a Python timestamper
# that stamps each console line as it arrives (Varnel flushes every console line). Per k it reports
#   percolation   from " Extracting communities at k=K" to the next " done."
#   writing       from there to " Calculating statistics..." (community, clique, link and
#                 community graph files)
#   statistics    from there to the next k's "Extracting" line, or the end (the distributions and
#                 their files)
# and the number of communities found; then the clique stage (from the start to the " done." after
# " Writing cliques to disk...", split at that line into search and writing), the whole-process
# wall time and the largest per-k percolation time. Runs with -I print no per-k "Extracting"
# lines, so they get the clique stage and the total only.
#
#   bench/percolation_per_k.sh NETWORK [VARNEL_SWITCHES...]
#     NETWORK  a name of ../shared/data (hepph, wikivote.links, ...) or the path of a link file
#
# Environment:
#   VARNEL    Varnel binary to run (default: the working tree, built in build-bench-lean)
#   JOBS      parallel jobs of the build (default 1)
#   DATA_DIR  where network names are looked up (default ../shared/data)
#   KEEP      set to keep the scratch directory (results and the timestamped console log)
set -euo pipefail
cd "$(dirname "$0")/.."
[ $# -ge 1 ] || { sed -n '2,/^set -euo/p' "$0" | sed '$d' >&2; exit 2; }
network=$1
shift
data=$(cd "${DATA_DIR:-../shared/data}" 2>/dev/null && pwd) || data=${DATA_DIR:-../shared/data}

path=
for candidate in "$network" "$data/$network" "$data/$network.links"; do
  if [ -f "$candidate" ]; then
    path=$(cd "$(dirname "$candidate")" && echo "$PWD/$(basename "$candidate")")
    break
  fi
done
[ -n "$path" ] || { echo "percolation_per_k: no such network: $network" >&2; exit 2; }

if [ -n "${VARNEL:-}" ]; then
  varnel=$(cd "$(dirname "$VARNEL")" && echo "$PWD/$(basename "$VARNEL")")
else
  mkdir -p build-bench-lean
  if ! cmake -S . -B build-bench-lean -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF \
       -DVARNEL_EXPORT=OFF >build-bench-lean/varnel-build.log 2>&1 ||
     ! cmake --build build-bench-lean -j "${JOBS:-1}" --target varnel \
       >>build-bench-lean/varnel-build.log 2>&1; then
    echo "percolation_per_k: build failed, see build-bench-lean/varnel-build.log" >&2
    exit 2
  fi
  varnel="$PWD/build-bench-lean/driver/varnel"
fi

scratch=$(mktemp -d /tmp/varnel-per-k-XXXXXX)
[ -n "${KEEP:-}" ] || trap 'rm -rf "$scratch"' EXIT
name=$(basename "$path")
cp "$path" "$scratch/$name"
cd "$scratch"
echo "varnel -i $name $*  (in $scratch)"

# Only the standard library: any Python 3 does.
python3 - "$varnel" "$name" "$@" <<'PYTHON'
import glob
import re
import subprocess
import sys
import time

command = [sys.argv[1], "-i"] + sys.argv[2:]
events = []  # (seconds since start, console line)
start = time.monotonic()
with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE) as process:
    for raw in process.stdout:
        events.append((time.monotonic() - start, raw.decode("utf-8", "replace").rstrip("\n")))
status = process.wait()
end = time.monotonic() - start

with open("console.log", "w", encoding="utf-8") as log:
    for stamp, line in events:
        log.write(f"{stamp:10.3f} {line}\n")
errors = [line for _, line in events if line.startswith("ERROR")]
if status != 0 or errors:
    sys.exit(f"varnel failed (status {status}): {errors[0] if errors else events[-1][1]}")


def next_index(first, wanted):
    """Index of the first event at or after first whose line is wanted, or None."""
    for index in range(first, len(events)):
        if events[index][1] == wanted:
            return index
    return None


def communities(k):
    count = 0
    for path in glob.glob(f"*_files*/k={k}/communities"):
        with open(path, "rb") as stream:
            count += sum(1 for line in stream if re.match(rb"[0-9]+:", line))
    return count


write_cliques = next_index(0, " Writing cliques to disk...")
cliques_done = next_index(write_cliques, " done.") if write_cliques is not None else None
if cliques_done is None:
    sys.exit("no clique stage found in the console output")
search_time = events[write_cliques][0]
clique_stage = events[cliques_done][0]

starts = [i for i, (_, line) in enumerate(events) if "Extracting communities at k=" in line]
rows = []
for n, first in enumerate(starts):
    k = int(re.search(r"k=(\d+)", events[first][1]).group(1))
    stage_end = events[starts[n + 1]][0] if n + 1 < len(starts) else end
    done = next_index(first, " done.")
    stats = next_index(first, " Calculating statistics...")
    t0 = events[first][0]
    t_done = events[done][0] if done is not None else stage_end
    t_stats = events[stats][0] if stats is not None else stage_end
    rows.append((k, t_done - t0, t_stats - t_done, stage_end - t_stats, stage_end - t_done))
    if n == 0:
        print(f"{'k':>5} {'percolation':>12} {'writing':>9} {'statistics':>11}"
              f" {'write+stats':>12} {'communities':>12}   (seconds)")
    print(f"{k:>5} {rows[-1][1]:>12.3f} {rows[-1][2]:>9.3f} {rows[-1][3]:>11.3f}"
          f" {rows[-1][4]:>12.3f} {communities(k):>12}")
if rows:
    print(f"{'all':>5} {sum(r[1] for r in rows):>12.3f} {sum(r[2] for r in rows):>9.3f}"
          f" {sum(r[3] for r in rows):>11.3f} {sum(r[4] for r in rows):>12.3f}")
else:
    print("(no per-k lines: an intensity run, or no k to do)")
print(f"clique stage: {clique_stage:.3f} s (up to writing {search_time:.3f} s,"
      f" writing cliques {clique_stage - search_time:.3f} s)")
print(f"whole process: {end:.3f} s wall")
if rows:
    worst = max(rows, key=lambda r: r[1])
    print(f"largest per-k percolation: {worst[1]:.3f} s at k={worst[0]}")
PYTHON
