#include "cliques/search_report.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace kcp {
namespace {

using namespace Clique_find_report_sub_routines;

std::string Progress(const std::string& header, const std::string& unit,
                     const std::uint32_t& remaining, const std::uint32_t& total) {
  std::ostringstream out;
  Report_progress(header, unit, remaining, total, out);
  return out.str();
}

// The common blocks are pinned by the searches' own tests; these are the corner cases.
TEST(SearchReport, EmptyHeaderAndZeroTotal) {
  EXPECT_EQ(Progress("", "units", 5, 10), "_\n\n 5 of 10 units to do (50.00% done)\n");
  EXPECT_EQ(Progress("ab", "nodes", 0, 0), "__\nab\n 0 of 0 nodes to do (0.00% done)\n");
  EXPECT_EQ(Progress("x", "nodes", 0, 4), "_\nx\n 0 of 4 nodes to do (100.00% done)\n");
}

TEST(SearchReport, TwoLineHeaderIsUnderlinedByTheLongerLine) {
  std::ostringstream out;
  Report_progress(" Generating k-cliques:", " k=4", "cliques", 7, 8, out);
  EXPECT_EQ(out.str(),
            "______________________\n Generating k-cliques:\n k=4\n"
            " 7 of 8 cliques to do (12.50% done)\n");
  std::ostringstream second_longer;
  Report_progress("ab", "abcde", "nodes", 2, 2, second_longer);
  EXPECT_EQ(second_longer.str(), "_____\nab\nabcde\n 2 of 2 nodes to do (0.00% done)\n");
}

}  // namespace
}  // namespace kcp
