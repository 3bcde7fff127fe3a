#include "results/completeness.h"

#include <array>
#include <filesystem>
#include <system_error>

#include "core/result_layout.h"
#include "results/record_numbers.h"

namespace kcp {

namespace {

namespace fs = std::filesystem;

enum class FileState { kMissing, kEmpty, kPresent };

FileState State_of(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return FileState::kMissing;
  const std::uintmax_t size = fs::file_size(path, error);
  return !error && size == 0 ? FileState::kEmpty : FileState::kPresent;
}

void Note(std::vector<std::string>& missing, const std::string& item, const FileState& state) {
  if (state == FileState::kMissing) missing.push_back(item);
  if (state == FileState::kEmpty) missing.push_back(item + " (empty)");
}

// The distributions are complete as the plain four or as the twelve of a k with approximate
// communities; when neither set is, the one the directory started on is reported.
void Check_distributions(const fs::path& k_dir, const std::string& label,
                         const std::string& flavour, std::vector<std::string>& missing) {
  std::vector<std::string> plain;
  std::vector<std::string> split;
  for (const layout::DistributionKind& kind : layout::kDistributions) {
    for (const std::string_view suffix : layout::kDistributionSuffixes) {
      (suffix.empty() ? plain : split)
          .push_back(layout::Flag_file(flavour, std::string(kind.stem) + std::string(suffix)));
    }
  }
  const auto gaps = [&](const std::vector<std::string>& names) {
    std::vector<std::string> found;
    for (const std::string& name : names) Note(found, label + "/" + name, State_of(k_dir / name));
    return found;
  };
  const std::vector<std::string> plain_gaps = gaps(plain);
  if (plain_gaps.empty()) return;
  const std::vector<std::string> split_gaps = gaps(split);
  if (split_gaps.empty()) return;
  const bool split_started = split_gaps.size() < split.size();
  const std::vector<std::string>& reported = split_started ? split_gaps : plain_gaps;
  missing.insert(missing.end(), reported.begin(), reported.end());
}

}  // namespace

std::vector<std::uint32_t> Extracted_ks(const std::string& alap_szoveg,
                                        const std::optional<std::uint32_t>& largest_clique) {
  const std::size_t at = alap_szoveg.find(layout::kFixedKLine);
  if (at != std::string::npos) {
    const std::size_t from = at + layout::kFixedKLine.size();
    const std::size_t to = alap_szoveg.find('\n', from);
    std::uint32_t k = 0;
    if (Parse_unsigned(std::string_view(alap_szoveg).substr(from, to - from), k)) return {k};
  }
  std::vector<std::uint32_t> ks;
  for (std::uint32_t k = largest_clique.value_or(0); k > 2; --k) ks.push_back(k);
  return ks;
}

std::vector<std::string> K_dir_files(const std::string& flavour) {
  return {layout::Flag_file(flavour, layout::kCommunities),
          flavour == layout::kIntensity ? std::string(layout::kKCliques)
                                        : layout::Flag_file(flavour, layout::kCommunityCliques),
          layout::Flag_file(flavour, layout::kCommunityLinks),
          layout::Community_graph_file(flavour)};
}

std::vector<std::string> Missing_results(const ResultsLayout& found,
                                         const std::optional<std::uint32_t>& only_k) {
  std::vector<std::string> missing;
  const std::string clique_file = layout::Clique_file(found.flavour);
  Note(missing, clique_file,
       found.clique_file_present ? State_of(fs::path(found.dir) / clique_file)
                                 : FileState::kMissing);
  std::vector<std::uint32_t> ks = Extracted_ks(found.alap_szoveg, found.largest_clique);
  if (only_k) ks = {*only_k};
  for (const std::uint32_t k : ks) {
    const std::string label = layout::K_dir_name(k);
    const fs::path k_dir = fs::path(found.dir) / label;
    std::error_code error;
    if (!fs::is_directory(k_dir, error)) {
      missing.push_back(label + " (no directory)");
      continue;
    }
    for (const std::string& name : K_dir_files(found.flavour)) {
      Note(missing, label + "/" + name, State_of(k_dir / name));
    }
    Check_distributions(k_dir, label, found.flavour, missing);
  }
  return missing;
}

std::string Missing_summary(const std::vector<std::string>& missing) {
  constexpr std::size_t kShown = 6;
  std::string summary;
  for (std::size_t i = 0; i < missing.size() && i < kShown; ++i) {
    summary += (i == 0 ? "" : ", ") + missing[i];
  }
  if (missing.size() > kShown) {
    summary += " and " + std::to_string(missing.size() - kShown) + " more";
  }
  return summary;
}

}  // namespace kcp
