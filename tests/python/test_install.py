"""The package as the install rules lay it out under a prefix imports and works."""

import os
import subprocess
import sys

import pytest

BUILD = os.environ.get("VARNEL_BUILD_DIR")
CMAKE = os.environ.get("VARNEL_CMAKE")


@pytest.mark.skipif(not BUILD or not CMAKE, reason="needs the build directory, as ctest gives it")
def test_installed_package_works(tmp_path):
    subprocess.run([CMAKE, "--install", BUILD, "--component", "python", "--prefix", tmp_path],
                   check=True, capture_output=True)
    version = f"python{sys.version_info.major}.{sys.version_info.minor}"
    site = tmp_path / "lib" / version / "site-packages"
    installed = sorted(p.name for p in (site / "varnel").iterdir())
    assert "__init__.py" in installed and "_links.py" in installed
    assert any(name.startswith("_core.") and name.endswith(".so") for name in installed)

    code = ("import networkx as nx, varnel\n"
            "from networkx.algorithms.community import k_clique_communities\n"
            "G = nx.karate_club_graph()\n"
            "print(varnel.__file__)\n"
            "print(set(varnel.k_clique_communities(G, 4)) == set(k_clique_communities(G, 4)))\n")
    env = dict(os.environ, PYTHONPATH=str(site))
    out = subprocess.run([sys.executable, "-c", code], cwd=tmp_path, env=env, check=True,
                         capture_output=True, text=True).stdout.split()
    assert out == [str(site / "varnel" / "__init__.py"), "True"]
