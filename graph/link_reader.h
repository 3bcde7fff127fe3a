// Reads a link file into the LinkMap. Each line holds a source name, a target name and, for the
// weighted reader, a weight; empty lines and lines starting with '#' are skipped, self-links are
// dropped. The unweighted reader stores 0.0 for every pair; the weighted one sums the weights of
// the lines of an ordered pair whose own weight lies strictly between the thresholds in force.
// Throws Xep_file_not_found (LinkMap untouched), Xep_compressed_file when the file begins as a
// gzip, bzip2, xz, zstd or zip file does (LinkMap emptied), Xep_wrong_line at the first
// unreadable line, Xep_line_too_long at a line of more than 2^28 bytes, or Xep_read_file when the
// file cannot be read; links read before the failure stay.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/types.h"

namespace kcp {

class Xep_read_file : public std::logic_error {
 public:
  Xep_read_file();
  explicit Xep_read_file(const std::string& file);
  const char* what() const noexcept override;

  std::string file;

 protected:
  // The finished text, kept here so that what() stays valid as long as the exception.
  std::string message_;
};

class Xep_file_not_found : public Xep_read_file {
 public:
  explicit Xep_file_not_found(const std::string& file);
};

class Xep_wrong_line : public Xep_read_file {
 public:
  explicit Xep_wrong_line(const std::string& line);
  Xep_wrong_line(const std::string& line, const std::string& file);

  std::string line;
};

// A compressed file given as the link file: kind names its format, tool a program that
// decompresses it.
class Xep_compressed_file : public Xep_read_file {
 public:
  Xep_compressed_file(const std::string& file, const std::string& kind, const std::string& tool);
};

// A line longer than any link file holds (the input is something else, or endless).
class Xep_line_too_long : public Xep_read_file {
 public:
  Xep_line_too_long(const std::string& file, const std::uint64_t& line, const std::size_t& longest);
};

void Read_unw_links(const std::string& file, LinkMap& links);
void Read_weighted_links(const std::string& file, LinkMap& links, const bool& lower_flag,
                         const double& lower, const bool& upper_flag, const double& upper);
// Reads one weight token exactly as `std::istream >> double` reads it from a line holding the
// token (so "1.5abc" gives 1.5); false, with weight untouched, when that extraction fails.
bool Read_weight_token(std::string_view token, double& weight);
// Both bounds strict; a NaN weight passes only when no threshold is in force.
bool Link_in_interval(const double& w, const bool& lower_flag, const double& lower,
                      const bool& upper_flag, const double& upper);

}  // namespace kcp
