#include "results/clique_file_reader.h"

#include "core/result_layout.h"
#include "results/header_text.h"
#include "results/line_tokeniser.h"
#include "results/record_names.h"
#include "results/record_numbers.h"

namespace kcp {

CliqueFile Read_clique_file(const std::string& path, NodeNumbering& numbering,
                            CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  CliqueFile file;
  const std::string expected = "\"# The [directed ]cliques from <input file>\" as the first line";
  First_header_line(t, expected);
  const std::string text = t.Header_text();
  std::string_view rest(text);
  if (Take_prefix(rest, "# The directed cliques")) {
    file.flag = "directed";
  } else if (!Take_prefix(rest, "# The cliques")) {
    t.Fail_at(1, "expected " + expected);
  }
  bool negative_line = false;
  file.alap_szoveg = Take_alap_szoveg(
      t, rest, 1, std::string(layout::kApproximateCliquesNote) + "\n", negative_line);

  PositionSequence positions("clique", true);
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    positions.Next(t, tokens[0]);
    Clique clique;
    clique.reserve(tokens.size() - 1);
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      clique.push_back(Node_of(t, numbering, tokens[i]));
    }
    file.cliques.push_back(std::move(clique));
  }
  file.n_exact = positions.N_exact();
  if (negative_line != (file.n_exact < positions.Count())) {
    t.Fail_at(t.Header_lines().size() - 1,
              negative_line ? "the header announces approximate cliques, but none follows"
                            : "approximate cliques follow, but the header lacks the line \"" +
                                  std::string(layout::kApproximateCliquesNote) + "\"");
  }
  return file;
}

}  // namespace kcp
