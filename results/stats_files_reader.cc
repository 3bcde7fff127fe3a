#include "results/stats_files_reader.h"

#include <array>
#include <utility>

#include "core/result_layout.h"
#include "results/header_text.h"
#include "results/line_tokeniser.h"
#include "results/record_numbers.h"

namespace kcp {

namespace {

// "<prefix><suffix>[.][flag ] communities at k=<k>"; the "." follows only the bare suffix "appr".
void Parse_distribution_title(const LineTokeniser& t, DistributionFile& file) {
  const std::string expected =
      "\"# The <distribution> of the <suffix>[flag ] communities at k=<k>\" as the first line";
  std::string_view line = First_header_line(t, expected);
  const layout::DistributionKind* kind = nullptr;
  for (const layout::DistributionKind& candidate : layout::kDistributions) {
    if (Take_prefix(line, candidate.title)) {
      kind = &candidate;
      break;
    }
  }
  const std::size_t words = line.find(" communities at k=");
  if (kind == nullptr || words == std::string_view::npos) t.Fail_at(1, "expected " + expected);
  file.stem = kind->stem;
  std::string_view middle = line.substr(0, words);
  line.remove_prefix(words + std::string_view(" communities at k=").size());
  if (Take_suffix(middle, "directed ")) {
    file.flag = "directed";
  } else if (Take_suffix(middle, "intensity ")) {
    file.flag = "intensity";
  }
  if (middle == "appr.") {
    middle = "appr";
  } else if (middle == "appr" || middle.find_first_of(" \t") != std::string_view::npos) {
    t.Fail_at(1, "expected " + expected);
  }
  file.suffix = middle;
  if (!Take_k(line, file.k) || !line.empty()) t.Fail_at(1, "expected " + expected);
}

}  // namespace

CommunityGraphFile Read_community_graph_file(const std::string& path, CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  CommunityGraphFile file;
  Parse_k_title(t, layout::kCommunityGraphTitle.before, layout::kCommunityGraphTitle.after,
                file.flag, file.k);
  bool unused = false;
  file.alap_szoveg = Take_k_file_alap_szoveg(t, "", unused);

  // Every unmarked position lies below every marked one.
  bool any_plain = false;
  std::uint32_t largest_plain = 0;
  bool any_marked = false;
  std::uint32_t smallest_marked = 0;
  bool first = true;
  std::pair<std::uint32_t, std::uint32_t> previous;
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    if (tokens.size() != 3) {
      t.Fail("expected two community numbers and the number of shared nodes, found " +
             std::to_string(tokens.size()) + " fields");
    }
    std::array<std::uint32_t, 2> ends{};
    for (std::size_t i = 0; i < 2; ++i) {
      bool negative = false;
      if (!Parse_position(tokens[i], ends[i], negative)) {
        t.Fail("expected a community number, found \"" + std::string(tokens[i]) + "\"");
      }
      if (negative) {
        if (any_plain && ends[i] <= largest_plain) {
          t.Fail("approximate community -" + std::to_string(ends[i]) +
                 " is not above exact community " + std::to_string(largest_plain));
        }
        smallest_marked = any_marked ? std::min(smallest_marked, ends[i]) : ends[i];
        any_marked = true;
      } else {
        if (any_marked && ends[i] >= smallest_marked) {
          t.Fail("exact community " + std::to_string(ends[i]) +
                 " is not below approximate community -" + std::to_string(smallest_marked));
        }
        largest_plain = any_plain ? std::max(largest_plain, ends[i]) : ends[i];
        any_plain = true;
      }
    }
    const std::uint32_t shared = Unsigned_field(t, tokens[2], "the number of shared nodes");
    const std::pair<std::uint32_t, std::uint32_t> key(ends[0], ends[1]);
    if (!first && !(previous < key)) {
      t.Fail("this pair of communities does not follow the one before it in ascending order");
    }
    first = false;
    previous = key;
    file.graph.emplace_hint(file.graph.end(), key, shared);
  }
  file.n_exact_coms = any_marked ? smallest_marked : (any_plain ? largest_plain + 1 : 0);
  return file;
}

DistributionFile Read_distribution_file(const std::string& path, CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  DistributionFile file;
  Parse_distribution_title(t, file);
  bool unused = false;
  file.alap_szoveg = Take_k_file_alap_szoveg(t, "", unused);
  file.header = t.Header_lines().front() + "\n#" + file.alap_szoveg;

  bool first = true;
  std::uint32_t previous = 0;
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    if (tokens.size() != 2) {
      t.Fail("expected a value and its count, found " + std::to_string(tokens.size()) + " fields");
    }
    const std::uint32_t value = Unsigned_field(t, tokens[0], "a value");
    const std::uint32_t count = Unsigned_field(t, tokens[1], "a count");
    if (!first && value <= previous) {
      t.Fail("the value " + std::to_string(value) +
             " does not follow the one before it in ascending order");
    }
    first = false;
    previous = value;
    file.distribution.emplace_hint(file.distribution.end(), value, count);
  }
  // A file cut inside a line ends with what was read before the cut.
  if (!t.Ended_with_empty_line() && !t.Cut()) {
    t.Fail_at(t.Lines_read() + 1,
              "expected the empty line that ends a distribution file: the file seems truncated");
  }
  return file;
}

}  // namespace kcp
