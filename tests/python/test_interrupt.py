"""Ctrl-C and other threads during a long call: SIGINT raises KeyboardInterrupt soon and the
core stops, another Python thread keeps running meanwhile, and calls on two threads at once
give the answers they give alone. The bounds leave room for a loaded machine; bench/
python_interrupt.py measures the real figures."""

import os
import random
import signal
import subprocess
import sys
import threading
import time

import pytest

import varnel


def dense_pairs(n, p):
    """Pairs of a random graph dense in cliques: millions of maximal cliques from 800 nodes."""
    rng = random.Random(1)
    return [(u, v) for u in range(n) for v in range(u + 1, n) if rng.random() < p]


CHILD = """
import sys, time
sys.path[:0] = [{here!r}]
import varnel
from test_interrupt import dense_pairs
pairs = dense_pairs(800, 0.3)
print("ready", flush=True)
try:
    {call}
    print("finished", flush=True)
except KeyboardInterrupt:
    print("interrupted", time.monotonic(), flush=True)
    start = time.process_time()
    time.sleep(0.5)
    print("processor", time.process_time() - start, flush=True)
"""


@pytest.mark.parametrize("call", ["varnel.find_cliques(pairs)",
                                  "varnel.communities(pairs, time_limit=0.001)"])
def test_ctrl_c_raises_keyboard_interrupt_and_stops_the_core(call):
    here = os.path.dirname(os.path.abspath(__file__))
    child = subprocess.Popen([sys.executable, "-c", CHILD.format(here=here, call=call)],
                             stdout=subprocess.PIPE, text=True)
    try:
        assert child.stdout.readline() == "ready\n"
        time.sleep(1.0)
        sent = time.monotonic()
        child.send_signal(signal.SIGINT)
        word, caught = child.stdout.readline().split()
        assert word == "interrupted"
        assert float(caught) - sent < 1.5
        # The core's thread ended with the call: the process no longer computes.
        word, used = child.stdout.readline().split()
        assert word == "processor" and float(used) < 0.2
    finally:
        child.kill()
        child.wait()


def test_other_threads_run_during_a_call():
    pairs = dense_pairs(600, 0.3)
    gaps = []
    done = threading.Event()

    def tick():
        last = time.monotonic()
        while not done.is_set():
            time.sleep(0.05)
            now = time.monotonic()
            gaps.append(now - last)
            last = now

    ticker = threading.Thread(target=tick)
    ticker.start()
    start = time.monotonic()
    varnel.find_cliques(pairs)
    took = time.monotonic() - start
    done.set()
    ticker.join()
    # Holding the interpreter lock, the call allowed one tick in all; the bounds leave room for
    # the scheduler of a busy machine.
    assert len(gaps) >= took / 0.05 / 4
    assert max(gaps) < took / 2


def test_calls_on_two_threads_at_once_give_their_own_answers():
    inputs = [dense_pairs(120, 0.3), dense_pairs(150, 0.25)]
    alone = [varnel.find_cliques(pairs) for pairs in inputs]
    together = [None, None]

    def call(i):
        together[i] = varnel.find_cliques(inputs[i])

    threads = [threading.Thread(target=call, args=(i,)) for i in range(2)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert together == alone
