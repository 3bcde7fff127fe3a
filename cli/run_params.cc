#include "cli/run_params.h"

#include <algorithm>
#include <cerrno>
#include <climits>

#include "cli/base_text.h"
#include "cli/usage.h"
#include "core/xerror_msg.h"
#include "fsutil/path_query.h"
#include "graph/link_reader.h"
#include "text/conversions.h"

namespace kcp {

namespace {

constexpr std::uint32_t kDefaultDigits = 6;

// Enough decimals for the first 200 characters of a name of any longer count of digits to be
// those of the full name: beyond the decimals computed from the value only zeros follow.
constexpr std::uint32_t kShownDigits = 256;

bool Has(const ParamTable& params, const std::string& name) {
  return params.count(name) > 0;
}

}  // namespace

void Examin_params(const ParamTable& params, bool& lower_flag, double& lower, bool& upper_flag,
                   double& upper, bool& digits_flag, std::uint32_t& digits, bool& out_flag,
                   std::string& out_path, std::string& input_file, bool& help_flag, bool& time_flag,
                   double& max_time, bool& directed, bool& intensity_flag, double& intensity,
                   bool& fixed_k_flag, std::uint32_t& fixed_k, bool& error_flag,
                   std::string& errors) {
  if (!Check_keys(params)) {
    errors += "unknown parameter in parameter list! (Check_keys()).\n";
    error_flag = true;
    return;
  }
  if (Has(params, "-h")) help_flag = true;
  if (Has(params, "-i")) {
    Get_param(input_file, "-i", params, errors, error_flag);
  } else {
    error_flag = true;
    errors += "You must specify an input file.\n";
  }
  if (Has(params, "-w")) {
    Get_param(lower, "-w", params, errors, error_flag);
    lower_flag = true;
  }
  if (Has(params, "-W")) {
    Get_param(upper, "-W", params, errors, error_flag);
    upper_flag = true;
  }
  if (Has(params, "-o")) {
    bool unreadable = false;
    Get_param(out_path, "-o", params, errors, unreadable);
    // An empty path cannot name a directory; it is refused like any unreadable value.
    if (!unreadable && out_path.empty()) {
      errors += " Unable to interpret the value '' for switch -o.\n";
      unreadable = true;
    }
    if (unreadable) error_flag = true;
    out_flag = true;
  }
  if (Has(params, "-d")) {
    Get_param(digits, "-d", params, errors, error_flag);
    digits_flag = true;
  }
  if (Has(params, "-t")) {
    Get_param(max_time, "-t", params, errors, error_flag);
    time_flag = true;
  }
  if (Has(params, "-D")) directed = true;
  if (Has(params, "-I")) {
    Get_param(intensity, "-I", params, errors, error_flag);
    intensity_flag = true;
  }
  if (Has(params, "-k")) {
    Get_param(fixed_k, "-k", params, errors, error_flag);
    fixed_k_flag = true;
  }
  const bool undirected = Has(params, "-U");
  if (!Check_switches(time_flag, max_time, lower_flag, upper_flag, lower, upper, directed,
                      intensity_flag, undirected, errors)) {
    error_flag = true;
  }
}

bool Check_switches(const bool& time_flag, const double& max_time, const bool& lower_flag,
                    const bool& upper_flag, const double& lower, const double& upper,
                    const bool& directed, const bool& intensity_flag, const bool& undirected,
                    std::string& errors) {
  bool consistent = true;
  if (time_flag && max_time <= 0) {
    errors += " The maximal allowed time per node must be positive.\n";
    consistent = false;
  }
  if (lower_flag && upper_flag && lower >= upper) {
    errors += " The sepcified lower threshold is higher (or equal to) the upper threshold.\n";
    consistent = false;
  }
  if (directed && intensity_flag) {
    errors +=
        " The search algorithm cannot apply the link weight \n intensity condition when looking "
        "for directed communities.\n";
    consistent = false;
  }
  if (intensity_flag && time_flag) {
    errors +=
        " The search algorithm cannot apply the maximal time \n per node condition when a link "
        "weight intensity condition is set as well.\n";
    consistent = false;
  }
  if (undirected && directed) {
    errors +=
        " The program cannot apply the dirrected and undirected\n search algorithm at the same "
        "time.\n";
    consistent = false;
  }
  return consistent;
}

void Generate_com_flag(std::string& com_flag, const bool& directed, const bool& intensity_flag) {
  com_flag.clear();
  if (directed) com_flag = "directed";
  if (intensity_flag) com_flag = "intensity";
}

std::string Results_dir_path(const std::string& input_file, const bool& lower_flag,
                             const double& lower, const bool& upper_flag, const double& upper,
                             const std::uint32_t& digits, const bool& directed,
                             const bool& out_flag, const std::string& out_path,
                             const bool& intensity_flag, const double& intensity) {
  // -o replaces the whole derived name, which is then not built: with a large -d its threshold
  // parts alone could take gigabytes.
  std::string path = out_flag ? out_path : input_file + "_files";
  if (!out_flag) {
    if (lower_flag) path += "_" + double2string(lower, digits);
    if (lower_flag || upper_flag) path += "_w";
    if (upper_flag) path += "_" + double2string(upper, digits);
    if (directed) path += "-d";
  }
  // After the -o replacement on purpose: -o and -I together give the -o path with the suffix.
  if (intensity_flag) path += "-w-th" + double2string(intensity, digits);
  return path;
}

std::size_t Results_dir_path_length(const std::string& input_file, const bool& lower_flag,
                                    const double& lower, const bool& upper_flag,
                                    const double& upper, const std::uint32_t& digits,
                                    const bool& directed, const bool& out_flag,
                                    const std::string& out_path, const bool& intensity_flag,
                                    const double& intensity) {
  std::size_t length = input_file.size() + 6;
  if (lower_flag) length += 1 + double2string_length(lower, digits);
  if (lower_flag || upper_flag) length += 2;
  if (upper_flag) length += 1 + double2string_length(upper, digits);
  if (directed) length += 2;
  if (out_flag) length = out_path.size();
  if (intensity_flag) length += 5 + double2string_length(intensity, digits);
  return length;
}

void Process_input(const int& argc, char** const& argv, std::string& out_dir, LinkMap& links,
                   double& max_time, bool& time_flag, bool& directed, bool& intensity_flag,
                   double& intensity, bool& fixed_k_flag, std::uint32_t& fixed_k, bool& weighted,
                   std::string& com_flag, std::string& alap_szoveg) {
  const Switches switches(argc, argv);
  const ParamTable params(switches.Params());
  const std::string prog = switches.Prog_name();

  bool lower_flag = false;
  bool upper_flag = false;
  bool digits_flag = false;
  bool out_flag = false;
  bool help_flag = false;
  bool error_flag = false;
  double lower = 0.0;
  double upper = 0.0;
  double time_value = 0.0;
  std::uint32_t digits_value = kDefaultDigits;
  std::string out_path;
  std::string input_file;
  std::string errors;
  time_flag = false;
  directed = false;
  intensity_flag = false;
  fixed_k_flag = false;
  weighted = false;

  Examin_params(params, lower_flag, lower, upper_flag, upper, digits_flag, digits_value, out_flag,
                out_path, input_file, help_flag, time_flag, time_value, directed, intensity_flag,
                intensity, fixed_k_flag, fixed_k, error_flag, errors);

  if (help_flag) {
    Print_detailed_usage(prog);
    throw Xerror_msg("");
  }
  if (error_flag) {
    Print_usage(prog, errors);
    throw Xerror_msg("");
  }

  const std::uint32_t digits = digits_flag ? digits_value : kDefaultDigits;
  const std::size_t out_dir_length =
      Results_dir_path_length(input_file, lower_flag, lower, upper_flag, upper, digits, directed,
                              out_flag, out_path, intensity_flag, intensity);
  // A name of PATH_MAX characters or more fails at the creation of the directory whatever it
  // says; -d takes any count, so only the start of such a name is built, not gigabytes of it.
  const bool out_dir_too_long = out_dir_length >= PATH_MAX;
  out_dir = Results_dir_path(input_file, lower_flag, lower, upper_flag, upper,
                             out_dir_too_long ? std::min(digits, kShownDigits) : digits, directed,
                             out_flag, out_path, intensity_flag, intensity);
  if (time_flag) max_time = time_value;
  if (!lower_flag && !upper_flag && !intensity_flag) {
    Read_unw_links(input_file, links);
  } else {
    Read_weighted_links(input_file, links, lower_flag, lower, upper_flag, upper);
    weighted = true;
  }
  // Where the directory would have been made, with the failure its creation reports.
  if (out_dir_too_long) throw Xerror_msg(Make_dir_failure(out_dir, out_dir_length, ENAMETOOLONG));
  Generate_com_flag(com_flag, directed, intensity_flag);
  Generate_alap_szoveg(alap_szoveg, input_file, lower_flag, lower, upper_flag, upper);
}

}  // namespace kcp
