"""Graphs for the tests of the module varnel, and the reference answers from networkx."""

import itertools
import pathlib

import networkx as nx
from networkx.algorithms.community import k_clique_communities as nx_communities

# The real networks the tests compare on, kept in the repository.
DATA = pathlib.Path(__file__).resolve().parents[1] / "data"


def read_link_file(name):
    """The network of a link file as the program reads it: self-links and '#' lines left out."""
    path = DATA / name
    assert path.is_file(), f"{path} is missing"
    graph = nx.Graph()
    with open(path, "rb") as lines:
        for line in lines:
            fields = line.split()
            if line.startswith(b"#") or len(fields) < 2 or fields[0] == fields[1]:
                continue
            graph.add_edge(fields[0].decode(), fields[1].decode())
    return graph


def random_graphs():
    """Random graphs of several densities, nodes relabelled to mixed kinds of hashable, some with
    self-loops (which networkx's clique functions ignore)."""
    kinds = [lambda i: i, str, lambda i: (i, "x"), lambda i: i if i % 2 else str(i)]
    for seed, (n, p) in enumerate([(30, 0.2), (30, 0.35), (25, 0.5), (18, 0.7), (40, 0.15)]):
        graph = nx.gnp_random_graph(n, p, seed=seed)
        graph = nx.relabel_nodes(graph, {v: kinds[seed % len(kinds)](v) for v in graph})
        if seed % 2:
            graph.add_edges_from((v, v) for v in list(graph)[::7])
        yield graph
    # 1 and "1" both: two nodes whose names coincide.
    yield nx.Graph([(1, "1"), (1, 2), ("1", 2), (2, "2"), ("2", 1), ("2", "1"), (3, "3")])
    # Names UTF-8 cannot carry: a lone surrogate, one that stands for a byte, and one whose
    # bytes spell the first; a node with a self-loop alone.
    yield nx.Graph([("\ud800", "\udc80"), ("\udc80", "\udced\udca0\udc80"),
                    ("\ud800", "\udced\udca0\udc80"), ("\ud800", "a"), ("a", "b"), ("b", "b")])


def largest_clique(graph):
    return max((len(c) for c in nx.find_cliques(graph)), default=0)


def reference_communities(graph, k, cliques=None):
    # networkx 3 wants a graph even where it reads only the cliques.
    return set(nx_communities(nx.Graph() if graph is None else graph, k, cliques))


def reference_cliques(graph, min_size):
    return {frozenset(c) for c in nx.find_cliques(graph) if len(c) >= min_size}


def directed_cliques(digraph):
    """Maximal node sets of three or more that can be ordered so that every earlier member links
    to every later one, by trying every node subset (small graphs only)."""

    def ordered(nodes):
        rest = set(nodes)
        while rest:
            first = [u for u in rest if all(digraph.has_edge(u, w) for w in rest if w != u)]
            if not first:
                return False
            rest.remove(first[0])
        return True

    found = [frozenset(s) for size in range(3, len(digraph) + 1)
             for s in itertools.combinations(digraph, size) if ordered(s)]
    return {c for c in found if not any(c < other for other in found)}
