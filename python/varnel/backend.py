"""varnel as a networkx backend: networkx 3 dispatches k_clique_communities and find_cliques
here when asked (backend="varnel", NETWORKX_BACKEND_PRIORITY=varnel or
nx.config.backend_priority.algos = ["varnel"]). The entry points of the groups networkx.backends
and networkx.backend_info name BackendInterface and info.

Both functions keep networkx's signatures and contracts: self-loops ignored, k < 2 raising
networkx.NetworkXError, a directed graph raising networkx.NetworkXNotImplemented, find_cliques'
nodes= and its ValueError for nodes that form no clique. They take networkx graphs as they are,
too, so that networkx 2, which dispatches nothing, can be given them in place of its own. A
networkx graph is converted into a LinkGraph, whose links are read once, on first use.
"""

import varnel
from varnel._links import LinkGraph, read_links

_FUNCTIONS = ("k_clique_communities", "find_cliques")


def k_clique_communities(G, k, cliques=None):
    """networkx.community.k_clique_communities, by Varnel's core."""
    return varnel.k_clique_communities(G, k, cliques)


def find_cliques(G, nodes=None):
    """networkx.find_cliques, by Varnel's core: every maximal clique (single nodes and pairs
    included), or those holding every node of `nodes`, as lists that start with those nodes."""
    links = varnel.undirected(read_links(G))
    if len(links.nodes) == 0 and not links.alone():
        return iter(())
    cliques = varnel.maximal_cliques(links, 1)
    if nodes is None:
        return iter(cliques)
    required = list(nodes)
    wanted = set(required)
    held = [required + [n for n in c if n not in wanted] for c in cliques if wanted.issubset(c)]
    if len(wanted) != len(required) or not held:
        raise ValueError(f"The given `nodes` {nodes} do not form a clique")
    return iter(held)


class BackendInterface:
    """What networkx looks up in a backend."""

    k_clique_communities = staticmethod(k_clique_communities)
    find_cliques = staticmethod(find_cliques)

    @staticmethod
    def convert_from_nx(graph, *args, **kwargs):
        return LinkGraph(graph)

    @staticmethod
    def convert_to_nx(obj, *, name=None):
        return obj.graph if isinstance(obj, LinkGraph) else obj

    @staticmethod
    def can_run(name, args, kwargs):
        return name in _FUNCTIONS


def info():
    """The backend's description for networkx (entry point group networkx.backend_info)."""
    note = ("Runs Varnel's compiled core, without the interpreter lock and stopping on Ctrl-C; "
            "self-loops are ignored.")
    return {
        "backend_name": "varnel",
        "project": "Varnel",
        "package": "varnel",
        "short_summary": "k-clique percolation communities and maximal cliques by Varnel's core.",
        "functions": {name: {"additional_docs": note} for name in _FUNCTIONS},
    }
