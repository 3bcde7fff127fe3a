#!/usr/bin/env bash
# Builds Varnel with its tests and runs every test.
#   BUILD_DIR     build directory (default: build)
#   CMAKE_EXTRA   extra arguments for cmake's configure step
# What it needs from Debian it installs when run as root, or stops naming it (scripts/require.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/require.sh
need_build
need_tests
install_missing
build="${BUILD_DIR:-build}"
# shellcheck disable=SC2086
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=ON ${CMAKE_EXTRA:-}
cmake --build "$build" -j "$(nproc)"
# The JUnit report lets CI check why any test was skipped.
ctest --test-dir "$build" --output-on-failure -j "$(nproc)" \
  --output-junit "$(cd "$build" && pwd)/ctest-results.xml"
