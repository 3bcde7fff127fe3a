#include "export/json_writer.h"

#include <cmath>
#include <string>

#include "export/json_text.h"
#include "export/output_buffer.h"

namespace kcp {

namespace {

void Append_lists_per_k(std::string& out, const RunResults& results, MembershipWalk& walk,
                        std::size_t item) {
  for (std::size_t i = 0; i < results.per_k.size(); ++i) {
    const auto positions = walk.at(i, item);
    if (positions.empty()) continue;
    out += ", \"k" + std::to_string(results.per_k[i].k) + "\": \"";
    Append_community_labels(out, positions, results.per_k[i]);
    out += '"';
  }
}

void Append_graph_attributes(OutputBuffer& buffer, const RunResults& results) {
  std::string& text = buffer.text();
  text += "  \"graph\": {\n    \"flavour\": ";
  Append_json_string(text, results.flavour);
  text += ",\n    \"weighted\": ";
  text += results.weighted ? "true" : "false";
  text += ",\n    \"k\": [";
  for (std::size_t i = 0; i < results.per_k.size(); ++i) {
    if (i > 0) text += ", ";
    text += std::to_string(results.per_k[i].k);
  }
  text += "],\n    \"communities\": {";
  for (std::size_t i = 0; i < results.per_k.size(); ++i) {
    const KResults& at_k = results.per_k[i];
    text += i > 0 ? ",\n" : "\n";
    text += "      \"" + std::to_string(at_k.k) + "\": [";
    for (std::size_t c = 0; c < at_k.communities.size(); ++c) {
      const CommunityRecord& community = at_k.communities[c];
      text += c > 0 ? ",\n" : "\n";
      text += "        {\"id\": \"" + Community_label(community) + "\", \"approximate\": ";
      text += community.approximate ? "true" : "false";
      text += ", \"nodes\": [";
      for (std::size_t n = 0; n < community.nodes.size(); ++n) {
        if (n > 0) text += ", ";
        Append_json_string(text, community.nodes[n]);
      }
      text += "]}";
      buffer.line_done();
    }
    text += at_k.communities.empty() ? "]" : "\n      ]";
  }
  text += results.per_k.empty() ? "}\n  },\n" : "\n    }\n  },\n";
}

}  // namespace

void Write_node_link_json(const RunResults& results, const ExportNetwork& network,
                          std::ostream& out) {
  OutputBuffer buffer(out);
  std::string& text = buffer.text();
  text += "{\n  \"directed\": ";
  text += results.directed ? "true" : "false";
  text += ",\n  \"multigraph\": false,\n";
  Append_graph_attributes(buffer, results);

  text += "  \"nodes\": [";
  MembershipWalk node_walk(network, false);
  for (std::size_t node = 0; node < results.nodes.size(); ++node) {
    text += node > 0 ? ",\n    {\"id\": " : "\n    {\"id\": ";
    Append_json_string(text, results.nodes[node]);
    Append_lists_per_k(text, results, node_walk, node);
    text += '}';
    buffer.line_done();
  }
  text += results.nodes.empty() ? "],\n" : "\n  ],\n";

  text += "  \"links\": [";
  MembershipWalk link_walk(network, true);
  for (std::size_t position = 0; position < network.links.size(); ++position) {
    const ExportLink& link = network.links[position];
    text += position > 0 ? ",\n    {\"source\": " : "\n    {\"source\": ";
    Append_json_string(text, results.nodes[link.source]);
    text += ", \"target\": ";
    Append_json_string(text, results.nodes[link.target]);
    if (link.weight) {
      text += ", \"weight\": ";
      text += std::isfinite(*link.weight) ? Weight_text(*link.weight) : std::string("null");
    }
    Append_lists_per_k(text, results, link_walk, position);
    text += '}';
    buffer.line_done();
  }
  text += network.links.empty() ? "]\n}\n" : "\n  ]\n}\n";
  buffer.finish();
}

}  // namespace kcp
