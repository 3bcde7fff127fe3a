# Sourced by the set-up commands (scripts/example.sh, scripts/test.sh, .ci/run): what each needs
# from Debian, installed when missing or named in a message that stops the command.
#   need PACKAGE COMMAND...   PACKAGE counts as missing unless COMMAND succeeds
#   need_build, need_tests    the packages of a build, and those of the tests on top
#   install_missing           apt-get installs the missing packages when run as root on Debian;
#                             otherwise stops, naming them
missing=()

need() {
  local package=$1
  shift
  "$@" >/dev/null 2>&1 || missing+=("$package")
}

has_python_module() {
  /usr/bin/python3 -c "import $1"
}

need_build() {
  need cmake command -v cmake
  need g++ command -v g++
}

need_tests() {
  need libgtest-dev test -f /usr/include/gtest/gtest.h
  # The install test renders the manual pages.
  need man-db command -v man
  need groff-base command -v groff
  # The Python module, its tests (networkx is their oracle) and its two install routes.
  need pybind11-dev test -f /usr/include/pybind11/pybind11.h
  need python3-dev /usr/bin/python3 -c 'import os, sys, sysconfig
sys.exit(not os.path.exists(os.path.join(sysconfig.get_paths()["include"], "Python.h")))'
  need python3-pytest has_python_module pytest
  need python3-networkx has_python_module networkx
  need python3-venv has_python_module ensurepip
  need python3-setuptools has_python_module setuptools
  need python3-wheel has_python_module wheel
}

install_missing() {
  [ ${#missing[@]} -eq 0 ] && return 0
  if [ "$(id -u)" = 0 ] && command -v apt-get >/dev/null 2>&1; then
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -q
    apt-get install -y -q "${missing[@]}"
  else
    echo "$(basename "$0"): missing Debian packages: ${missing[*]}" >&2
    echo "install them first: apt-get install -y ${missing[*]}" >&2
    exit 1
  fi
}
