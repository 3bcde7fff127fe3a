"""k-clique percolation communities of networks, computed by Varnel's own core.

Three functions:

k_clique_communities(G, k, cliques=None)
    networkx's k_clique_communities: yields the k-clique communities of G as frozensets of
    nodes (k >= 2; at k = 2 the connected parts of G that hold a link). With cliques given
    (any iterable of node lists, such as networkx.find_cliques(G)), G is not read and the
    communities are those of the cliques of at least k nodes, counted as given (repeated nodes
    included), as networkx counts them.

communities(G, ks=None, time_limit=None, directed=False, threads=None)
    The program's whole run in one call, without files: the maximal cliques, then the
    communities at every k of ks (default: 3 up to the largest clique size). Returns a
    RunResult(communities, cliques):
      communities  dict k -> list of Community(nodes, approximate, cliques), k ascending,
                   each list in the program's numbering (community i is the program's number
                   i): exact communities first, then the approximate ones;
      cliques      list of Clique(nodes, approximate) in the program's order, exact ones first.
    Community.nodes and Clique.nodes are tuples in the program's node order;
    Community.cliques holds the positions in `cliques` of the cliques the community took.
    time_limit (seconds per node, the program's -t) makes the search time-limited: nodes
    that stay too slow are covered by approximate cliques, and the communities holding one
    are approximate. directed=True runs the directed search (the program's -D) on the links
    of a directed graph or on (source, target) pairs. threads (default: the processors the
    process may run on, as the program) is how many k are worked on at once; the result is the
    same for any number.

find_cliques(G, min_size=3)
    The maximal cliques of at least min_size nodes as lists of nodes, in the program's order;
    with min_size 2 or 1 the cliques of two nodes follow, then (for a networkx graph) the
    isolated nodes, so that the list equals networkx's find_cliques filtered by size.

G is a networkx graph or any iterable of node pairs (u, v); nodes are any hashable objects.
Self-loops are ignored, as networkx's clique functions ignore them and the program drops
self-links. Each node is named str(node), as a link file names it, and the program numbers nodes
by these names (when two nodes share a spelling, nodes are named by order of appearance
instead): the (source, target) pairs of a link file's lines, in file order, give the cliques and
communities of the program's run on that file, in its order.

Errors: a k too small or another argument out of range raises varnel.ParameterError, a
ValueError that is also a networkx.NetworkXError when networkx is installed; a directed graph
where an undirected one is needed (communities() without directed=True included) raises
varnel.DirectedGraphError, a TypeError that is also a networkx.NetworkXNotImplemented; something
that is not a graph, a link that is not a pair or a node that is not hashable raises TypeError;
an error of the core raises varnel.Error (a RuntimeError). Ctrl-C raises KeyboardInterrupt
during any call as soon as the core reaches its next check (before each node of the clique
search and of the approximation, at every clock check of a time-limited search, before each
community the percolation of a k opens), and the core frees what it held. The core runs without
the interpreter lock, so other threads go on meanwhile.

With networkx 3 installed, varnel is also a networkx backend (varnel.backend):
nx.community.k_clique_communities(G, 4, backend="varnel") and nx.find_cliques(G,
backend="varnel") run Varnel's core, and NETWORKX_BACKEND_PRIORITY=varnel (or
nx.config.backend_priority.algos = ["varnel"]) sends every call of the two to it.

Example:
    >>> import networkx as nx, varnel
    >>> G = nx.karate_club_graph()
    >>> sorted(sorted(c) for c in varnel.k_clique_communities(G, 4))
    [[0, 1, 2, 3, 7, 13], [8, 30, 32, 33], [23, 29, 32, 33]]
"""

import contextlib
import gc
import numbers
import operator
from collections import namedtuple

from varnel import _core
from varnel._errors import directed_graph_error, error_class, parameter_error
from varnel._links import node_positions, read_links

__all__ = ["k_clique_communities", "communities", "find_cliques", "RunResult", "Community",
           "Clique", "Error", "ParameterError", "DirectedGraphError"]
__version__ = _core.version

Error = _core.Error
RunResult = namedtuple("RunResult", "communities cliques")
Community = namedtuple("Community", "nodes approximate cliques")
Clique = namedtuple("Clique", "nodes approximate")


def __getattr__(name):
    # The two error classes are made on first use, which imports networkx when it is there.
    if name in ("ParameterError", "DirectedGraphError"):
        return error_class(name)
    raise AttributeError(f"module 'varnel' has no attribute {name!r}")


def k_clique_communities(G, k, cliques=None):
    """Yields the k-clique communities of G as frozensets of nodes, as networkx does."""
    k = checked_k(k)
    if cliques is not None:
        found = given_clique_communities(cliques, k)
    else:
        found = graph_communities(undirected(read_links(G)), k)
    return (frozenset(community) for community in found)


