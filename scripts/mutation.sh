#!/usr/bin/env bash
# Mutation check of the test suite: applies one small fault at a time to a private copy of the
# sources, rebuilds, runs ctest and records whether the suite noticed (any failing test counts
# as caught). The checkout itself is never touched, so editing and building in it can go on
# while the check runs.
#
# Usage: scripts/mutation.sh [FILTER]
#   FILTER     run only the mutations whose name matches this extended regex
# MUTATION_CHECK_ONLY=1 in the environment only checks that every mutation applies.
# MUTATION_JOBS=N builds and tests with N jobs (default 1, at nice 19).
set -euo pipefail

checkout=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
filter=${1:-}
jobs=${MUTATION_JOBS:-1}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
trap 'exit 130' INT TERM HUP

# The files git tracks or would track, as they are in the working tree (deleted ones left out).
root=$scratch/src
build=$scratch/build
mkdir -p "$root"
(cd "$checkout" && git ls-files -co --exclude-standard -z |
  while IFS= read -r -d '' file; do if [[ -e $file ]]; then printf '%s\0' "$file"; fi; done |
  xargs -0 cp --parents -t "$root")

# name | file | text to replace (its first occurrence) | replacement
mutations=(
  'round-half-away|text/conversions.cc|if (std::fabs(x - (t + 1.0)) > std::fabs(x - t)) return t;|if (std::fabs(x - (t + 1.0)) < std::fabs(x - t)) return t;'
  'bool-word-Yes|text/conversions.cc|text == "Yes" \|\||text == "yes" \|\|'
  'pad-sign|text/conversions.cc|s.insert(n < 0 ? 1 : 0, zeros|s.insert(0, zeros'
  'digits-power|text/conversions.cc|if (i > 0) p *= 10;|if (i > 1) p *= 10;'
  'del-answer|fsutil/del_path.cc|if (answer == '"'"'d'"'"') {|if (answer == '"'"'r'"'"') {'
  'listing-dotdot|fsutil/dir_listing.cc|if (name != "." \&\& name != "..")|if (name != ".")'
  'path-dotdot|fsutil/path_query.cc|if (current == ".." \&\& !components.empty()) {|if (current == "." \&\& !components.empty()) {'
  'path-root-slash|fsutil/path_query.cc|if (total.size() > 1) total.pop_back();|if (total.size() > 0) total.pop_back();'
  'rename-force|fsutil/rename.cc|if (!Is_there_such_path(to) \|\| policy == "force") {|if (!Is_there_such_path(to)) {'
  'prepare-clear|fsutil/dir_prepare.cc|if (answer == '"'"'c'"'"') {|if (answer == '"'"'k'"'"') {'
  'self-link-kept|graph/link_reader.cc|if (source == target) continue;|if (false) continue;'
  'comment-lines|graph/link_reader.cc|if (line.empty() \|\| line[0] == '"'"'#'"'"') continue;|if (line.empty()) continue;'
  'lower-threshold|graph/link_reader.cc|if (lower_flag \&\& !(w > lower)) return false;|if (lower_flag \&\& !(w >= lower)) return false;'
  'undirected-order|graph/node_index.cc|if (!directed \&\& t < s) {|if (!directed \&\& t > s) {'
  'time-zero|cli/run_params.cc|if (time_flag \&\& max_time <= 0) {|if (time_flag \&\& max_time < 0) {'
  'thresholds-equal|cli/run_params.cc|lower >= upper) {|lower > upper) {'
  'lone-dash|cli/switches.cc|return word.size() > 1 \&\& word[0] == '"'"'-'"'"';|return word.size() > 0 \&\& word[0] == '"'"'-'"'"';'
  'extend-diagonal|cliques/overlap_extend.cc|return j >= n_exact \&\& j <= i;|return j >= n_exact \&\& j <= i + 1;'
  'matrix-min-shared|cliques/overlap_matrix.cc|if (c.count >= overlaps.min_shared) {|if (c.count > overlaps.min_shared) {'
  'subset-size|cliques/approximation.cc|return small.size() <= big.size() \&\&|return small.size() < big.size() \&\&'
  'negative-note|cliques/clique_output.cc|if (n_exact < cliques.size()) file|if (n_exact <= cliques.size()) file'
  'percent|cliques/search_report.cc|part * 100.0L|part * 10.0L'
  'member-tally|cliques/member_index.h|if (tally_[j]++ == 0) touched_.push_back(j);|if (++tally_[j] == 1) touched_.push_back(j); else ++tally_[j];'
  'node-done|cliques/node_cliques.cc|if (working.count(index) == 0) search.processed|if (working.count(index) != 0) search.processed'
  'triangle-min|cliques/node_cliques.cc|if (None(frame.X) \&\& R.size() >= 2) {|if (None(frame.X) \&\& R.size() >= 3) {'
  'tighten-skip|cliques/clique_find.cc|if (!std::binary_search(C.begin(), C.end(), n)) result|if (std::binary_search(C.begin(), C.end(), n)) result'
  'known-equal|cliques/clique_find_time.cc|if (size <= K.size() \&\& std::includes|if (size < K.size() \&\& std::includes'
  'pending-held|cliques/clique_find_time.cc|if (S.size() <= K.size() \&\& std::includes(K.begin(), K.end(), S.begin(), S.end())) {|if (S.size() < K.size() \&\& std::includes(K.begin(), K.end(), S.begin(), S.end())) {'
  'superset-self|cliques/approximation.cc|if (position != skip \&\& Is_subset(|if (Is_subset('
  'approx-kept|cliques/approximation.cc|if (!exact_index.Has_superset(a)) kept|if (exact_index.Has_superset(a)) kept'
  'approx-covered|cliques/approximation.cc|if (!covered \|\| !approximate_index.Has_superset(e))|if (!covered \&\& !approximate_index.Has_superset(e))'
  'clique-minus|cliques/clique_output.cc|for (; i < n_exact \&\& i < cliques.size(); ++i) {|for (; i + 1 < n_exact \&\& i < cliques.size(); ++i) {'
  'dir-linked-all|cliques/dir_direct_search.cc|if ((set[w] \& ~linked) != 0) return false;|if ((set[w] \& linked) == 0) return false;'
  'walk-ready|cliques/dir_walk_path.cc|if (--waiting[j] == 0) ready.push_back(j);|if (--waiting[j] == 1) ready.push_back(j);'
  'seed-qualifies|communities/percolation.cc|if (!qualifies) return;|if (qualifies) return;'
  'assembly-seen|communities/community_assembly.cc|if (seen_[b] != stamp_) {|if (seen_[b] == stamp_) {'
  'intensity-walk-end|communities/intensity_percolation.cc|if (b.front() > second_smallest) break;|if (b.front() >= second_smallest) break;'
  'intensity-rules|communities/intensity_percolation.cc|if (label != smallest) trans_rules[label] = smallest;|if (label != smallest) trans_rules[smallest] = label;'
  'k-clique-size|communities/k_clique_intensity.cc|if (clique.size() < k) continue;|if (clique.size() <= k) continue;'
  'merged-files|communities/community_stage.cc|if (communities.size() > n_exact_coms) {|if (communities.size() >= n_exact_coms) {'
  'community-note|communities/community_files.cc|if (n_exact_coms < communities.size()) {|if (n_exact_coms <= communities.size()) {'
  'clique-ref-minus|communities/community_files.cc|layout::Is_approximate(clique, n_exact)|layout::Is_approximate(clique, n_exact + 1)'
  'links-range|communities/community_files.cc|if (at <= targets.size() \&\& targets[at - 1] == link.second) {|if (at < targets.size() \&\& targets[at - 1] == link.second) {'
  'percolation-size|communities/percolation.cc|if (labels[i] < 0 \&\& size >= k) {|if (labels[i] < 0 \&\& size > k) {'
  'percolation-approx|communities/percolation.cc|if (m >= n_exact) approximate = true;|if (m > n_exact) approximate = true;'
  'community-minus|communities/community_files.cc|if (layout::Is_approximate(p, n_exact_coms))|if (layout::Is_approximate(p, n_exact_coms + 1))'
  'stats-minus|communities/stats_files.cc|if (layout::Is_approximate(p, n_exact_coms))|if (layout::Is_approximate(p, n_exact_coms + 1))'
  'overlap-stat|communities/community_statistics.cc|if (j.position > row) ++overlap[j.count];|if (j.position >= row) ++overlap[j.count];'
  'intensity-shared|communities/intensity_percolation.cc|if (shared.size() + 1 == k \&\& |if (shared.size() == k \&\& '
  'intensity-min|communities/k_clique_intensity.cc|if (log_w < min_log_w) min_log_w = log_w;|if (log_w > min_log_w) min_log_w = log_w;'
  'assembly-pairs|communities/community_assembly.cc|for (std::size_t j = i + 1; j < clique.size(); ++j) later_|for (std::size_t j = i + 2; j < clique.size(); ++j) later_'
  'leading-zero|results/record_numbers.cc|(token.size() > 1 \&\& token[0] == '"'"'0'"'"')|(token.size() > 0 \&\& token[0] == '"'"'0'"'"')'
  'stats-order|results/stats_files_reader.cc|if (!first \&\& value <= previous) {|if (!first \&\& value < previous) {'
  'empty-token|results/line_tokeniser.cc|if (i > start) tokens_.push_back|if (i >= start) tokens_.push_back'
  'k-range|results/completeness.cc|k > 2; --k)|k > 3; --k)'
  'k-mismatch|results/k_dir_reader.cc|if (file_k != k) {|if (false) {'
  'csv-quote|export/csv_writer.cc|if (c == '"'"'"'"'"') out += '"'"'"'"'"';|(void)c;'
  'xml-apos|export/xml_text.cc|out += "\&apos;";|out += c;'
  'k-below-3|export/export_options.cc|stop != end \|\| k < 3) {|stop != end \|\| k < 2) {'
)

