#include "cliques/search_report.h"

#include <algorithm>
#include <cstdint>
#include <iomanip>
#include <sstream>

#include "text/console.h"

namespace kcp::Clique_find_report_sub_routines {

namespace {

// part * 100 / whole with 2 decimals, as a stream in fixed notation writes the long double
// quotient. A whole of 0 would divide by zero; no search reports on an empty graph, and 0.00 is
// written should it ever happen.
std::string Percentage(const long double& part, const std::uint32_t& whole) {
  const long double value = whole == 0 ? 0.0L : part * 100.0L / static_cast<long double>(whole);
  // A count of at most `whole` has the rounded quotient in integers: the quotient is within
  // 2^-57 of part * 100 / whole, which is either exactly halfway between two hundredths or at
  // least 2^-40 away from it, so only an exact half needs the stream's own rounding.
  if (whole != 0 && part >= 0 && part <= whole && part == static_cast<std::uint32_t>(part)) {
    const std::uint64_t twice = static_cast<std::uint64_t>(part) * 20000;  // 2 * hundredths * whole
    const bool half = twice % whole == 0 && twice / whole % 2 == 1;
    if (!half) {
      const std::uint64_t hundredths = (twice / whole + 1) / 2;
      const std::uint64_t cents = hundredths % 100;
      return std::to_string(hundredths / 100) + (cents < 10 ? ".0" : ".") + std::to_string(cents);
    }
  }
  std::ostringstream stream;
  stream << std::fixed << std::setprecision(2) << value;
  return stream.str();
}

void Count_line(const std::string& unit, const std::uint32_t& remaining, const std::uint32_t& total,
                std::ostream& out) {
  out << ' ' << remaining << " of " << total << ' ' << unit << " to do ("
      << Percentage(static_cast<long double>(total) - static_cast<long double>(remaining), total)
      << "% done)\n";
}

}  // namespace

void Report_progress(const std::string& header, const std::string& unit,
                     const std::uint32_t& remaining, const std::uint32_t& total,
                     std::ostream& out) {
  out << Underscores(header.size()) << '\n' << header << '\n';
  Count_line(unit, remaining, total, out);
}

void Report_progress(const std::string& header, const std::string& second_header,
                     const std::string& unit, const std::uint32_t& remaining,
                     const std::uint32_t& total, std::ostream& out) {
  out << Underscores(std::max(header.size(), second_header.size())) << '\n'
      << header << '\n'
      << second_header << '\n';
  Count_line(unit, remaining, total, out);
}

void Report_clique_search_end(const std::string& word, const std::size_t& count,
                              std::ostream& out) {
  const std::string number = std::to_string(count);
  out << Underscores(word.size() + number.size() + 20) << '\n'
      << " Altogether " << number << ' ' << word << " found.\n";
}

void Report_clique_search_end(const std::string& word, const std::size_t& count,
                              const std::string& note, std::ostream& out) {
  Report_clique_search_end(word, count, out);
  out << note << '\n';
}

void Report_hard_node(const NodeIndex& v, const std::uint32_t& skipped,
                      const std::uint32_t& remaining, std::ostream& out) {
  out << " Exceeded allowed time at node no." << v << ",\n"
      << " skipping, " << skipped << " out of " << remaining << " skipped in a row, ("
      << Percentage(skipped, remaining) << "%)\n";
}

void Report_all_rem_nodes_to_hard(const std::string& word, std::ostream& out) {
  out << Underscores(word.size() + 43) << '\n'
      << " The extraction of " << word
      << " has been found too slow \n at all of the remaining nodes.\n";
}

}  // namespace kcp::Clique_find_report_sub_routines
