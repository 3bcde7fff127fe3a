"""A pytest plugin (-p networkx_suite) that runs networkx's own tests on varnel's backend.

With networkx 3 the backend must be preferred through networkx's configuration
(NETWORKX_BACKEND_PRIORITY=varnel), and networkx's own k_clique_communities and find_cliques
fail the test that reaches them. networkx 2 dispatches nothing: the backend's functions, which
keep networkx's signatures, take the place of networkx's before the test files are imported.
"""

import functools

import networkx as nx

from varnel import backend

NAMES = ("k_clique_communities", "find_cliques")

if hasattr(nx.utils, "backends"):
    assert nx.config.backend_priority.algos[:1] == ["varnel"], "varnel is not preferred"
    for name in NAMES:
        dispatcher = nx.utils.backends._registered_algorithms[name]
        while not isinstance(dispatcher, nx.utils.backends._dispatchable):
            dispatcher = dispatcher.__wrapped__

        @functools.wraps(dispatcher.orig_func)
        def tripwire(*args, _name=name, **kwargs):
            raise AssertionError(f"networkx's own {_name} ran while varnel was preferred")

        dispatcher.orig_func = tripwire
else:
    import networkx.algorithms.clique
    import networkx.algorithms.community.kclique

    for module in (nx, nx.algorithms, nx.algorithms.clique):
        module.find_cliques = backend.find_cliques
    for module in (nx.community, nx.algorithms.community, nx.algorithms.community.kclique):
        module.k_clique_communities = backend.k_clique_communities
