"""Benchmark peers of Varnel, run by bench/peers.sh under Debian's /usr/bin/python3.

    peers.py igraph-cliques LINKFILE OUTFILE
        python-igraph: the maximal cliques of at least 3 nodes, written to OUTFILE one a line.
    peers.py networkx-percolation LINKFILE
        networkx: the maximal cliques, then the k-clique communities for every k from the largest
        clique size down to 3, each k's communities materialised as a list.

Both read the link file as Varnel does ("source target [weight]" a line; empty lines and lines
starting with '#' skipped, self-links dropped) and take the links as undirected, duplicates
merged. Each prints "key value" lines: counts for a cross-check and the time spent inside Python
after reading (the whole-process time is measured outside).
"""

import sys
import time


def read_links(path):
    """Returns the links of a link file as (source, target) name pairs, self-links dropped."""
    links = []
    with open(path, "rb") as stream:
        for line in stream:
            if line.startswith(b"#"):
                continue
            fields = line.split()
            if len(fields) < 2 or fields[0] == fields[1]:
                continue
            links.append((fields[0].decode("utf-8", "surrogateescape"),
                          fields[1].decode("utf-8", "surrogateescape")))
    return links


def igraph_cliques(link_file, out_file):
    import igraph

    graph = igraph.Graph.TupleList(read_links(link_file), directed=False)
    graph.simplify()
    start = time.perf_counter()
    cliques = graph.maximal_cliques(min=3)
    enumeration = time.perf_counter() - start
    names = graph.vs["name"]
    with open(out_file, "w", encoding="utf-8", errors="surrogateescape") as out:
        for clique in cliques:
            out.write(" ".join(names[v] for v in clique))
            out.write("\n")
    total = time.perf_counter() - start
    print("cliques", len(cliques))
    print("largest", max((len(c) for c in cliques), default=0))
    print("enumeration", f"{enumeration:.3f}")
    print("inner", f"{total:.3f}")


def networkx_percolation(link_file):
    import networkx as nx

    graph = nx.Graph()
    graph.add_edges_from(read_links(link_file))
    start = time.perf_counter()
    cliques = list(nx.find_cliques(graph))
    enumeration = time.perf_counter() - start
    largest = max((len(c) for c in cliques), default=0)
    communities = 0
    for k in range(largest, 2, -1):
        found = list(nx.community.k_clique_communities(graph, k, cliques=cliques))
        communities += len(found)
    total = time.perf_counter() - start
    print("cliques", sum(1 for c in cliques if len(c) >= 3))
    print("largest", largest)
    print("communities", communities)
    print("enumeration", f"{enumeration:.3f}")
    print("inner", f"{total:.3f}")


def main(argv):
    if len(argv) == 4 and argv[1] == "igraph-cliques":
        igraph_cliques(argv[2], argv[3])
    elif len(argv) == 3 and argv[1] == "networkx-percolation":
        networkx_percolation(argv[2])
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main(sys.argv)
