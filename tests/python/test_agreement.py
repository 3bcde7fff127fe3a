"""varnel.k_clique_communities and varnel.find_cliques against networkx's own answers."""

import itertools

import networkx as nx
import pytest

import varnel
from networks import (largest_clique, random_graphs, read_link_file, reference_cliques,
                      reference_communities)

GRAPHS = list(random_graphs())


@pytest.mark.parametrize("graph", GRAPHS)
def test_communities_equal_networkx_at_every_k(graph):
    for k in range(2, largest_clique(graph) + 2):
        expected = reference_communities(graph, k)
        assert set(varnel.k_clique_communities(graph, k)) == expected, f"k={k}"
        # The same links as plain pairs, in an order of their own.
        pairs = sorted(graph.edges(), key=repr, reverse=True)
        assert set(varnel.k_clique_communities(pairs, k)) == expected, f"pairs, k={k}"


@pytest.mark.parametrize("name", ["lesmis.links", "grqc.links"])
def test_real_networks_equal_networkx(name):
    graph = read_link_file(name)
    cliques = list(nx.find_cliques(graph))
    for k in range(2, largest_clique(graph) + 2):
        found = list(varnel.k_clique_communities(graph, k))
        assert len(found) == len(set(found))
        assert set(found) == reference_communities(graph, k, cliques), f"k={k}"


@pytest.mark.parametrize("graph", GRAPHS)
def test_given_cliques_are_percolated_as_networkx_does(graph):
    # Not only maximal cliques: every triangle as well, and one clique twice; cliques with a
    # repeated node, which networkx counts as they come (a pair given as [u, u, v] counts 3).
    triangles = [list(t) for t in itertools.combinations(graph, 3)
                 if all(graph.has_edge(u, v) for u, v in itertools.combinations(t, 2))]
    cliques = list(nx.find_cliques(graph))
    repeated = [c[:1] + c for c in cliques] + [[u, u, v] for u, v in list(graph.edges())[::3]]
    cliques += triangles + triangles[:1] + repeated
    for k in range(2, 6):
        expected = reference_communities(graph, k, cliques)
        # networkx does not read the graph when the cliques are given; neither does varnel.
        assert set(varnel.k_clique_communities(None, k, cliques)) == expected, f"k={k}"
    assert list(varnel.k_clique_communities(None, 2**40, cliques)) == []


@pytest.mark.parametrize("graph", GRAPHS + [read_link_file("grqc.links")])
def test_find_cliques_equal_networkx(graph):
    graph = graph.copy()
    graph.add_nodes_from(["alone", ("also", "alone")])
    for min_size in range(1, 5):
        found = varnel.find_cliques(graph, min_size)
        assert all(isinstance(c, list) for c in found)
        assert len(found) == len({frozenset(c) for c in found})
        assert {frozenset(c) for c in found} == reference_cliques(graph, min_size), min_size
