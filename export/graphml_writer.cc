#include "export/graphml_writer.h"

#include <string>

#include "export/output_buffer.h"
#include "export/xml_text.h"

namespace kcp {

namespace {

void Append_key(std::string& out, const std::string& id, const char* domain,
                const std::string& name, const char* type) {
  out += "  <key id=\"" + id + "\" for=\"" + domain + "\" attr.name=\"" + name + "\" attr.type=\"" +
         type + "\"/>\n";
}

void Append_memberships(std::string& out, const RunResults& results, MembershipWalk& walk,
                        const char* key_prefix, std::size_t item) {
  for (std::size_t i = 0; i < results.per_k.size(); ++i) {
    const auto positions = walk.at(i, item);
    if (positions.empty()) continue;
    out += "<data key=\"";
    out += key_prefix;
    out += std::to_string(results.per_k[i].k) + "\">";
    Append_community_labels(out, positions, results.per_k[i]);
    out += "</data>";
  }
}

}  // namespace

void Write_graphml(const RunResults& results, const ExportNetwork& network, std::ostream& out) {
  OutputBuffer buffer(out);
  std::string& text = buffer.text();
  text +=
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
      "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\" "
      "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
      "xsi:schemaLocation=\"http://graphml.graphdrawing.org/xmlns "
      "http://graphml.graphdrawing.org/xmlns/1.0/graphml.xsd\">\n";
  if (results.weighted) Append_key(text, "weight", "edge", "weight", "double");
  for (const KMemberships& at_k : network.per_k) {
    const std::string k_name = "k" + std::to_string(at_k.k);
    Append_key(text, "node_" + k_name, "node", k_name, "string");
  }
  for (const KMemberships& at_k : network.per_k) {
    const std::string k_name = "k" + std::to_string(at_k.k);
    Append_key(text, "link_" + k_name, "edge", k_name, "string");
  }
  text += "  <graph id=\"G\" edgedefault=\"";
  text += results.directed ? "directed" : "undirected";
  text += "\">\n";

  MembershipWalk node_walk(network, false);
  for (std::size_t node = 0; node < results.nodes.size(); ++node) {
    text += "    <node id=\"";
    Append_xml_text(text, results.nodes[node]);
    text += "\">";
    Append_memberships(text, results, node_walk, "node_k", node);
    text += "</node>\n";
    buffer.line_done();
  }
  MembershipWalk link_walk(network, true);
  for (std::size_t position = 0; position < network.links.size(); ++position) {
    const ExportLink& link = network.links[position];
    text += "    <edge source=\"";
    Append_xml_text(text, results.nodes[link.source]);
    text += "\" target=\"";
    Append_xml_text(text, results.nodes[link.target]);
    text += "\">";
    if (link.weight) text += "<data key=\"weight\">" + Weight_text(*link.weight) + "</data>";
    Append_memberships(text, results, link_walk, "link_k", position);
    text += "</edge>\n";
    buffer.line_done();
  }
  text += "  </graph>\n</graphml>\n";
  buffer.finish();
}

}  // namespace kcp
