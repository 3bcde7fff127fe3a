#!/usr/bin/env python3
"""Checks varnel-export's GraphML and node-link JSON against the results directory itself.

Usage: check_networkx.py RESULTS_DIR GRAPHML_FILE JSON_FILE [CSV_FILE]

The results files are parsed here on their own (graph file, and per "k=" directory the
communities file and the community links file); networkx reads the two exports. Nodes, links,
weights and, per k, the communities of every node and link must agree. The CSV export, read
with Python's csv module, must list every node of every community. Exits 0 when all agree,
1 with the differences on stderr otherwise.
"""

import codecs
import csv
import json
import math
import os
import re
import sys

import networkx as nx


def _hex_bytes(error):
    bad = error.object[error.start:error.end]
    return "".join("\\x%02X" % b for b in bad), error.end


codecs.register_error("varnel_hex", _hex_bytes)


def safe_text(raw):
    """The exporter's rule: UTF-8 stays, other bytes and characters XML forbids become \\xHH."""
    text = raw.decode("utf-8", errors="varnel_hex")
    out = []
    for ch in text:
        code = ord(ch)
        allowed = (code in (0x9, 0xA, 0xD) or 0x20 <= code <= 0xD7FF
                   or 0xE000 <= code <= 0xFFFD or code >= 0x10000)
        out.append(ch if allowed else "".join("\\x%02X" % b for b in ch.encode("utf-8")))
    return "".join(out)


def lines_of(path):
    with open(path, "rb") as f:
        return f.read().split(b"\n")


def graph_records(path):
    """The links of a graph file: every non-empty line after the first empty one (the header's
    last line may begin with "." in a run at one k; names may begin with "#")."""
    lines = lines_of(path)
    start = lines.index(b"") + 1
    return [line for line in lines[start:] if line.strip()]


LABEL = re.compile(rb"^(-?[0-9]+):")


def community_records(path):
    """The records of a community file: every non-empty line from the first "N:" line on."""
    lines = lines_of(path)
    start = next((i for i, line in enumerate(lines) if LABEL.match(line)), len(lines))
    return [line for line in lines[start:] if line.strip()]


def read_graph(results_dir):
    directed = os.path.exists(os.path.join(results_dir, "directed_graph"))
    path = os.path.join(results_dir, "directed_graph" if directed else "graph")
    nodes = []
    seen = set()
    links = {}
    for line in graph_records(path):
        fields = line.split()
        source, target = safe_text(fields[0]), safe_text(fields[1])
        weight = float(fields[2]) if len(fields) > 2 else None
        for name in (source, target):
            if name not in seen:
                seen.add(name)
                nodes.append(name)
        key = (source, target) if directed else frozenset((source, target))
        if key in links and weight is not None:
            links[key] += weight  # reciprocal lines of an undirected run: the run sums them
        elif key not in links:
            links[key] = weight
    return directed, nodes, links


def read_k_dir(path):
    """Communities (label, nodes) in file order and the unordered node pairs of each."""
    names = sorted(os.listdir(path))
    communities_file = next(n for n in names if n.endswith("communities")
                            and not n.startswith("graph_of"))
    links_file = communities_file + "_links"
    communities = []
    for line in community_records(os.path.join(path, communities_file)):
        match = LABEL.match(line)
        label = match.group(1).decode()
        members = [safe_text(n) for n in line[match.end():].split()]
        communities.append((label, members))
    pairs = {}
    current = None
    for line in community_records(os.path.join(path, links_file)):
        match = LABEL.match(line)
        if match and line.rstrip() == match.group(0):
            current = match.group(1).decode()
            pairs[current] = set()
            continue
        a, b = line.split()
        pairs[current].add(frozenset((safe_text(a), safe_text(b))))
    return communities, pairs


def expected_attributes(results_dir, directed, nodes, links):
    per_k = {}
    node_attrs = {n: {} for n in nodes}
    link_attrs = {key: {} for key in links}
    for entry in os.listdir(results_dir):
        if not entry.startswith("k="):
            continue
        k = int(entry[2:])
        communities, pairs = read_k_dir(os.path.join(results_dir, entry))
        per_k[k] = communities
        for node in nodes:
            labels = [label for label, members in communities if node in members]
            if labels:
                node_attrs[node]["k%d" % k] = ",".join(labels)
        for key in links:
            ends = frozenset(key)
            labels = [label for label, _ in communities if ends in pairs[label]]
            if labels:
                link_attrs[key]["k%d" % k] = ",".join(labels)
    return per_k, node_attrs, link_attrs