def communities(G, ks=None, time_limit=None, directed=False, threads=None):
    """The program's run on G: RunResult(communities, cliques); see the module's help."""
    if ks is not None:
        try:
            ks = list(ks)
        except TypeError:
            raise TypeError(f"ks must be an iterable of integers, not {type(ks).__name__}") \
                from None
        ks = sorted({_integer(k, "each k of ks") for k in ks})
        if ks and ks[0] < 3:
            raise parameter_error(f"k={ks[0]}: a run's communities start at k = 3 "
                                  "(k_clique_communities(G, 2) gives those at k = 2)")
    if time_limit is not None:
        if not isinstance(time_limit, numbers.Real):
            raise TypeError(f"time_limit must be a number, not {type(time_limit).__name__}")
        time_limit = float(time_limit)
        if not time_limit > 0:
            raise parameter_error(f"time_limit={time_limit}: it must be a positive number of "
                                  "seconds")
    if threads is None:
        threads = _core.usable_processors
    threads = _integer(threads, "threads")
    if threads < 1:
        raise parameter_error(f"threads={threads}: it must be 1 or more")
    links = read_links(G)
    if directed and links.directed is False:
        raise parameter_error("directed=True needs a directed graph or (source, target) pairs")
    if not directed and links.directed:
        raise directed_graph_error("not implemented for directed graphs unless directed=True, "
                                   "which runs the directed search")
    run = _core.Run(links.names, links.ends, bool(directed), time_limit, threads)
    if ks is None:
        ks = range(3, run.largest + 1)
    by_k = {}
    with _collector_paused():
        searched = [k for k in ks if k <= run.largest]
        at = dict(zip(searched, run.communities_at(searched, links.nodes, threads)))
        for k in ks:
            if k > run.largest:
                by_k[k] = []
                continue
            found, members, n_exact = at.pop(k)
            by_k[k] = [Community(nodes, i >= n_exact, taken)
                       for i, (nodes, taken) in enumerate(zip(found, members))]
        cliques = [Clique(nodes, i >= run.n_exact)
                   for i, nodes in enumerate(run.cliques(links.nodes))]
    return RunResult(by_k, cliques)


def find_cliques(G, min_size=3):
    """The maximal cliques of at least min_size nodes, as lists, in the program's order."""
    min_size = _integer(min_size, "min_size")
    if min_size < 1:
        raise parameter_error(f"min_size={min_size}: it must be 1 or more")
    return maximal_cliques(undirected(read_links(G)), min_size)


# The steps of the functions above, which the networkx backend (varnel.backend) shares.

def checked_k(k):
    k = _integer(k, "k")
    if k < 2:
        raise parameter_error(f"k={k}, k must be greater than 1")
    return k


def undirected(links):
    """links, unless they are those of a directed graph."""
    if links.directed:
        raise directed_graph_error(
            "not implemented for directed graphs (networkx refuses them as well); "
            "communities(G, directed=True) runs the directed search")
    return links


def graph_communities(links, k):
    """The k-clique communities of undirected links as lists of nodes."""
    run = _core.Run(links.names, links.ends, False, None, _core.usable_processors)
    if k == 2:
        return run.pair_communities(links.nodes)
    return run.communities(k, links.nodes)[0] if k <= run.largest else []


def given_clique_communities(cliques, k):
    """The k-clique communities of given cliques, each counted by its length as given, as
    networkx counts it."""
    nodes, groups = node_positions(cliques, k)
    full = [group for group in groups if len(set(group)) >= k]
    found = [[nodes[p] for p in c] for c in _core.percolate(full, k)] if full else []
    # A clique given with a repeated node may hold fewer than k distinct ones. It then shares
    # k - 1 nodes with no other clique unless it has k - 1 and lies inside a clique of k or more,
    # whose community already holds it; otherwise it is a community of its own.
    short = {frozenset(group) for group in groups if len(set(group)) < k}
    if short:
        holders = {}
        for group in full:
            members = frozenset(group)
            for p in members:
                holders.setdefault(p, []).append(members)
        for group in short:
            inside = len(group) == k - 1 and any(
                group <= other for other in holders.get(next(iter(group)), ()))
            if not inside:
                found.append([nodes[p] for p in group])
    return found


def maximal_cliques(links, min_size):
    """The maximal cliques of undirected links of at least min_size nodes, as lists: those of
    three or more in the program's order, then those of two, then the nodes in no link."""
    run = _core.Run(links.names, links.ends, False, None, _core.usable_processors)
    with _collector_paused():
        found = run.clique_lists(links.nodes, min_size)
        if min_size <= 2:
            found += run.pair_cliques(links.nodes)
        if min_size <= 1:
            found += [[node] for node in links.alone()]
    return found


@contextlib.contextmanager
def _collector_paused():
    """Millions of small lists and tuples set off the cycle collector again and again, each time
    over all built so far, holding the interpreter lock for tenths of a second; results make no
    cycles, so the collector waits until they are built."""
    enabled = gc.isenabled()
    gc.disable()
    try:
        yield
    finally:
        if enabled:
            gc.enable()


def _integer(value, what):
    try:
        return operator.index(value)
    except TypeError:
        raise TypeError(f"{what} must be an integer, not {type(value).__name__}") from None
