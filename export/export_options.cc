#include "export/export_options.h"

#include <charconv>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

ExportFormat Format_named(const std::string& word) {
  if (word == "graphml") return ExportFormat::kGraphml;
  if (word == "json") return ExportFormat::kJson;
  if (word == "csv") return ExportFormat::kCsv;
  if (word == "svg") return ExportFormat::kSvg;
  throw Xerror_msg("unknown format '" + word + "' (choose graphml, json, csv or svg)");
}

std::uint32_t K_from(const std::string& word) {
  std::uint32_t k = 0;
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, k);
  if (word.empty() || error != std::errc() || stop != end || k < 3) {
    throw Xerror_msg("--k needs a whole number of at least 3, not '" + word + "'");
  }
  return k;
}

}  // namespace

ExportOptions Parse_export_options(const std::vector<std::string>& args) {
  ExportOptions options;
  bool format_given = false;
  bool options_ended = false;
  std::vector<std::string> operands;
  std::vector<std::string> seen;

  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (options_ended || arg.size() < 2 || arg[0] != '-') {
      operands.push_back(arg);
      continue;
    }
    if (arg == "--") {
      options_ended = true;
      continue;
    }
    if (arg == "--help" || arg == "-h") {
      options.help = true;
      continue;
    }
    if (arg == "--allow-incomplete") {
      options.allow_incomplete = true;
      continue;
    }
    if (arg == "--version") {
      options.version = true;
      continue;
    }
    std::string name = arg;
    std::optional<std::string> value;
    if (const std::size_t equals = arg.find('='); arg.starts_with("--") && equals != arg.npos) {
      name = arg.substr(0, equals);
      value = arg.substr(equals + 1);
    }
    if (name == "-f") name = "--format";
    if (name == "-k") name = "--k";
    if (name == "-o") name = "--output";
    if (name != "--format" && name != "--k" && name != "--output") {
      throw Xerror_msg("unknown option '" + arg + "'");
    }
    if (!value) {
      if (i + 1 >= args.size()) throw Xerror_msg(name + " needs a value");
      value = args[++i];
    }
    for (const std::string& earlier : seen) {
      if (earlier == name) throw Xerror_msg(name + " is given twice");
    }
    seen.push_back(name);
    if (name == "--format") {
      options.format = Format_named(*value);
      format_given = true;
    } else if (name == "--k") {
      options.k = K_from(*value);
    } else {
      if (value->empty()) throw Xerror_msg("--output needs a file name");
      options.output = *value;
    }
  }
  if (options.help || options.version) return options;
  if (operands.empty()) throw Xerror_msg("no results directory given");
  if (operands.size() > 1) throw Xerror_msg("more than one results directory given");
  if (!format_given) throw Xerror_msg("no --format given (graphml, json, csv or svg)");
  options.results_dir = operands.front();
  return options;
}

std::string Export_help_text() {
  return R"(Usage: varnel-export RESULTS_DIR --format FORMAT [--k K] [-o FILE] [--allow-incomplete]

Writes the results directory of a varnel run in a format other tools read.

Formats:
  graphml  the network with, per node and per link, the communities holding it
           at every k (attributes k3, k4, ...: "0,5"; negative = approximate)
  json     the same as node-link JSON for networkx (node_link_graph(data,
           edges="links")), with the communities per k in the graph attributes
  csv      one table of all communities: k,community,approximate,node
  svg      plots of the size, degree, overlap and membership distributions
           per k, and of the number and mean size of communities against k

Options:
  -f, --format FORMAT  graphml, json, csv or svg (required)
  -k, --k K            only this k (the directory RESULTS_DIR/k=K must exist)
  -o, --output FILE    write to FILE instead of standard output (never a file
                       inside RESULTS_DIR)
      --allow-incomplete
                       export what an interrupted run left: without it, results
                       lacking any file the run writes are refused (status 1)
  -h, --help           show this help and exit
      --version        show the version and exit

Node names that are not valid UTF-8 (or hold characters XML cannot carry)
are written in GraphML, JSON and SVG with each such byte as \xHH.
Exit status: 0 on success, 1 when the results cannot be read or written,
2 on a command-line error.
)";
}

}  // namespace kcp
