"""The CMake install route: `cmake --install BUILD --component python --prefix VENV` puts the
package, its metadata and entry points into a fresh virtual environment of this interpreter."""

import os
import subprocess
import sys

from installed import check_installed, make_venv, run_outside_the_build

BUILD = os.environ["VARNEL_BUILD_DIR"]
CMAKE = os.environ["VARNEL_CMAKE"]
VERSION = os.environ["VARNEL_VERSION"]


def test_cmake_install_into_a_venv(tmp_path):
    python = make_venv(sys.executable, tmp_path / "venv")
    subprocess.run([CMAKE, "--install", BUILD, "--component", "python", "--prefix",
                    tmp_path / "venv"], check=True, capture_output=True)
    check_installed(python, VERSION)
    # The metadata lists every installed file, so that pip removes the package whole.
    run_outside_the_build([python, "-m", "pip", "uninstall", "-y", "varnel"], check=True)
    site = next((tmp_path / "venv" / "lib").glob("python3*/site-packages"))
    assert not [p.name for p in site.iterdir() if p.name.startswith("varnel")]


def test_version_is_the_programs():
    import varnel
    assert varnel.__version__ == VERSION
    export = os.path.join(BUILD, "export", "varnel-export")
    if os.path.exists(export):
        out = subprocess.run([export, "--version"], check=True, capture_output=True, text=True)
        assert out.stdout.split() == ["varnel-export", VERSION]
