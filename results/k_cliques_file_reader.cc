#include "results/k_cliques_file_reader.h"

#include "results/header_text.h"
#include "results/line_tokeniser.h"
#include "results/record_names.h"
#include "results/record_numbers.h"

namespace kcp {

KCliquesFile Read_k_cliques_file(const std::string& path, NodeNumbering& numbering,
                                 CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  KCliquesFile file;
  const std::string expected = "\"# The k-cliques at k=<k> from <input file>\" as the first line";
  First_header_line(t, expected);
  const std::string text = t.Header_text();
  std::string_view rest(text);
  if (!Take_prefix(rest, "# The k-cliques at k=") || !Take_k(rest, file.k)) {
    t.Fail_at(1, "expected " + expected);
  }
  bool unused = false;
  file.alap_szoveg = Take_alap_szoveg(t, rest, 1, "", unused);

  PositionSequence positions("k-clique", false);
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    positions.Next(t, tokens[0]);
    NodeList k_clique;
    k_clique.reserve(tokens.size() - 1);
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      k_clique.push_back(Node_of(t, numbering, tokens[i]));
    }
    const auto [where, inserted] = file.k_cliques.insert(std::move(k_clique));
    if (!inserted) t.Fail("this k-clique was listed before");
    if (numbering.Locked() && std::next(where) != file.k_cliques.end()) {
      t.Fail(
          "this k-clique comes before an earlier one in the order of the node indices of the "
          "graph file, in which the run lists them");
    }
  }
  return file;
}

}  // namespace kcp
