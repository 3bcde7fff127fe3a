"""k-clique percolation communities of networks, computed by Varnel's own core.

Three functions:

k_clique_communities(G, k, cliques=None)
    networkx's k_clique_communities: yields the k-clique communities of G as frozensets of
    nodes (k >= 2; at k = 2 the connected parts of G that hold a link). With cliques given
    (any iterable of node lists, such as networkx.find_cliques(G)), G is not read and the
    communities are those of the cliques of at least k nodes.

communities(G, ks=None, time_limit=None, directed=False)
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
    of a directed graph or on (source, target) pairs.

find_cliques(G, min_size=3)
    The maximal cliques of at least min_size nodes as lists of nodes, in the program's order;
    with min_size 2 or 1 the cliques of two nodes follow, then (for a networkx graph) the
    isolated nodes, so that the list equals networkx's find_cliques filtered by size.

G is a networkx graph or any iterable of node pairs (u, v); nodes are any hashable objects.
Each node is named str(node), as a link file names it, and the program numbers nodes by these
names (when two nodes share a spelling, nodes are named by order of appearance instead): the
(source, target) pairs of a link file's lines, in file order, give the cliques and communities
of the program's run on that file, in its order. A self-loop, a k too small or a time limit
that is not positive raise ValueError; something that is not a graph, a link that is not a
pair, a node that is not hashable or a directed graph where an undirected one is needed raise
TypeError; an error of the core raises varnel.Error (a RuntimeError).

Example:
    >>> import networkx as nx, varnel
    >>> G = nx.karate_club_graph()
    >>> sorted(sorted(c) for c in varnel.k_clique_communities(G, 4))
    [[0, 1, 2, 3, 7, 13], [8, 30, 32, 33], [23, 29, 32, 33]]
"""

import numbers
import operator
from collections import namedtuple

from varnel import _core
from varnel._links import is_graph, node_positions, read_links

__all__ = ["k_clique_communities", "communities", "find_cliques", "RunResult", "Community",
           "Clique", "Error"]

Error = _core.Error
RunResult = namedtuple("RunResult", "communities cliques")
Community = namedtuple("Community", "nodes approximate cliques")
Clique = namedtuple("Clique", "nodes approximate")


def k_clique_communities(G, k, cliques=None):
    """Yields the k-clique communities of G as frozensets of nodes, as networkx does."""
    k = _integer(k, "k")
    if k < 2:
        raise ValueError(f"k={k}, k must be greater than 1")
    if cliques is not None:
        nodes, groups = node_positions(cliques, k)
        found = [[nodes[p] for p in community] for community in _core.percolate(groups, k)]
    else:
        links, run = _undirected_run(G)
        if k == 2:
            found = run.pair_communities(links.nodes)
        else:
            found = run.communities(k, links.nodes)[0] if k <= run.largest else []
    return (frozenset(community) for community in found)


def communities(G, ks=None, time_limit=None, directed=False):
    """The program's run on G: RunResult(communities, cliques); see the module's help."""
    if ks is not None:
        try:
            ks = list(ks)
        except TypeError:
            raise TypeError(f"ks must be an iterable of integers, not {type(ks).__name__}") \
                from None
        ks = sorted({_integer(k, "each k of ks") for k in ks})
        if ks and ks[0] < 3:
            raise ValueError(f"k={ks[0]}: a run's communities start at k = 3 "
                             "(k_clique_communities(G, 2) gives those at k = 2)")
    if time_limit is not None:
        if not isinstance(time_limit, numbers.Real):
            raise TypeError(f"time_limit must be a number, not {type(time_limit).__name__}")
        time_limit = float(time_limit)
        if not time_limit > 0:
            raise ValueError(f"time_limit={time_limit}: it must be a positive number of seconds")
    links = read_links(G)
    if directed and links.directed is False:
        raise ValueError("directed=True needs a directed graph or (source, target) pairs")
    run = _core.Run(links.names, links.ends, bool(directed), time_limit)
    if ks is None:
        ks = range(3, run.largest + 1)
    by_k = {}
    for k in ks:
        if k > run.largest:
            by_k[k] = []
            continue
        found, members, n_exact = run.communities(k, links.nodes)
        by_k[k] = [Community(nodes, i >= n_exact, taken)
                   for i, (nodes, taken) in enumerate(zip(found, members))]
    cliques = [Clique(nodes, i >= run.n_exact) for i, nodes in enumerate(run.cliques(links.nodes))]
    return RunResult(by_k, cliques)


def find_cliques(G, min_size=3):
    """The maximal cliques of at least min_size nodes, as lists, in the program's order."""
    min_size = _integer(min_size, "min_size")
    if min_size < 1:
        raise ValueError(f"min_size={min_size}: it must be 1 or more")
    links, run = _undirected_run(G)
    found = [list(c) for c in run.cliques(links.nodes) if len(c) >= min_size]
    if min_size <= 2:
        found += [list(c) for c in run.pair_cliques(links.nodes)]
    if min_size <= 1 and is_graph(G):
        linked = set(links.nodes)
        found += [[node] for node in G if node not in linked]
    return found


def _undirected_run(G):
    links = read_links(G)
    if links.directed:
        raise TypeError("not implemented for directed graphs (networkx refuses them as well); "
                        "communities(G, directed=True) runs the directed search")
    return links, _core.Run(links.names, links.ends, False, None)


def _integer(value, what):
    try:
        return operator.index(value)
    except TypeError:
        raise TypeError(f"{what} must be an integer, not {type(value).__name__}") from None
