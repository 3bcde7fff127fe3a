"""Measures what the Python module promises a caller: KeyboardInterrupt soon after Ctrl-C, other
threads running during a call, and the backend's speed against networkx's own functions.

Usage: python_interrupt.py [DATA_DIR]   (default: ../shared/data beside the repository)

  interrupt  SIGINT at several points of find_cliques on wikivote and of communities(...,
             time_limit=0.1) on facebook, each in a child process: the seconds from the signal
             to the KeyboardInterrupt, and the processor seconds the child used in the 0.5 s
             after it (the core must have stopped);
  ticker     a thread sleeping 50 ms at a time during find_cliques on wikivote and during the
             communities at k = 3 to 6 of wikivote: the call's seconds and the longest wait of
             a tick;
  speed      networkx's find_cliques on wikivote and k_clique_communities at k = 3 and 5 on
             hepph, each once with networkx and once with backend="varnel" (networkx 3), or
             with varnel.backend's functions (networkx 2), the conversion included.
"""

import os
import pathlib
import signal
import subprocess
import sys
import threading
import time

import networkx as nx

import varnel
from varnel import backend

DATA = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                    pathlib.Path(__file__).resolve().parents[2] / "shared" / "data")

CHILD = """
import sys, time
sys.path[:0] = [{bench!r}]
import varnel
from python_interrupt import read_pairs
pairs = read_pairs({path!r})
print("ready", flush=True)
try:
    {call}
    print("finished", time.monotonic(), flush=True)
except KeyboardInterrupt:
    print("interrupted", time.monotonic(), flush=True)
    start = time.process_time()
    time.sleep(0.5)
    print("processor", time.process_time() - start, flush=True)
"""


def read_pairs(path):
    pairs = []
    with open(path, "rb") as lines:
        for line in lines:
            fields = line.split()
            if not line.startswith(b"#") and len(fields) >= 2 and fields[0] != fields[1]:
                pairs.append((fields[0].decode(), fields[1].decode()))
    return pairs


def interrupt(network, call, delay):
    code = CHILD.format(bench=str(pathlib.Path(__file__).parent), path=str(DATA / network),
                        call=call)
    child = subprocess.Popen([sys.executable, "-c", code], stdout=subprocess.PIPE, text=True)
    child.stdout.readline()
    time.sleep(delay)
    sent = time.monotonic()
    child.send_signal(signal.SIGINT)
    word, when = child.stdout.readline().split()
    if word == "finished":
        child.wait()
        return f"finished before the signal at {delay} s"
    _, used = child.stdout.readline().split()
    child.wait()
    return f"at {delay:4.1f} s: {float(when) - sent:.3f} s, then {float(used):.4f} s processor"


def ticker(work):
    gaps = []
    done = threading.Event()

    def tick():
        last = time.monotonic()
        while not done.is_set():
            time.sleep(0.05)
            now = time.monotonic()
            gaps.append(now - last)
            last = now

    thread = threading.Thread(target=tick)
    thread.start()
    start = time.monotonic()
    work()
    took = time.monotonic() - start
    done.set()
    thread.join()
    return f"call {took:.2f} s, {len(gaps)} ticks, longest wait {max(gaps):.3f} s"


def read_graph(network):
    graph = nx.Graph()
    graph.add_edges_from(read_pairs(DATA / network))
    return graph


def timed(work):
    start = time.perf_counter()
    result = work()
    return time.perf_counter() - start, result


def main():
    print(f"python {sys.version.split()[0]}, networkx {nx.__version__}, varnel "
          f"{varnel.__version__}")
    for network, call, delays in [
            ("wikivote.links", "varnel.find_cliques(pairs)", [0.1, 0.3, 0.5, 0.8, 1.2]),
            ("facebook.links", "varnel.communities(pairs, time_limit=0.1)", [0.3, 1, 3, 10])]:
        print(f"interrupt {network} {call}:")
        for delay in delays:
            print("  " + interrupt(network, call, delay))
    wikivote_pairs = read_pairs(DATA / "wikivote.links")
    print("ticker find_cliques(wikivote):", ticker(lambda: varnel.find_cliques(wikivote_pairs)))
    print("ticker communities(wikivote, ks=range(3, 7)):",
          ticker(lambda: varnel.communities(wikivote_pairs, ks=range(3, 7))))

    dispatching = hasattr(nx.utils, "backends")
    with_varnel = {"backend": "varnel"} if dispatching else {}
    find = nx.find_cliques if dispatching else backend.find_cliques
    kcc = nx.community.k_clique_communities if dispatching else backend.k_clique_communities
    wikivote = read_graph("wikivote.links")
    mine, found = timed(lambda: list(find(wikivote, **with_varnel)))
    theirs, expected = timed(lambda: list(nx.find_cliques(wikivote)))
    assert sorted(map(sorted, found)) == sorted(map(sorted, expected))
    print(f"speed find_cliques(wikivote): networkx {theirs:.2f} s, varnel {mine:.2f} s, "
          f"{theirs / mine:.1f}x")
    hepph = read_graph("hepph.links")
    for k in (3, 5):
        if dispatching:
            hepph.__networkx_cache__.clear()
        mine, found = timed(lambda: set(kcc(hepph, k, **with_varnel)))
        theirs, expected = timed(lambda: set(nx.community.k_clique_communities(hepph, k)))
        assert found == expected
        print(f"speed k_clique_communities(hepph, {k}): networkx {theirs:.2f} s, varnel "
              f"{mine:.2f} s, {theirs / mine:.1f}x")


if __name__ == "__main__":
    main()
