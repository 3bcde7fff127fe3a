"""Times the Python module varnel against networkx on hepph: the k-clique communities at every k.

Usage: python_hepph.py [LINKFILE]   (default: ../shared/data/hepph.links beside the repository)

The link file is read once into a networkx graph (self-links left out, as the program reads
them); reading is not timed. Then, each time from that graph, communities materialised:
  networkx   find_cliques once, then k_clique_communities(G, k, cliques) for every k from 3 to
             the largest clique size: networkx's way to every k;
  varnel     varnel.communities(G): every k in one call, the conversion of the graph included
             (median of RUNS runs, default 3);
  per k      varnel.find_cliques(G) once, then varnel.k_clique_communities(G, k, cliques) for
             every k, networkx's calls one for one.
The communities of every k are compared between the three; a difference fails the script.
"""

import os
import pathlib
import statistics
import sys
import time

import networkx as nx
from networkx.algorithms.community import k_clique_communities

import varnel


def read_graph(path):
    graph = nx.Graph()
    with open(path, "rb") as lines:
        for line in lines:
            fields = line.split()
            if line.startswith(b"#") or len(fields) < 2 or fields[0] == fields[1]:
                continue
            graph.add_edge(fields[0].decode(), fields[1].decode())
    return graph


def timed(work):
    start = time.perf_counter()
    result = work()
    return time.perf_counter() - start, result


def networkx_all_k(graph):
    cliques = list(nx.find_cliques(graph))
    largest = max((len(c) for c in cliques), default=0)
    return {k: set(k_clique_communities(graph, k, cliques)) for k in range(3, largest + 1)}


def varnel_all_k(graph):
    run = varnel.communities(graph)
    return {k: {frozenset(c.nodes) for c in found} for k, found in run.communities.items()}


def varnel_per_k(graph):
    cliques = varnel.find_cliques(graph)
    largest = max((len(c) for c in cliques), default=0)
    return {k: set(varnel.k_clique_communities(graph, k, cliques)) for k in range(3, largest + 1)}


def main():
    default = pathlib.Path(__file__).resolve().parents[1].parent / "shared/data/hepph.links"
    path = sys.argv[1] if len(sys.argv) > 1 else default
    graph = read_graph(path)
    print(f"{path}: {graph.number_of_nodes()} nodes, {graph.number_of_edges()} links; "
          f"networkx {nx.__version__}, Python {sys.version.split()[0]}", flush=True)

    runs = [timed(lambda: varnel_all_k(graph)) for _ in range(int(os.environ.get("RUNS", 3)))]
    varnel_time = statistics.median(t for t, _ in runs)
    found = runs[0][1]
    per_k_time, per_k = timed(lambda: varnel_per_k(graph))
    networkx_time, expected = timed(lambda: networkx_all_k(graph))

    count = sum(len(c) for c in expected.values())
    print(f"k from 3 to {max(expected, default=2)}, {count} communities in all")
    print(f"networkx                       {networkx_time:9.2f} s")
    print(f"varnel.communities             {varnel_time:9.2f} s   "
          f"{networkx_time / varnel_time:7.1f}x faster")
    print(f"varnel.k_clique_communities    {per_k_time:9.2f} s   "
          f"{networkx_time / per_k_time:7.1f}x faster (per k, cliques given)")
    if found != expected or per_k != expected:
        print("MISMATCH: varnel's communities differ from networkx's")
        return 1
    print("same communities at every k")
    return 0


if __name__ == "__main__":
    sys.exit(main())
