#!/usr/bin/env bash
# Benchmarks Varnel side by side with general graph libraries on the real networks of
# ../shared/data, in one session, and prints a table per peer with medians and peer/Varnel ratios
# of whole-process wall time and peak resident memory (/usr/bin/time):
#   igraph    python-igraph's maximal cliques of >= 3 nodes (Graph.maximal_cliques(min=3), written
#             to a file one a line) against `varnel -i NET -k 1000` (reading, clique search and
#             clique file; no k reaches a clique); also igraph's pure enumeration time, measured
#             inside Python. Default networks: wikivote, hepph, grqc, email-eu.
#   networkx  networkx's find_cliques then k_clique_communities(G, k, cliques=...) for every k from
#             the largest clique size down to 3, communities materialised, against `varnel -i NET`
#             (all k); also networkx's time after reading. Default networks: hepph, grqc, lesmis
#             (wikivote takes networkx more than 40 minutes: name it to have it).
# Both peers take the links as undirected (email-eu too; Varnel runs undirected as well), and the
# counts of cliques or communities are compared as a check that the work done is the same.
#
#   bench/peers.sh [NETWORK...]   networks given (names of ../shared/data or link file paths)
#                                 replace the default networks of every peer
#
# Environment:
#   RUNS        runs per tool and network, medians reported (default 3)
#   PEERS       which peers to run (default "igraph networkx")
#   TIME_LIMIT  seconds before a run is stopped (default 3600)
#   VARNEL      Varnel binary to run (default: the working tree, built in build-bench-lean)
#   JOBS        parallel jobs of the build (default 1)
#   DATA_DIR    where network names are looked up (default ../shared/data)
#   KEEP        set to keep the scratch directory
#   SCRATCH_DIR where the scratch directory goes (default /tmp)
#   PYTHON      the Python that runs the peers (default Debian's /usr/bin/python3); e.g.
#               PYTHON=python3 for another interpreter with its own networkx
#
# The peers run under PYTHON (the peer code is bench/peers.py); when one is missing from Debian's
# Python it is installed with apt-get (python3-igraph, python3-networkx); another Python must
# have it already. Varnel is built in build-bench-lean: Release, no tests, no export, target
# varnel only.
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$PWD
data=$(cd "${DATA_DIR:-../shared/data}" 2>/dev/null && pwd) || data=${DATA_DIR:-../shared/data}
python=${PYTHON:-/usr/bin/python3}
peer_code="$repo/bench/peers.py"
runs=${RUNS:-3}
peers=${PEERS:-igraph networkx}
limit=${TIME_LIMIT:-3600}

die() {
  echo "peers: $*" >&2
  exit 2
}

# Installs Debian package $2 when Python module $1 cannot be imported.
ensure_module() {
  if ! "$python" -c "import $1" 2>/dev/null; then
    [ "$python" = /usr/bin/python3 ] || die "$python cannot import $1"
    echo "installing $2..."
    apt-get install -y "$2" >/dev/null || die "could not install $2"
    "$python" -c "import $1" || die "$2 installed but $1 cannot be imported"
  fi
}
for peer in $peers; do
  case $peer in
    igraph) ensure_module igraph python3-igraph ;;
    networkx) ensure_module networkx python3-networkx ;;
    *) die "unknown peer: $peer (igraph or networkx)" ;;
  esac
done
echo "python-igraph $("$python" -c 'import igraph; print(igraph.__version__)' 2>/dev/null || echo -)," \
  "networkx $("$python" -c 'import networkx; print(networkx.__version__)' 2>/dev/null || echo -)," \
  "$("$python" --version)"

if [ -n "${VARNEL:-}" ]; then
  varnel=$(cd "$(dirname "$VARNEL")" && echo "$PWD/$(basename "$VARNEL")")
else
  mkdir -p build-bench-lean
  if ! cmake -S . -B build-bench-lean -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF \
       -DVARNEL_EXPORT=OFF >build-bench-lean/varnel-build.log 2>&1 ||
     ! cmake --build build-bench-lean -j "${JOBS:-1}" --target varnel \
       >>build-bench-lean/varnel-build.log 2>&1; then
    die "build failed, see build-bench-lean/varnel-build.log"
  fi
  varnel="$repo/build-bench-lean/driver/varnel"
fi

scratch=$(mktemp -d "${SCRATCH_DIR:-/tmp}/varnel-peers-XXXXXX")
[ -n "${KEEP:-}" ] || trap 'rm -rf "$scratch"' EXIT

# Prints the path of the link file of a network name or path.
resolve_network() {
  local candidate
  for candidate in "$1" "$data/$1" "$data/$1.links"; do
    if [ -f "$candidate" ]; then
      (cd "$(dirname "$candidate")" && echo "$PWD/$(basename "$candidate")")
      return 0
    fi
  done
  die "no such network: $1"
}

# Runs a command in the scratch directory under /usr/bin/time and timeout, its standard output in
# $scratch/out; prints "WALL PEAK_KIB", or fails when the command failed or was stopped.
measure() {
  local status=0
  (cd "$scratch" && /usr/bin/time -f '%e %M' -o "$scratch/time" timeout "$limit" "$@" \
      >"$scratch/out" 2>"$scratch/err") || status=$?
  if [ "$status" -ne 0 ]; then
    [ "$status" -eq 124 ] && echo "stopped after $limit s" >>"$scratch/err"
    return 1
  fi
  tail -n 1 "$scratch/time"
}

