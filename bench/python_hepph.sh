#!/usr/bin/env bash
# Builds the Python module varnel in Release and times it against networkx on hepph at every k
# (bench/python_hepph.py, under Debian's /usr/bin/python3, which has networkx).
#   BUILD_DIR  build directory (default: build-python-bench)
#   JOBS       parallel jobs of the build (default 1)
#   RUNS       runs of varnel.communities, the median reported (default 3)
# Arguments go to python_hepph.py (a link file other than ../shared/data/hepph.links).
set -euo pipefail
cd "$(dirname "$0")/.."
build=${BUILD_DIR:-build-python-bench}
mkdir -p "$build"
if ! cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DVARNEL_TESTS=OFF -DVARNEL_EXPORT=OFF \
     -DVARNEL_PYTHON=ON -DPython3_EXECUTABLE=/usr/bin/python3 >"$build/python-build.log" 2>&1 ||
   ! cmake --build "$build" -j "${JOBS:-1}" --target varnel_python >>"$build/python-build.log" 2>&1; then
  echo "python_hepph: build failed, see $build/python-build.log" >&2
  exit 2
fi
PYTHONPATH="$(cd "$build" && pwd)/python" exec /usr/bin/python3 bench/python_hepph.py "$@"
