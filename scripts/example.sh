#!/usr/bin/env bash
# Builds Varnel and runs it on the bundled example network, writing the results next to a copy
# of it in examples/run/.
# cmake and g++ it installs when run as root, or stops naming them (scripts/require.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/require.sh
need_build
install_missing
cmake -S . -B build-example -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF >/dev/null
cmake --build build-example -j "$(nproc)" --target varnel >/dev/null
rm -rf examples/run
mkdir -p examples/run
cp examples/karate.links examples/run/
(cd examples/run && ../../build-example/driver/varnel -i karate.links)
echo
echo "Results written to examples/run/karate.links_files/"
