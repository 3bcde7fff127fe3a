"""Turns the graphs the package accepts into the input of the core.

The core numbers nodes by name, as the program numbers the names of a link file. A node is named
str(node) (UTF-8, with surrogateescape for names read as bytes); should two nodes share a
spelling, every node is named by its position instead. Positions number the nodes in order of
first appearance among the links.
"""


class Links:
    """The links of a graph as the core takes them.

    nodes: the node objects by position; names: their names (bytes), parallel to nodes;
    ends: (source, target) positions, a link every two entries; directed: True for a directed
    networkx graph, False for an undirected one, None for pairs, which carry no kind of their own.
    """

    __slots__ = ("nodes", "names", "ends", "directed")

    def __init__(self, nodes, names, ends, directed):
        self.nodes = nodes
        self.names = names
        self.ends = ends
        self.directed = directed


def is_graph(G):
    """True for a networkx graph (or anything with its edges() and is_directed())."""
    return hasattr(G, "edges") and hasattr(G, "is_directed")


def read_links(G):
    """The Links of G, a networkx graph or an iterable of node pairs.

    TypeError for something else, a link that is not a pair or a node that is not hashable;
    ValueError for a self-loop.
    """
    if is_graph(G):
        directed = bool(G.is_directed())
        pairs = G.edges()
    else:
        directed = None
        pairs = G
    try:
        iterator = iter(pairs)
    except TypeError:
        raise TypeError(
            f"G must be a networkx graph or an iterable of node pairs, not {type(G).__name__}"
        ) from None
    index = {}
    nodes = []
    ends = []
    for pair in iterator:
        try:
            u, v = pair
        except (TypeError, ValueError):
            raise TypeError(f"each link must be a pair of nodes (u, v), not {pair!r}") from None
        ends.append(_position(u, index, nodes))
        ends.append(_position(v, index, nodes))
        if ends[-1] == ends[-2]:
            raise ValueError(
                f"self-loop at node {u!r}: k-clique percolation takes no self-loops; remove them "
                "first (G.remove_edges_from(networkx.selfloop_edges(G)))"
            )
    return Links(nodes, _names(nodes), ends, directed)


def node_positions(groups, least):
    """(nodes, groups as lists of positions) for the groups of at least `least` nodes (counted as
    given, as networkx counts them) of an iterable of iterables of nodes."""
    index = {}
    nodes = []
    positions = []
    try:
        iterator = iter(groups)
    except TypeError:
        raise TypeError(f"cliques must be an iterable of node lists, not {type(groups).__name__}") \
            from None
    for group in iterator:
        try:
            members = list(group)
        except TypeError:
            raise TypeError(f"each clique must be an iterable of nodes, not {group!r}") from None
        if len(members) >= least:
            positions.append([_position(node, index, nodes) for node in members])
    return nodes, positions


def _position(node, index, nodes):
    try:
        return index[node]
    except KeyError:
        index[node] = len(nodes)
        nodes.append(node)
        return len(nodes) - 1
    except TypeError:
        raise TypeError(f"nodes must be hashable, and {node!r} is not") from None


def _names(nodes):
    names = [str(node).encode("utf-8", "surrogateescape") for node in nodes]
    if len(set(names)) != len(names):
        names = [str(position).encode() for position in range(len(nodes))]
    return names
