"""Bad input raises the right Python exception with a message, and never reaches the core; the
errors networkx users catch come under networkx's classes as well."""

import subprocess
import sys

import networkx as nx
import pytest

import varnel
from varnel import _core

TRIANGLE = [(1, 2), (2, 3), (1, 3)]


class Clashing:
    """A hashable node whose hash every Clashing shares and whose comparison fails."""

    def __hash__(self):
        return 7

    def __eq__(self, other):
        raise TypeError("Clashing nodes cannot be compared")


@pytest.mark.parametrize("call, error, words", [
    (lambda: varnel.k_clique_communities(TRIANGLE, 1), nx.NetworkXError, "k=1"),
    (lambda: varnel.k_clique_communities(TRIANGLE, -3, [[1, 2, 3]]), nx.NetworkXError, "k=-3"),
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
    (lambda: varnel.find_cliques([(Clashing(), 1), (Clashing(), 2)]), TypeError, "compared"),
    (lambda: varnel.k_clique_communities(nx.DiGraph(TRIANGLE), 3), nx.NetworkXNotImplemented,
     "not implemented for directed"),
    (lambda: varnel.find_cliques(nx.DiGraph(TRIANGLE)), nx.NetworkXNotImplemented,
     "not implemented for directed"),
    (lambda: varnel.communities(nx.DiGraph(TRIANGLE)), nx.NetworkXNotImplemented,
     "directed=True"),
])
def test_bad_input_raises(call, error, words):
    with pytest.raises(error, match=words):
        call()


def test_errors_are_networkx_and_python_errors_at_once():
    assert issubclass(varnel.ParameterError, nx.NetworkXError)
    assert issubclass(varnel.ParameterError, ValueError)
    assert issubclass(varnel.DirectedGraphError, nx.NetworkXNotImplemented)
    assert issubclass(varnel.DirectedGraphError, TypeError)
    with pytest.raises(ValueError, match="k=1"):
        varnel.k_clique_communities(TRIANGLE, 1)
    with pytest.raises(TypeError, match="directed"):
        varnel.find_cliques(nx.DiGraph(TRIANGLE))


def test_without_networkx_the_errors_are_python_errors():
    # import varnel brings no networkx in; where networkx cannot be imported the errors still
    # come, as plain ValueError and TypeError.
    code = ("import sys\n"
            "import varnel\n"
            "assert 'networkx' not in sys.modules, 'import varnel imported networkx'\n"
            "sys.modules['networkx'] = None\n"
            "assert varnel.ParameterError.__bases__ == (ValueError,)\n"
            "assert varnel.DirectedGraphError.__bases__ == (TypeError,)\n"
            "try:\n"
            "    varnel.k_clique_communities([(1, 2)], 1)\n"
            "except ValueError as e:\n"
            "    print(type(e).__name__, e)\n")
    out = subprocess.run([sys.executable, "-c", code], check=True, capture_output=True,
                         text=True).stdout
    assert out == "ParameterError k=1, k must be greater than 1\n"


def test_core_errors_become_python_exceptions():
    # A name given twice, which the package never passes, is refused by the core itself.
    with pytest.raises(varnel.Error, match="given twice") as raised:
        _core.Run([b"a", b"a"], [0, 1], False, None)
    assert isinstance(raised.value, RuntimeError)
    with pytest.raises(varnel.Error, match="position 5"):
        _core.Run([b"a", b"b"], [0, 5], False, None)
    with pytest.raises(varnel.Error, match="k = 3"):
        _core.Run([b"a", b"b"], [0, 1], False, None).communities(2, ["a", "b"])
