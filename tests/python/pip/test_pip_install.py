"""The pip route: `pip install --no-build-isolation .` in a fresh virtual environment builds the
module from a copy of the sources with the interpreter's setuptools and wheel, and installs it
with its metadata and entry points."""

import os
import pathlib
import shutil
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))
from installed import check_installed, make_venv, run_outside_the_build  # noqa: E402

SOURCE = pathlib.Path(__file__).resolve().parents[3]


def test_pip_install_into_a_venv(tmp_path):
    source = tmp_path / "source"
    shutil.copytree(SOURCE, source, ignore=shutil.ignore_patterns(".git", "build*", "examples"))
    python = make_venv(sys.executable, tmp_path / "venv")
    jobs = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", str(os.cpu_count() or 1))
    result = run_outside_the_build([python, "-m", "pip", "install", "--no-build-isolation", "."],
                                   cwd=source, env={"CMAKE_BUILD_PARALLEL_LEVEL": jobs})
    assert result.returncode == 0, result.stdout + result.stderr
    check_installed(python, os.environ["VARNEL_VERSION"])