# Prints the median of the numbers given.
median() {
  printf '%s\n' "$@" | sort -g | awk '{v[NR] = $1}
    END {if (NR == 0) print "-"; else if (NR % 2) print v[(NR + 1) / 2];
         else printf "%.2f\n", (v[NR / 2] + v[NR / 2 + 1]) / 2}'
}

# Prints $1 / $2 with two decimals, or "-" when either is missing or the divisor is 0.
ratio() {
  awk -v a="$1" -v b="$2" 'BEGIN {if (a == "-" || b == "-" || b + 0 == 0) print "-";
    else printf "%.2f\n", a / b}'
}

# Prints the value of key $1 in the peer's "key value" output.
peer_value() {
  awk -v key="$1" '$1 == key {print $2}' "$scratch/out"
}

# Prints the number of numbered lines ("N: ...") of the files given.
numbered_lines() {
  cat "$@" 2>/dev/null | grep -c '^[0-9][0-9]*:' || true
}

# Benchmarks one peer against Varnel on one network. $1: peer, $2: link file.
compare() {
  local peer=$1 path=$2 name run line wall peak
  local -a peer_wall=() peer_peak=() peer_inner=() var_wall=() var_peak=()
  local peer_count=- var_count=- peer_status='' var_status=''
  name=$(basename "$path")
  cp "$path" "$scratch/$name"
  for ((run = 1; run <= runs; run++)); do
    if [ -z "$peer_status" ]; then
      if [ "$peer" = igraph ]; then
        line=$(measure "$python" "$peer_code" igraph-cliques "$name" "$name.peer") || peer_status=failed
        rm -f "$scratch/$name.peer"
      else
        line=$(measure "$python" "$peer_code" networkx-percolation "$name") || peer_status=failed
      fi
      if [ -z "$peer_status" ]; then
        read -r wall peak <<<"$line"
        peer_wall+=("$wall")
        peer_peak+=("$peak")
        if [ "$peer" = igraph ]; then
          peer_inner+=("$(peer_value enumeration)")
          peer_count=$(peer_value cliques)
        else
          peer_inner+=("$(peer_value inner)")
          peer_count=$(peer_value communities)
        fi
      else
        peer_status="$peer: $(tail -n 1 "$scratch/err")"
      fi
    fi
    if [ -z "$var_status" ]; then
      if [ "$peer" = igraph ]; then
        line=$(measure "$varnel" -i "$name" -k 1000) || var_status=failed
      else
        line=$(measure "$varnel" -i "$name") || var_status=failed
      fi
      if grep -q '^ERROR' "$scratch/out"; then var_status="varnel: $(grep -m1 '^ERROR' "$scratch/out")"; fi
      if [ -z "$var_status" ]; then
        read -r wall peak <<<"$line"
        var_wall+=("$wall")
        var_peak+=("$peak")
        if [ "$peer" = igraph ]; then
          var_count=$(numbered_lines "$scratch/$name"_files/cliques)
        else
          var_count=$(numbered_lines "$scratch/$name"_files/k=*/communities)
        fi
      elif [ "$var_status" = failed ]; then
        var_status="varnel: $(tail -n 1 "$scratch/err") $(tail -n 1 "$scratch/out")"
      fi
      rm -rf "$scratch/$name"_files
    fi
  done
  rm -f "$scratch/$name"

  local pw pi pp vw vp check
  pw=$(median "${peer_wall[@]}")
  pi=$(median "${peer_inner[@]}")
  pp=$(median "${peer_peak[@]}")
  vw=$(median "${var_wall[@]}")
  vp=$(median "${var_peak[@]}")
  [ "$pp" = - ] || pp=$((${pp%.*} / 1024))
  [ "$vp" = - ] || vp=$((${vp%.*} / 1024))
  if [ "$peer_count" = "$var_count" ]; then
    check="same: $peer_count"
  else
    check="MISMATCH: $peer_count vs $var_count"
  fi
  printf '%-16s %9s %9s %9s | %9s %9s | %7s %7s | %s  %s\n' "$name" "$pw" "$pi" "$pp" "$vw" "$vp" \
    "$(ratio "$pw" "$vw")" "$(ratio "$pp" "$vp")" "$check" "$peer_status$var_status"
}

# Prints the header of a peer's table. $1: peer, $2: what its inner time is, $3: what is counted.
header() {
  printf '\n%s against Varnel, median of %s run(s); times in seconds, memory in MiB (peak RSS)\n' \
    "$1" "$runs"
  printf '%-16s %9s %9s %9s | %9s %9s | %7s %7s | %s\n' network "$1" "$2" "peak" varnel \
    "peak" "wall x" "peak x" "$3 count"
}

for peer in $peers; do
  if [ $# -gt 0 ]; then
    networks=("$@")
  elif [ "$peer" = igraph ]; then
    networks=(wikivote hepph grqc email-eu)
  else
    networks=(hepph grqc lesmis)
  fi
  if [ "$peer" = igraph ]; then
    header igraph enum cliques
  else
    header networkx inner communities
  fi
  for network in "${networks[@]}"; do
    compare "$peer" "$(resolve_network "$network")"
  done
done
echo
echo "wall x, peak x: the peer's figure over Varnel's (above 1: Varnel is faster or smaller)"