declare -A saved=()
restore_all() {
  local file
  for file in "${!saved[@]}"; do
    cp "${saved[$file]}" "$root/$file"
    rm -f "${saved[$file]}"
  done
  saved=()
  return 0
}

# Replaces the first occurrence of a literal text; fails when the text is not in the file.
replace_literal() {
  python3 - "$1" "$2" "$3" <<'PY'
import sys
path, old, new = sys.argv[1], sys.argv[2], sys.argv[3]
data = open(path, encoding="utf-8").read()
if old not in data:
    sys.exit(1)
open(path, "w", encoding="utf-8").write(data.replace(old, new, 1))
PY
}

# The list above escapes '&' and '|' with a backslash so that '|' can separate the fields.
unescape() {
  local s=$1
  s=${s//\\&/"&"}
  s=${s//\\|/|}
  printf '%s' "$s"
}

build_and_test() {
  nice -n 19 cmake --build "$build" -j"$jobs" >"$scratch/build.log" 2>&1 || return 2
  nice -n 19 ctest --test-dir "$build" -j"$jobs" --timeout 300 --stop-on-failure \
    >"$scratch/ctest.log" 2>&1 || return 1
  return 0
}

# MUTATION_CHECK_ONLY=1 only checks that every mutation applies (nothing is built).
check_only=${MUTATION_CHECK_ONLY:-0}
if ((check_only == 0)); then
  echo "Configuring a Release build of the copy..."
  nice -n 19 cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release >"$scratch/configure.log" 2>&1 \
    || { cat "$scratch/configure.log" >&2; exit 2; }
fi
echo "Checking that the unmutated suite passes..."
if ((check_only == 0)) && ! build_and_test; then
  echo "mutation.sh: the suite fails (or does not build) without any mutation:" >&2
  tail -n 30 "$scratch/build.log" "$scratch/ctest.log" >&2 || true
  exit 2
fi

results=()
caught=0
total=0
for entry in "${mutations[@]}"; do
  # Split on '|' not preceded by a backslash.
  fields=()
  rest=$entry
  while [[ $rest =~ ^((\\.|[^\\|])*)\|(.*)$ ]]; do
    fields+=("${BASH_REMATCH[1]}")
    rest=${BASH_REMATCH[3]}
  done
  fields+=("$rest")
  if ((${#fields[@]} != 4)); then
    echo "mutation.sh: malformed entry: $entry" >&2
    exit 2
  fi
  name=${fields[0]}
  file=${fields[1]}
  if [[ -n $filter && ! $name =~ $filter ]]; then continue; fi
  from=$(unescape "${fields[2]}")
  to=$(unescape "${fields[3]}")
  copy="$scratch/$(echo "$file" | tr / _).orig"
  cp -p "$root/$file" "$copy"
  saved[$file]=$copy
  started=$SECONDS
  if ! replace_literal "$root/$file" "$from" "$to"; then
    verdict="NOT-APPLIED"
  elif ((check_only != 0)); then
    verdict="applies: $(diff "$copy" "$root/$file" | grep "^>" | head -n 1 || true)"
  else
    set +e
    build_and_test
    status=$?
    set -e
    case $status in
      0) verdict="survived" ;;
      1) verdict="caught"
         failed=$(sed -n '/tests FAILED:/,$p' "$scratch/ctest.log" | grep -E '^\s+[0-9]+ - ' \
           | head -n 1 | sed -E 's/^\s+[0-9]+ - //; s/ \(.*//')
         verdict="caught ($failed)" ;;
      *) verdict="BUILD-FAILED" ;;
    esac
  fi
  restore_all
  if [[ $verdict == caught* ]]; then caught=$((caught + 1)); total=$((total + 1)); fi
  if [[ $verdict == survived ]]; then total=$((total + 1)); fi
  results+=("$(printf '%-20s %-40s %5ss  %s' "$name" "$file" $((SECONDS - started)) "$verdict")")
  echo "${results[-1]}"
done

echo
printf '%-20s %-40s %6s  %s\n' mutation file time verdict
printf '%s\n' "${results[@]}"
echo
if ((total > 0)); then
  echo "Kill rate: $caught/$total ($((100 * caught / total))%)"
else
  echo "Kill rate: no mutation was run"
fi
