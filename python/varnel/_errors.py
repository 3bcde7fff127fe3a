"""The errors varnel raises under networkx's names as well, so that code written against either
package catches them.

ParameterError, for an argument out of range (k < 2, among others), is a ValueError and, when
networkx can be imported, a networkx.NetworkXError; DirectedGraphError, for a directed graph where
an undirected one is needed, is a TypeError and a networkx.NetworkXNotImplemented. networkx is
imported only when one of them is first needed, never by `import varnel`.
"""

import threading

_BASES = {
    "ParameterError": ("NetworkXError", ValueError),
    "DirectedGraphError": ("NetworkXNotImplemented", TypeError),
}
_DOCS = {
    "ParameterError": "An argument out of range, such as k < 2.",
    "DirectedGraphError": "A directed graph where only an undirected one is taken.",
}
_made = {}
_lock = threading.Lock()


def error_class(name):
    """The class ParameterError or DirectedGraphError, made on first use."""
    with _lock:
        if name not in _made:
            networkx_name, python_base = _BASES[name]
            try:
                import networkx
                bases = (getattr(networkx, networkx_name), python_base)
            except ImportError:
                bases = (python_base,)
            _made[name] = type(name, bases, {"__module__": "varnel", "__doc__": _DOCS[name]})
        return _made[name]


def parameter_error(message):
    return error_class("ParameterError")(message)


def directed_graph_error(message):
    return error_class("DirectedGraphError")(message)
