// The program's own switches turned into the run's parameters. Process_input parses and checks
// the command line, prints the detailed help (-h) or the usage with every problem found and then
// throws Xerror_msg with the empty message; otherwise it derives the results directory path,
// reads the link file (the reader's exceptions pass through), and builds the community flag and
// the first lines of the base text. A results directory name of PATH_MAX characters or more is
// refused after the link file was read, with the Make_dir failure its creation would throw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "cli/switches.h"
#include "core/types.h"

namespace kcp {

void Process_input(const int& argc, char** const& argv, std::string& out_dir, LinkMap& links,
                   double& max_time, bool& time_flag, bool& directed, bool& intensity_flag,
                   double& intensity, bool& fixed_k_flag, std::uint32_t& fixed_k, bool& weighted,
                   std::string& com_flag, std::string& alap_szoveg);

// Reads every switch of the table into its flag and value, appending the messages of all problems
// to `errors` (and setting `error_flag`). An unknown switch or a value before the first switch
// is reported alone and stops the examination. Values of absent switches are left untouched.
void Examin_params(const ParamTable& params, bool& lower_flag, double& lower, bool& upper_flag,
                   double& upper, bool& digits_flag, std::uint32_t& digits, bool& out_flag,
                   std::string& out_path, std::string& input_file, bool& help_flag, bool& time_flag,
                   double& max_time, bool& directed, bool& intensity_flag, double& intensity,
                   bool& fixed_k_flag, std::uint32_t& fixed_k, bool& error_flag,
                   std::string& errors);

// Runs every consistency test, appending the message of each failed one; true when none failed.
bool Check_switches(const bool& time_flag, const double& max_time, const bool& lower_flag,
                    const bool& upper_flag, const double& lower, const double& upper,
                    const bool& directed, const bool& intensity_flag, const bool& undirected,
                    std::string& errors);

// "" by default, "directed" with -D, "intensity" with -I (which wins).
void Generate_com_flag(std::string& com_flag, const bool& directed, const bool& intensity_flag);

// The results directory: input file + "_files" with the thresholds (written with `digits`
// decimals) and "-d" for a directed run, or the -o path instead; the intensity suffix
// "-w-th<value>" is appended in both cases.
std::string Results_dir_path(const std::string& input_file, const bool& lower_flag,
                             const double& lower, const bool& upper_flag, const double& upper,
                             const std::uint32_t& digits, const bool& directed,
                             const bool& out_flag, const std::string& out_path,
                             const bool& intensity_flag, const double& intensity);

// The length of Results_dir_path's name for the same arguments, found without building it.
std::size_t Results_dir_path_length(const std::string& input_file, const bool& lower_flag,
                                    const double& lower, const bool& upper_flag,
                                    const double& upper, const std::uint32_t& digits,
                                    const bool& directed, const bool& out_flag,
                                    const std::string& out_path, const bool& intensity_flag,
                                    const double& intensity);

}  // namespace kcp
