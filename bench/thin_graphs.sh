#!/usr/bin/env bash
# Memory of thin graphs, whose nodes are many and whose links are few per node: a path of N nodes
# (node i linked to i + 1) and a star of N leaves around node 1, made with seq and awk and run
# through bench/run.sh, which prints their wall time and peak resident memory.
#   N   nodes of the path and leaves of the star (default 1000000)
set -euo pipefail
cd "$(dirname "$0")/.."
n=${N:-1000000}
scratch=$(mktemp -d /tmp/varnel-thin-XXXXXX)
trap 'rm -rf "$scratch"' EXIT
seq 1 $((n - 1)) | awk '{ print $1, $1 + 1 }' >"$scratch/path.links"
seq 2 $((n + 1)) | awk '{ print 1, $1 }' >"$scratch/star.links"
bench/run.sh "$scratch/path.links" "$scratch/star.links"