def compare(kind, graph, directed, nodes, links, node_attrs, link_attrs, problems):
    if graph.is_directed() != directed:
        problems.append("%s: directed is %s" % (kind, graph.is_directed()))
    if graph.is_multigraph():
        problems.append("%s: read as a multigraph" % kind)
    if list(graph.nodes) != nodes:
        problems.append("%s: nodes differ: %s" % (kind, sorted(set(graph.nodes) ^ set(nodes))))
    for node, data in graph.nodes(data=True):
        got = {key: value for key, value in data.items() if key.startswith("k")}
        if got != node_attrs.get(node):
            problems.append("%s: node %r has %s, expected %s" % (kind, node, got,
                                                                  node_attrs.get(node)))
    seen = set()
    for source, target, data in graph.edges(data=True):
        key = (source, target) if directed else frozenset((source, target))
        if key not in links:
            problems.append("%s: link %r-%r is not in the graph file" % (kind, source, target))
            continue
        seen.add(key)
        weight = links[key]
        if (weight is None) != ("weight" not in data) or (
                weight is not None and not math.isclose(data["weight"], weight, rel_tol=1e-12)):
            problems.append("%s: link %r-%r weight %s, expected %s" % (
                kind, source, target, data.get("weight"), weight))
        got = {k: v for k, v in data.items() if k.startswith("k")}
        if got != link_attrs[key]:
            problems.append("%s: link %r-%r has %s, expected %s" % (kind, source, target, got,
                                                                   link_attrs[key]))
    if seen != set(links):
        problems.append("%s: %d links missing" % (kind, len(set(links) - seen)))


def check_csv(results_dir, csv_path, problems):
    """The CSV export: its header, then per k (ascending) every node of every community in file
    order, the names' bytes as they are (read as Latin-1 here to keep every byte)."""
    expected = [["k", "community", "approximate", "node"]]
    ks = sorted(int(entry[2:]) for entry in os.listdir(results_dir) if entry.startswith("k="))
    for k in ks:
        path = os.path.join(results_dir, "k=%d" % k)
        name = next(n for n in sorted(os.listdir(path))
                    if n.endswith("communities") and not n.startswith("graph_of"))
        for line in community_records(os.path.join(path, name)):
            match = LABEL.match(line)
            label = match.group(1).decode()
            approximate = "true" if label.startswith("-") else "false"
            for node in line[match.end():].split():
                expected.append([str(k), label, approximate, node.decode("latin-1")])
    with open(csv_path, encoding="latin-1", newline="") as f:
        rows = list(csv.reader(f))
    if rows != expected:
        wrong = next((i for i, row in enumerate(rows) if i >= len(expected) or row != expected[i]),
                     len(rows))
        problems.append("CSV: %d rows, expected %d; row %d differs" % (len(rows), len(expected),
                                                                        wrong))


def read_node_link(path):
    with open(path, encoding="utf-8") as f:
        data = json.load(f)
    try:
        return data, nx.node_link_graph(data, edges="links")
    except TypeError:  # networkx before 3.4 knows no edges= and reads "links" by default
        return data, nx.node_link_graph(data)


def main():
    results_dir, graphml_path, json_path = sys.argv[1:4]
    directed, nodes, links = read_graph(results_dir)
    per_k, node_attrs, link_attrs = expected_attributes(results_dir, directed, nodes, links)
    problems = []

    graphml = nx.read_graphml(graphml_path)
    compare("GraphML", graphml, directed, nodes, links, node_attrs, link_attrs, problems)

    data, from_json = read_node_link(json_path)
    compare("JSON", from_json, directed, nodes, links, node_attrs, link_attrs, problems)
    flavour = "directed" if directed else ""
    if any(name.startswith("intensity_") for _, _, files in os.walk(results_dir) for name in files):
        flavour = "intensity"
    weighted = any(weight is not None for weight in links.values())
    if (from_json.graph.get("flavour"), from_json.graph.get("weighted")) != (flavour, weighted):
        problems.append("JSON: flavour %r, weighted %r, expected %r, %r" % (
            from_json.graph.get("flavour"), from_json.graph.get("weighted"), flavour, weighted))
    got_ks = from_json.graph.get("k")
    if got_ks != sorted(per_k):
        problems.append("JSON: graph k is %s, expected %s" % (got_ks, sorted(per_k)))
    for k, communities in per_k.items():
        listed = from_json.graph["communities"].get(str(k))
        expected = [{"id": label, "approximate": label.startswith("-"), "nodes": members}
                    for label, members in communities]
        if listed != expected:
            problems.append("JSON: communities at k=%d differ" % k)

    if len(sys.argv) > 4:
        check_csv(results_dir, sys.argv[4], problems)

    print("%d nodes, %d links, k in %s" % (len(nodes), len(links), sorted(per_k)))
    for problem in problems[:40]:
        print(problem, file=sys.stderr)
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
