#include "export/export_run.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "core/xerror_msg.h"
#include "export/csv_writer.h"
#include "export/export_network.h"
#include "export/export_options.h"
#include "export/graphml_writer.h"
#include "export/json_writer.h"
#include "export/svg_plots.h"
#include "results/completeness.h"
#include "results/run_results.h"

namespace kcp {

namespace {

constexpr const char* kProgram = "varnel-export";

void Report(std::ostream& err, std::string message) {
  while (!message.empty() && (message.back() == '\n' || message.back() == ' ')) {
    message.pop_back();
  }
  // The readers' messages carry the run's "ERROR: " prefix; the program name stands for it here.
  if (message.starts_with("ERROR: ")) message.erase(0, 7);
  err << kProgram << ": " << message << '\n';
  err.flush();
}

void Check_results_dir(const std::string& dir) {
  namespace fs = std::filesystem;
  std::error_code error;
  if (!fs::is_directory(dir, error)) {
    throw Xerror_msg(fs::exists(dir, error) ? dir + " is not a directory"
                                            : "no such directory: " + dir);
  }
  if (!fs::is_regular_file(fs::path(dir) / "graph", error) &&
      !fs::is_regular_file(fs::path(dir) / "directed_graph", error)) {
    throw Xerror_msg(dir + " is not a results directory of varnel (it holds no graph file)");
  }
}

// `path` with a chain of symbolic links at its end followed, then made canonical as far as it
// exists: where opening it for writing would create or truncate a file.
std::filesystem::path Write_target(const std::string& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  fs::path target = fs::absolute(path, error);
  // A dangling link is followed too: writing through it creates the file it names.
  for (int hops = 0; hops < 40 && fs::is_symlink(fs::symlink_status(target, error)); ++hops) {
    const fs::path next = fs::read_symlink(target, error);
    if (error) break;
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  const fs::path canonical = fs::weakly_canonical(target, error);
  return error ? target.lexically_normal() : canonical;
}

bool Lies_within(const std::filesystem::path& path, const std::filesystem::path& root) {
  auto at = path.begin();
  for (const auto& part : root) {
    if (part.empty()) continue;  // the trailing separator of a root like "/"
    if (at == path.end() || *at != part) return false;
    ++at;
  }
  return true;
}

// The export must never replace the files it reads: an output anywhere inside the results
// directory (through symbolic links too) is refused before anything is read or written.
void Check_output_outside(const std::string& output, const std::string& dir) {
  std::error_code error;
  const std::filesystem::path root = std::filesystem::canonical(dir, error);
  if (error) return;  // the results directory is checked on its own
  if (Lies_within(Write_target(output), root)) {
    throw Xerror_msg("refusing to write " + output + ": it lies inside the results directory " +
                     dir + ", whose files it would overwrite; choose a file outside it");
  }
}

RunResults Read_checked(const ExportOptions& options, std::ostream& err) {
  Check_results_dir(options.results_dir);
  if (!options.output.empty()) Check_output_outside(options.output, options.results_dir);
  RunResults results = Read_results_dir(options.results_dir, options.k, options.allow_incomplete);
  if (options.k) {
    // The reader keeps only the asked-for k; anything else would be a reader fault.
    std::erase_if(results.per_k, [&](const KResults& at_k) { return at_k.k != *options.k; });
    if (results.per_k.empty()) {
      throw Xerror_msg(options.results_dir +
                       " holds no results for k=" + std::to_string(*options.k));
    }
  }
  std::string gaps;
  if (!results.missing.empty()) gaps += "; missing " + Missing_summary(results.missing);
  if (results.cut.size() == 1) {
    gaps += "; the last line of " + results.cut[0] + " was cut short and is left out";
  } else if (results.cut.size() > 1) {
    gaps +=
        "; the last lines of " + Missing_summary(results.cut) + " were cut short and are left out";
  }
  if (!gaps.empty()) Report(err, "warning: exporting incomplete results" + gaps);
  return results;
}

std::string Results_name(const std::string& dir) {
  std::filesystem::path path(dir);
  while (path.has_relative_path() && path.filename().empty()) path = path.parent_path();
  const std::string name = path.filename().string();
  return name.empty() || name == "." || name == ".." ? dir : name;
}

void Write_format(const ExportOptions& options, const RunResults& results, std::ostream& out) {
  switch (options.format) {
    case ExportFormat::kGraphml:
      Write_graphml(results, Build_export_network(results), out);
      break;
    case ExportFormat::kJson:
      Write_node_link_json(results, Build_export_network(results), out);
      break;
    case ExportFormat::kCsv:
      Write_community_csv(results, out);
      break;
    case ExportFormat::kSvg:
      Write_svg_plots(results, Results_name(options.results_dir), out);
      break;
  }
}

// Removes what a failed export left; never a device or anything but a plain file (-o /dev/full).
void Remove_partial(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_regular_file(std::filesystem::symlink_status(path, ignored))) {
    std::filesystem::remove(path, ignored);
  }
}

void Write_to_file(const ExportOptions& options, const RunResults& results) {
  std::ofstream file(options.output, std::ios::binary | std::ios::trunc);
  if (!file) {
    throw Xerror_msg("cannot open " + options.output + " for writing: " + std::strerror(errno));
  }
  try {
    Write_format(options, results, file);
    file.close();
  } catch (...) {
    file.close();
    Remove_partial(options.output);
    throw;
  }
  if (file.fail()) {
    Remove_partial(options.output);
    throw Xerror_msg("could not write " + options.output);
  }
}

}  // namespace

int Run_export(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  ExportOptions options;
  try {
    options = Parse_export_options(args);
  } catch (const Xerror_msg& error) {
    Report(err, error.what());
    err << "Try '" << kProgram << " --help' for more information.\n";
    return 2;
  }
  if (options.help) {
    out << Export_help_text();
    out.flush();
    return out ? 0 : 1;
  }
  if (options.version) {
    out << kProgram << " 1.0\n";
    out.flush();
    return out ? 0 : 1;
  }
  try {
    const RunResults results = Read_checked(options, err);
    if (!options.output.empty()) {
      Write_to_file(options, results);
      return 0;
    }
    Write_format(options, results, out);
    out.flush();
    if (!out) throw Xerror_msg("could not write to standard output");
    return 0;
  } catch (const Xincomplete_results& error) {
    Report(err, std::string(error.what()) + " (--allow-incomplete exports what is there)");
  } catch (const Xerror_msg& error) {
    Report(err, error.what());
  } catch (const std::bad_alloc&) {
    Report(err, "out of memory");
  } catch (const std::exception& error) {
    Report(err, std::string("unexpected error: ") + error.what());
  }
  return 1;
}

}  // namespace kcp
