"""Checks of an installed varnel in a fresh virtual environment, shared by the two install
routes: the package and its metadata are where the interpreter looks, its version is the
program's, and networkx finds the backend."""

import os
import pathlib
import subprocess

CHECK = """
import importlib.metadata as metadata
import networkx as nx
import varnel
print(varnel.__file__)
print(varnel.__version__, metadata.version("varnel"))
print(*[e.value for e in metadata.entry_points(group="networkx.backends") if e.name == "varnel"])
G = nx.karate_club_graph()
if hasattr(nx.utils, "backends"):
    found = nx.community.k_clique_communities(G, 4, backend="varnel")
else:
    found = varnel.k_clique_communities(G, 4)
print(set(found) == set(nx.community.k_clique_communities(G, 4)))
"""


def make_venv(python, directory):
    """A virtual environment of `python` that sees its site-packages (networkx among them)."""
    subprocess.run([python, "-m", "venv", "--system-site-packages", str(directory)], check=True,
                   capture_output=True)
    return directory / "bin" / "python"


def run_outside_the_build(command, **options):
    """Runs command with none of the tests' PYTHONPATH, which names the build tree's package."""
    environment = {k: v for k, v in os.environ.items() if k != "PYTHONPATH"}
    environment.update(options.pop("env", {}))
    return subprocess.run(command, env=environment, capture_output=True, text=True, **options)


def check_installed(venv_python, version):
    out = run_outside_the_build([str(venv_python), "-c", CHECK], cwd="/",
                                check=True).stdout.splitlines()
    venv = venv_python.parent.parent
    assert pathlib.Path(out[0]).is_relative_to(venv), out[0]
    assert out[1:] == [f"{version} {version}", "varnel.backend:BackendInterface", "True"]
