#!/usr/bin/env bash
# Exactness regression: builds Varnel at a base revision and from the working tree, runs both on
# the same cases and compares the whole results directories (diff -r) and the standard outputs
# byte for byte. Any difference is reported with the first differing files and makes the script
# exit 1; the wall time of both binaries per case is printed for information only.
#
#   bench/regress.sh [BASE_REV] [CASE...]
#
#   BASE_REV  revision to compare against (default HEAD, i.e. the last commit against the working
#             tree, uncommitted changes included)
#   CASE      NETWORK or NETWORK:SWITCHES, where NETWORK is a name of ../shared/data (lesmis,
#             hepph.links, ...) or the path of a link file, and SWITCHES are extra switches for
#             both binaries (e.g. "hepph:-k 5"); NETWORK+w is a weighted copy of NETWORK, each
#             line given the weight 0.5 + (line number * 7919 mod 10) / 2. Cases given here
#             replace the default ones: every network of ../shared/data at all k but facebook
#             (no exact run finishes on it), the directed runs of email-eu, wikivote and
#             slashdot, a fixed k, the intensity on lesmis (it lists k-cliques, too many on
#             the others) and the thresholds on lesmis and on weighted copies of grqc and
#             email-eu (on hepph they split its 239-node clique into millions of cliques).
#             QUICK=1 keeps only the cases of a few seconds.
#
# Environment:
#   DATA_DIR       where network names are looked up (default ../shared/data)
#   REGRESS_CASES  further cases, separated by ';' (e.g. "hepph.links:-k 5;lesmis.links:-I 2");
#                  SWITCHES must not contain -o (the results are looked for beside the input)
#   TIME_LIMIT     seconds before a run is stopped, which fails the case (default 900)
#   JOBS           parallel jobs of the builds (default 1)
#   CACHE_DIR      where base binaries are kept by commit hash (default /tmp/varnel-regress-cache)
#   KEEP           set to keep the scratch directory (it is kept anyway when a case fails)
#
# The base revision is built in a temporary git worktree under /tmp, the working tree in
# build-bench-lean, both in Release with tests and export off (target varnel only). Both
# binaries run one after the other on the same copy of the input, at the same path, so the
# input path written into every result file header is the same for both.
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$PWD
data=$(cd "${DATA_DIR:-../shared/data}" 2>/dev/null && pwd) || data=${DATA_DIR:-../shared/data}

