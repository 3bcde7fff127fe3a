"""varnel as a networkx backend: networkx finds it through its entry points, its two functions
keep networkx's contracts, and networkx's own tests of them pass on it unmodified."""

import os
import pathlib
import shutil
import subprocess
import sys

import networkx as nx
import pytest

import varnel
from varnel import backend
from networks import random_graphs

DISPATCHING = hasattr(nx.utils, "backends")
HERE = pathlib.Path(__file__).resolve().parent
GRAPHS = list(random_graphs())


def test_networkx_finds_the_backend():
    graph = nx.karate_club_graph()
    graph.add_edge(0, 0)
    if not DISPATCHING:
        # networkx 2 dispatches nothing, but the entry point is there for networkx 3.
        from importlib.metadata import entry_points
        found = [e.value for e in entry_points(group="networkx.backends") if e.name == "varnel"]
        assert found == ["varnel.backend:BackendInterface"]
        return
    expected = set(nx.community.k_clique_communities(graph, 4))
    assert set(nx.community.k_clique_communities(graph, 4, backend="varnel")) == expected
    cliques = nx.find_cliques(graph, [0, 1], backend="varnel")
    assert sorted(map(sorted, cliques)) == sorted(map(sorted, nx.find_cliques(graph, [0, 1])))
    assert nx.utils.backends.backend_info["varnel"]["functions"].keys() == {
        "k_clique_communities", "find_cliques"}


@pytest.mark.parametrize("graph", GRAPHS)
def test_find_cliques_holding_given_nodes_as_networkx(graph):
    graph = graph.copy()
    graph.add_node("alone")
    nodes = list(graph)
    cases = [None, [], ["alone"], nodes[:1], nodes[1:3], [nodes[0], nodes[0]], ["nowhere"]]
    cases += [sorted(c, key=repr)[:2] for c in list(nx.find_cliques(graph))[:3]]
    for given in cases:
        try:
            expected = sorted(sorted(map(repr, c)) for c in nx.find_cliques(graph, given))
        except ValueError:
            with pytest.raises(ValueError, match="do not form a clique"):
                list(backend.find_cliques(graph, given))
            continue
        found = list(backend.find_cliques(graph, given))
        assert sorted(sorted(map(repr, c)) for c in found) == expected, given
        assert all(c[:len(given or [])] == (given or []) for c in found), given
    assert list(backend.find_cliques(nx.Graph())) == []


def run_networkx_tests(directory, name, select=None):
    """Runs a test file of networkx, copied from the installed networkx, with the plugin that
    puts varnel in networkx's place; returns pytest's closing line."""
    directory.mkdir()
    shutil.copy(pathlib.Path(nx.__file__).parent / name, directory)
    path = [str(HERE)] + [os.path.abspath(p) for p in os.environ.get("PYTHONPATH", "").split(
        os.pathsep) if p]
    environment = dict(os.environ, NETWORKX_BACKEND_PRIORITY="varnel",
                       PYTHONPATH=os.pathsep.join(path))
    command = [sys.executable, "-m", "pytest", "-q", "-p", "no:cacheprovider",
               "-p", "networkx_suite", "-W", "ignore::UserWarning", "."]
    if select:
        command += ["-k", select]
    result = subprocess.run(command, cwd=directory, env=environment, capture_output=True,
                            text=True)
    assert result.returncode == 0, result.stdout + result.stderr
    return result.stdout.strip().splitlines()[-1]


def test_networkx_own_tests_pass(tmp_path):
    closing = run_networkx_tests(tmp_path / "kclique", "algorithms/community/tests/test_kclique.py")
    assert closing.startswith("8 passed"), closing
    # networkx 2's test_clique.py also tests cliques_containing_node, which networkx 3 dropped:
    # it expects the order networkx's own search gives the nodes within a clique.
    select = None if DISPATCHING else "find_cliques or selfloops or directed"
    closing = run_networkx_tests(tmp_path / "clique", "algorithms/tests/test_clique.py", select)
    assert closing.startswith("13 passed" if DISPATCHING else "5 passed"), closing
