"""varnel.communities, the program's whole run: its communities and cliques against networkx's,
its directed search against a brute-force one, and the marks of a time-limited run."""

import random

import networkx as nx
import pytest

import varnel
from networks import (directed_cliques, largest_clique, random_graphs, read_link_file,
                      reference_cliques, reference_communities)


def check_structure(run, k):
    """Every community is the union of its cliques; every clique of k or more nodes is in
    exactly one community; approximate communities, holding an approximate clique, come last."""
    found = run.communities[k]
    taken = sorted(j for c in found for j in c.cliques)
    assert taken == [j for j, c in enumerate(run.cliques) if len(c.nodes) >= k]
    marks = [c.approximate for c in found]
    assert marks == sorted(marks)
    for community in found:
        members = [run.cliques[j] for j in community.cliques]
        assert set(community.nodes) == set().union(*(c.nodes for c in members))
        assert len(community.nodes) == len(set(community.nodes))
        assert community.approximate == any(c.approximate for c in members)


@pytest.mark.parametrize("graph", list(random_graphs()) + [read_link_file("lesmis.links")])
def test_every_k_equals_networkx(graph):
    run = varnel.communities(graph)
    assert list(run.communities) == list(range(3, largest_clique(graph) + 1))
    assert {frozenset(c.nodes) for c in run.cliques} == reference_cliques(graph, 3)
    assert len(run.cliques) == len(reference_cliques(graph, 3))
    for k, found in run.communities.items():
        assert {frozenset(c.nodes) for c in found} == reference_communities(graph, k), f"k={k}"
        assert not any(c.approximate for c in found)
        check_structure(run, k)


def test_chosen_ks():
    graph = read_link_file("grqc.links")
    run = varnel.communities(graph, ks=[4, 3, 4, 60, 2**40])
    assert list(run.communities) == [3, 4, 60, 2**40]
    assert run.communities[60] == run.communities[2**40] == []
    assert list(varnel.k_clique_communities(graph, 2**40)) == []
    for k in (3, 4):
        assert {frozenset(c.nodes) for c in run.communities[k]} == reference_communities(graph, k)


@pytest.mark.parametrize("seed", range(4))
def test_directed_run_equals_brute_force(seed):
    rng = random.Random(seed)
    graph = nx.DiGraph()
    for u in range(9):
        for v in range(9):
            if u != v and rng.random() < 0.45:
                graph.add_edge(u, v)
    run = varnel.communities(graph, directed=True)
    cliques = directed_cliques(graph)
    assert {frozenset(c.nodes) for c in run.cliques} == cliques
    assert list(run.communities) == list(range(3, max(map(len, cliques), default=2) + 1))
    for k, found in run.communities.items():
        expected = reference_communities(None, k, [list(c) for c in cliques])
        assert {frozenset(c.nodes) for c in found} == expected, f"k={k}"
        check_structure(run, k)


def test_time_limited_run_marks_its_approximations():
    graph = read_link_file("grqc.links")
    run = varnel.communities(graph, time_limit=1e-9)
    marks = [c.approximate for c in run.cliques]
    assert any(marks) and marks == sorted(marks)
    exact = {frozenset(c.nodes) for c in run.cliques if not c.approximate}
    assert exact <= reference_cliques(graph, 3)
    assert any(c.approximate for found in run.communities.values() for c in found)
    for k in run.communities:
        check_structure(run, k)


def test_threads_change_nothing():
    graph = read_link_file("grqc.links")
    one = varnel.communities(graph, threads=1)
    for threads in (3, 8):
        assert varnel.communities(graph, threads=threads) == one
    assert varnel.communities(graph, ks=[5, 3], threads=8).communities == {
        k: one.communities[k] for k in (3, 5)}
    with pytest.raises(ValueError):
        varnel.communities(graph, threads=0)