base_rev=${1:-HEAD}
[ $# -gt 0 ] && shift
jobs=${JOBS:-1}
cache=${CACHE_DIR:-/tmp/varnel-regress-cache}

# Prints a line on standard error and stops.
die() {
  echo "regress: $*" >&2
  exit 2
}

base_hash=$(git rev-parse --verify --quiet "$base_rev^{commit}") ||
  die "no such revision: $base_rev (the first argument is the base revision, e.g. HEAD hepph)"

worktree=
scratch=
keep_scratch=${KEEP:-}
cleanup() {
  [ -z "$worktree" ] || git -C "$repo" worktree remove --force "$worktree" || true
  [ -z "$scratch" ] || [ -n "$keep_scratch" ] || rm -rf "$scratch"
}
trap cleanup EXIT

# Builds the target varnel from source directory $1 into build directory $2 (log inside it).
build_varnel() {
  mkdir -p "$2"
  if ! cmake -S "$1" -B "$2" -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF \
         -DVARNEL_EXPORT=OFF >"$2/varnel-build.log" 2>&1 ||
     ! cmake --build "$2" -j "$jobs" --target varnel >>"$2/varnel-build.log" 2>&1; then
    die "build of $1 failed, see $2/varnel-build.log"
  fi
}

base_binary="$cache/$base_hash/varnel"
if [ -x "$base_binary" ]; then
  echo "base $base_rev ($base_hash): cached build"
else
  echo "base $base_rev ($base_hash): building..."
  mkdir -p "$cache/$base_hash"
  worktree=$(mktemp -d /tmp/varnel-regress-wt-XXXXXX)
  git worktree add --detach --quiet "$worktree" "$base_hash"
  build_varnel "$worktree" "$cache/$base_hash/build"
  cp "$cache/$base_hash/build/driver/varnel" "$base_binary.part"
  mv "$base_binary.part" "$base_binary"
  rm -rf "$cache/$base_hash/build"
  git worktree remove --force "$worktree"
  worktree=
fi

echo "working tree: building in build-bench-lean..."
build_varnel "$repo" "$repo/build-bench-lean"
current_binary="$repo/build-bench-lean/driver/varnel"
if git diff --quiet "$base_hash" -- 2>/dev/null; then
  echo "note: the working tree has no changes against $base_rev"
fi

# The cases, one "NETWORK:SWITCHES" a line.
cases=()
if [ $# -gt 0 ]; then
  cases=("$@")
else
  cases=(lesmis "lesmis:-I 2" "lesmis:-I 1.5 -k 4" "lesmis:-w 1 -W 6" grqc "grqc:-k 4"
    "grqc+w:-w 1 -W 4 -d 2" hepph "email-eu:-D" "email-eu+w:-D -w 2" astroph)
  if [ -z "${QUICK:-}" ]; then
    cases+=("wikivote:-k 1000" wikivote "wikivote:-D" enron dblp slashdot "slashdot:-D")
  fi
fi
if [ -n "${REGRESS_CASES:-}" ]; then
  IFS=';' read -r -a extra <<<"$REGRESS_CASES"
  for case in "${extra[@]}"; do
    [ -n "$case" ] && cases+=("$case")
  done
fi

# Prints the path of the link file of a network name or path; NAME+w makes a weighted copy.
resolve_network() {
  local network=$1 plain
  if [[ $network == *+w ]]; then
    plain=$(resolve_network "${network%+w}") || return 1
    mkdir -p "$scratch/weighted"
    awk '!/^#/ && NF >= 2 { print $1, $2, 0.5 + (NR * 7919 % 10) / 2 }' "$plain" \
      >"$scratch/weighted/$(basename "$plain").w"
    echo "$scratch/weighted/$(basename "$plain").w"
    return 0
  fi
  for candidate in "$network" "$data/$network" "$data/$network.links"; do
    if [ -f "$candidate" ]; then
      (cd "$(dirname "$candidate")" && echo "$PWD/$(basename "$candidate")")
      return 0
    fi
  done
  return 1
}

scratch=$(mktemp -d /tmp/varnel-regress-XXXXXX)
failed=0

# Runs binary $1 with switches $3 on input $2 (a file name in $scratch/run), then moves its
# standard output, time record and results (everything the run left beside the input) to $4.
run_one() {
  local binary=$1 input=$2 switches=$3 dest=$4 status=0
  mkdir -p "$dest/results"
  # shellcheck disable=SC2086
  (cd "$scratch/run" && /usr/bin/time -f '%e' -o "$dest/time" \
      timeout "${TIME_LIMIT:-900}" "$binary" -i "$input" $switches >"$dest/stdout") || status=$?
  find "$scratch/run" -mindepth 1 -maxdepth 1 ! -name "$input" -exec mv -t "$dest/results" {} +
  return "$status"
}

# Describes the exit status $1 of a run (timeout's and /usr/bin/time's conventions).
describe_status() {
  if [ "$1" -eq 124 ]; then
    echo "stopped after ${TIME_LIMIT:-900} s"
  elif [ "$1" -gt 128 ]; then
    echo "crashed (signal $(($1 - 128)))"
  else
    echo "exited with status $1"
  fi
}

# Prints the first differing entries of two directory trees, and the start of the first
# differing file's diff.
show_tree_diff() {
  local listing first
  listing=$(diff -rq "$1" "$2" | sed "s|$scratch/||g" || true)
  echo "$listing" | head -n 5 | sed 's/^/    /'
  [ "$(echo "$listing" | wc -l)" -gt 5 ] && echo "    ... $(echo "$listing" | wc -l) entries in all"
  first=$(echo "$listing" | sed -n 's/^Files \(.*\) and .* differ$/\1/p' | head -n 1)
  first=${first#"${1#"$scratch/"}"/}
  if [ -n "$first" ]; then
    echo "    first lines of the diff of $first:"
    diff "$1/$first" "$2/$first" | head -n 8 | cut -c1-160 | sed 's/^/      /' || true
  fi
}

printf '\n%-22s %-12s %10s %10s %8s %s\n' network switches "base (s)" "cur (s)" files verdict
for case in "${cases[@]}"; do
  network=${case%%:*}
  switches=
  [ "$case" != "$network" ] && switches=${case#*:}
  if ! path=$(resolve_network "$network"); then
    printf '%-22s %-12s %10s %10s %8s %s\n' "$network" "${switches:--}" - - - "FAIL: no such network"
    failed=1
    continue
  fi
  name=$(basename "$path")
  rm -rf "$scratch/run" "$scratch/base" "$scratch/cur"
  mkdir -p "$scratch/run"
  cp "$path" "$scratch/run/$name"
  verdict=same
  details=
  for side in base cur; do
    binary=$base_binary
    [ "$side" = cur ] && binary=$current_binary
    status=0
    run_one "$binary" "$name" "$switches" "$scratch/$side" || status=$?
    if [ "$status" -ne 0 ]; then
      verdict="FAIL: $side run $(describe_status "$status")"
      details+="  last line of the $side run: $(tail -n 1 "$scratch/$side/stdout")"$'\n'
    fi
  done
  if [ "$verdict" = same ]; then
    if ! cmp -s "$scratch/base/stdout" "$scratch/cur/stdout"; then
      verdict="FAIL: standard outputs differ"
      details+="  standard output, first differing lines:"$'\n'
      details+=$(diff "$scratch/base/stdout" "$scratch/cur/stdout" | head -n 8 | cut -c1-160 |
        sed 's/^/      /' || true)$'\n'
    fi
    if ! diff -rq "$scratch/base/results" "$scratch/cur/results" >/dev/null 2>&1; then
      if [ "$verdict" = same ]; then
        verdict="FAIL: results differ"
      else
        verdict="FAIL: results and standard outputs differ"
      fi
      details+="  results, first differing entries:"$'\n'
      details+=$(show_tree_diff "$scratch/base/results" "$scratch/cur/results")$'\n'
    fi
    if [ "$verdict" = same ] && grep -q '^ERROR' "$scratch/cur/stdout"; then
      verdict="FAIL: both runs printed $(grep -m1 '^ERROR' "$scratch/cur/stdout")"
    fi
  fi
  files=$(find "$scratch/cur/results" -type f | wc -l)
  printf '%-22s %-12s %10s %10s %8s %s\n' "$name" "${switches:--}" \
      "$(tail -n 1 "$scratch/base/time" 2>/dev/null || echo -)" \
      "$(tail -n 1 "$scratch/cur/time" 2>/dev/null || echo -)" "$files" "$verdict"
  [ -n "$details" ] && printf '%s' "$details"
  if [ "$verdict" != same ]; then
    failed=1
    keep_scratch=yes
    mkdir -p "$scratch/failed"
    mv "$scratch/base" "$scratch/failed/$name${switches:+ $switches}.base"
    mv "$scratch/cur" "$scratch/failed/$name${switches:+ $switches}.cur"
  fi
done
rm -rf "$scratch/run" "$scratch/base" "$scratch/cur"

if [ "$failed" -ne 0 ]; then
  keep_scratch=yes
  echo "regression: differences found; both runs of each failed case kept in $scratch/failed"
  exit 1
fi
echo "no differences: $base_rev and the working tree give byte-identical results"
