"""Bad input raises the right Python exception with a message, and never reaches the core."""

import networkx as nx
import pytest

import varnel
from varnel import _core

TRIANGLE = [(1, 2), (2, 3), (1, 3)]


@pytest.mark.parametrize("call, error, words", [
    (lambda: varnel.k_clique_communities(nx.Graph(TRIANGLE + [(2, 2)]), 3), ValueError,
     "self-loop"),
    (lambda: varnel.find_cliques(TRIANGLE + [("a", "a")]), ValueError, "self-loop"),
    (lambda: varnel.communities(TRIANGLE + [(3, 3)]), ValueError, "self-loop"),
    (lambda: varnel.k_clique_communities(TRIANGLE, 1), ValueError, "k=1"),
    (lambda: varnel.k_clique_communities(TRIANGLE, -3, [[1, 2, 3]]), ValueError, "k=-3"),
    (lambda: varnel.k_clique_communities(TRIANGLE, 2.5), TypeError, "integer"),
    (lambda: varnel.communities(TRIANGLE, ks=[3, 2]), ValueError, "k=2"),
    (lambda: varnel.communities(TRIANGLE, ks=3), TypeError, "iterable"),
    (lambda: varnel.communities(TRIANGLE, ks=["3"]), TypeError, "integer"),
    (lambda: varnel.communities(TRIANGLE, time_limit=0), ValueError, "positive"),
    (lambda: varnel.communities(TRIANGLE, time_limit=float("nan")), ValueError, "positive"),
    (lambda: varnel.communities(TRIANGLE, time_limit="1"), TypeError, "number"),
    (lambda: varnel.communities(nx.Graph(TRIANGLE), directed=True), ValueError, "directed"),
    (lambda: varnel.find_cliques(TRIANGLE, 0), ValueError, "min_size"),
    (lambda: varnel.k_clique_communities(42, 3), TypeError, "networkx graph"),
    (lambda: varnel.k_clique_communities(None, 3), TypeError, "networkx graph"),
    (lambda: varnel.find_cliques([1, 2, 3]), TypeError, "pair"),
    (lambda: varnel.find_cliques([(1, 2, 3)]), TypeError, "pair"),
    (lambda: varnel.k_clique_communities([([1], 2)], 3), TypeError, "hashable"),
    (lambda: varnel.k_clique_communities(None, 3, [[1, {}, 2]]), TypeError, "hashable"),
    (lambda: varnel.k_clique_communities(None, 3, [[1, 2, 3], 4]), TypeError, "clique"),
    (lambda: varnel.k_clique_communities(nx.DiGraph(TRIANGLE), 3), TypeError, "directed"),
    (lambda: varnel.find_cliques(nx.DiGraph(TRIANGLE)), TypeError, "directed"),
])
def test_bad_input_raises(call, error, words):
    with pytest.raises(error, match=words):
        call()


def test_core_errors_become_python_exceptions():
    # A name given twice, which the package never passes, is refused by the core itself.
    with pytest.raises(varnel.Error, match="given twice") as raised:
        _core.Run([b"a", b"a"], [0, 1], False, None)
    assert isinstance(raised.value, RuntimeError)
    with pytest.raises(varnel.Error, match="position 5"):
        _core.Run([b"a", b"b"], [0, 5], False, None)
    with pytest.raises(varnel.Error, match="k = 3"):
        _core.Run([b"a", b"b"], [0, 1], False, None).communities(2, ["a", "b"])
