// The command line of varnel-export: RESULTS_DIR and the options --format/-f, --k/-k,
// --output/-o (each as "--name VALUE", "--name=VALUE" or "-x VALUE"), --allow-incomplete,
// --help/-h, --version
// and "--" ending the options. Parse_export_options throws Xerror_msg with a one-line message
// on an unknown option, a missing or repeated value, an unknown format, a k that is not a whole
// number of at least 3, or a missing or second directory; --help and --version skip the checks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kcp {

enum class ExportFormat { kGraphml, kJson, kCsv, kSvg };

struct ExportOptions {
  std::string results_dir;
  ExportFormat format = ExportFormat::kGraphml;
  std::optional<std::uint32_t> k;
  std::string output;  // "" for standard output
  bool allow_incomplete = false;
  bool help = false;
  bool version = false;
};

ExportOptions Parse_export_options(const std::vector<std::string>& args);

std::string Export_help_text();

}  // namespace kcp
