"""Turns the graphs the package accepts into the input of the core.

The core numbers nodes by name, as the program numbers the names of a link file. A node is named
str(node) in UTF-8 (surrogates kept as the bytes they stand for, so that names read as bytes
keep their bytes); should two nodes share a spelling, every node is named by its position
instead. Positions number the nodes in order of first appearance among the links. Self-loops are
left out, as the program's link reader leaves out self-links and as networkx's clique functions
ignore them.
"""


class Links:
    """The links of a graph as the core takes them.

    nodes: the node objects by position; names: their names (bytes), parallel to nodes;
    ends: (source, target) positions, a link every two entries; directed: True for a directed
    networkx graph, False for an undirected one, None for pairs, which carry no kind of their own.
    """

    __slots__ = ("nodes", "names", "ends", "directed", "_graph", "_index")

    def __init__(self, nodes, names, ends, directed, graph, index):
        self.nodes = nodes
        self.names = names
        self.ends = ends
        self.directed = directed
        self._graph = graph
        self._index = index

    def alone(self):
        """The nodes of a networkx graph that are in no link, in the graph's order (none for
        pairs)."""
        if self._graph is None:
            return []
        linked = set(self.ends)
        return [node for node in self._graph if self._index.get(node) not in linked]


class LinkGraph:
    """A networkx graph whose links are read once, when first needed: the graph of the networkx
    backend (varnel.backend), which networkx may keep for further calls on the unchanged graph."""

    __networkx_backend__ = "varnel"
    __slots__ = ("graph", "_links")

    def __init__(self, graph):
        self.graph = graph
        self._links = None

    def __len__(self):
        return len(self.graph)

    def is_directed(self):
        return self.graph.is_directed()

    def is_multigraph(self):
        return self.graph.is_multigraph()

    def links(self):
        if self._links is None:
            self._links = read_links(self.graph)
        return self._links


def is_graph(G):
    """True for a networkx graph (or anything with its edges() and is_directed())."""
    return hasattr(G, "edges") and hasattr(G, "is_directed")


def read_links(G):
    """The Links of G, a networkx graph or an iterable of node pairs.

    TypeError for something else or a link that is not a pair; TypeError also for a node that is
    not hashable, while a node's own error in comparing itself with another passes on as it is.
    """
    if isinstance(G, LinkGraph):
        return G.links()
    graph = G if is_graph(G) else None
    if graph is not None:
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
        source = _position(u, index, nodes)
        target = _position(v, index, nodes)
        if source != target:
            ends += (source, target)
    return Links(nodes, _names(nodes), ends, directed, graph, index)


def node_positions(groups, least):
    """(nodes, groups as lists of positions) for the groups of at least `least` nodes (counted as
    given, repeats included, as networkx counts them) of an iterable of iterables of nodes."""
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
        # The look-up also compares the node with any whose hash it shares: a TypeError of that
        # comparison is the node's own and passes on.
        try:
            hash(node)
        except TypeError:
            raise TypeError(f"nodes must be hashable, and {node!r} is not") from None
        raise


def _names(nodes):
    names = [_encoded(str(node)) for node in nodes]
    if len(set(names)) != len(names):
        names = [str(position).encode() for position in range(len(nodes))]
    return names


def _encoded(name):
    try:
        return name.encode("utf-8", "surrogateescape")
    except UnicodeEncodeError:
        # A surrogate that stands for no byte ("\ud800"): its own three bytes, as UTF-8 would
        # give them. Should that spelling clash with another, numbering by position takes over.
        return name.encode("utf-8", "surrogatepass")
