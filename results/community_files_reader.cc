#include "results/community_files_reader.h"

#include <algorithm>

#include "core/result_layout.h"
#include "results/header_text.h"
#include "results/line_tokeniser.h"
#include "results/record_names.h"
#include "results/record_numbers.h"

namespace kcp {

CommunitiesFile Read_communities_file(const std::string& path, NodeNumbering& numbering,
                                      CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  CommunitiesFile file;
  Parse_k_title(t, layout::kCommunitiesTitle.before, layout::kCommunitiesTitle.after, file.flag,
                file.k);
  bool negative_line = false;
  file.alap_szoveg = Take_k_file_alap_szoveg(
      t, std::string(layout::kApproximateCommunitiesNote) + "\n", negative_line);

  PositionSequence positions("community", true);
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    positions.Next(t, tokens[0]);
    Community community;
    community.reserve(tokens.size() - 1);
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      community.push_back(Node_of(t, numbering, tokens[i]));
    }
    file.communities.push_back(std::move(community));
  }
  file.n_exact_coms = positions.N_exact();
  if (negative_line != (file.n_exact_coms < positions.Count())) {
    t.Fail_at(t.Header_lines().size() - 1,
              negative_line ? "the header announces approximate communities, but none follows"
                            : "approximate communities follow, but the header lacks the line \"" +
                                  std::string(layout::kApproximateCommunitiesNote) + "\"");
  }
  return file;
}

CommunityLinksFile Read_community_links_file(const std::string& path, NodeNumbering& numbering,
                                             CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  CommunityLinksFile file;
  Parse_k_title(t, layout::kCommunityLinksTitle.before, layout::kCommunityLinksTitle.after,
                file.flag, file.k);
  bool unused = false;
  file.alap_szoveg = Take_k_file_alap_szoveg(t, "", unused);

  PositionSequence positions("community", true);
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    if (tokens.size() == 1) {
      positions.Next(t, tokens[0]);
      file.community_links.emplace_back();
      continue;
    }
    if (tokens.size() != 2) {
      t.Fail("expected a community number followed by \":\", or a link of two node names; found " +
             std::to_string(tokens.size()) + " fields");
    }
    if (file.community_links.empty()) {
      t.Fail("expected a community number followed by \":\" before the first link");
    }
    const NodeIndex from = Node_of(t, numbering, tokens[0]);
    const NodeIndex to = Node_of(t, numbering, tokens[1]);
    if (from == to) t.Fail("a link from a node to itself");
    file.community_links.back().emplace_back(from, to);
  }
  file.n_exact_coms = positions.N_exact();
  return file;
}

IndexLinkMap Written_link_map(const CommunityLinksFile& file) {
  std::vector<Link> all;
  for (const LinkList& links : file.community_links)
    all.insert(all.end(), links.begin(), links.end());
  std::sort(all.begin(), all.end());
  IndexLinkMap map;
  for (const Link& link : all) map.emplace_hint(map.end(), link, 0.0);
  return map;
}

CommunityCliquesFile Read_community_cliques_file(const std::string& path, CutFiles* cut_files) {
  LineTokeniser t(path, cut_files);
  CommunityCliquesFile file;
  const std::string expected =
      "\"# The contained [flag ]cliques in the [flag ]communities at k=<k>\" as the first line";
  std::string_view line = First_header_line(t, expected);
  std::string second_flag;
  if (!Take_prefix(line, "# The contained ")) t.Fail_at(1, "expected " + expected);
  Take_flag_word(line, file.flag);
  if (!Take_prefix(line, "cliques in the ")) t.Fail_at(1, "expected " + expected);
  Take_flag_word(line, second_flag);
  if (second_flag != file.flag || !Take_prefix(line, "communities at k=") ||
      !Take_k(line, file.k) || !line.empty()) {
    t.Fail_at(1, "expected " + expected);
  }
  bool unused = false;
  file.alap_szoveg = Take_k_file_alap_szoveg(t, "", unused);

  PositionSequence positions("community", true);
  // In approximate communities every unmarked clique lies below every marked one.
  bool any_plain = false;
  std::uint32_t largest_plain = 0;
  bool any_marked = false;
  std::uint32_t smallest_marked = 0;
  while (t.Next_record()) {
    const auto& tokens = t.Tokens();
    positions.Next(t, tokens[0]);
    CliqueIndexList cliques;
    cliques.reserve(tokens.size() - 1);
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      std::uint32_t clique = 0;
      bool negative = false;
      if (!Parse_position(tokens[i], clique, negative)) {
        t.Fail("expected a clique number, found \"" + std::string(tokens[i]) + "\"");
      }
      if (negative && !positions.Approximate()) {
        t.Fail("a negative clique number (\"" + std::string(tokens[i]) +
               "\") in an exact community, where none is allowed");
      }
      if (positions.Approximate()) {
        if (negative) {
          if (any_plain && clique <= largest_plain) {
            t.Fail("approximate clique -" + std::to_string(clique) + " is not above exact clique " +
                   std::to_string(largest_plain));
          }
          smallest_marked = any_marked ? std::min(smallest_marked, clique) : clique;
          any_marked = true;
        } else {
          if (any_marked && clique >= smallest_marked) {
            t.Fail("exact clique " + std::to_string(clique) + " is not below approximate clique -" +
                   std::to_string(smallest_marked));
          }
          largest_plain = any_plain ? std::max(largest_plain, clique) : clique;
          any_plain = true;
        }
      }
      cliques.push_back(clique);
    }
    file.community_cliques.push_back(std::move(cliques));
  }
  file.n_exact_coms = positions.N_exact();
  file.n_exact = any_marked ? smallest_marked : (any_plain ? largest_plain + 1 : 0);
  return file;
}

}  // namespace kcp
