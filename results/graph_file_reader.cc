#include "results/graph_file_reader.h"

#include <charconv>

#include "core/result_layout.h"
#include "results/header_text.h"
#include "results/line_tokeniser.h"

namespace kcp {

namespace {

const std::string kUndirectedTail = std::string(layout::kUndirectedGraphTail) + "\n";
const std::string kDirectedTail = std::string(layout::kDirectedGraphTail) + "\n";

// The run read the weight column whenever -w, -W or -I was given; each leaves its own line.
bool Description_is_weighted(std::string_view alap_szoveg) {
  return layout::Has_line(alap_szoveg, layout::kLowerThresholdLine) ||
         layout::Has_line(alap_szoveg, layout::kUpperThresholdLine) ||
         layout::Has_line(alap_szoveg, layout::kIntensityLine);
}

void Read_header(const LineTokeniser& t, GraphFile& graph) {
  const std::string expected_first = "\"# The links from <input file>\" as the first line";
  First_header_line(t, expected_first);
  const std::string text = t.Header_text();
  std::string_view rest(text);
  if (!Take_prefix(rest, "# The links")) t.Fail_at(1, "expected " + expected_first);
  if (!t.Header_closed()) {
    t.Fail_at(t.Header_lines().size() + 1, "expected the empty line that closes the header");
  }
  // The description and the closing line are followed by the empty line.
  std::string_view body = rest;
  Take_suffix(body, "\n");
  if (body.ends_with(kDirectedTail) && !body.ends_with(kUndirectedTail)) {
    graph.directed = true;
  } else if (!body.ends_with(kUndirectedTail)) {
    t.Fail_at(t.Header_lines().size() - 1,
              "expected \"" + std::string(layout::kDirectedGraphTail) + "\" or \"" +
                  std::string(layout::kUndirectedGraphTail) + "\" as the last header line");
  }
  bool found = false;
  graph.alap_szoveg =
      Take_alap_szoveg(t, rest, 1, graph.directed ? kDirectedTail : kUndirectedTail, found);
  graph.weighted = Description_is_weighted(graph.alap_szoveg);
}

}  // namespace

GraphFile Read_graph_file(const std::string& path, NodeNumbering& numbering, CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  GraphFile graph;
  Read_header(t, graph);
  const std::size_t fields = graph.weighted ? 3 : 2;
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    if (tokens.size() != fields) {
      t.Fail(graph.weighted
                 ? "expected two node names and a weight (the run set a weight threshold), found " +
                       std::to_string(tokens.size()) + " fields"
                 : "expected two node names (the run set no weight threshold), found " +
                       std::to_string(tokens.size()) + " fields");
    }
    NamedLink link;
    link.source = tokens[0];
    link.target = tokens[1];
    double weight = 0.0;
    if (graph.weighted) {
      const std::string_view text = tokens[2];
      const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), weight);
      if (error != std::errc() || end != text.data() + text.size()) {
        t.Fail("expected a weight (a number) after the two node names, found \"" +
               std::string(text) + "\"");
      }
      link.weight = weight;
      link.weight_text = text;
    }
    if (!graph.link_map.emplace(std::make_pair(link.source, link.target), weight).second) {
      t.Fail("the link \"" + link.source + " " + link.target + "\" appears a second time");
    }
    numbering.Index(link.source);
    numbering.Index(link.target);
    graph.links.push_back(std::move(link));
  }
  return graph;
}

}  // namespace kcp
