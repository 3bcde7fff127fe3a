#include "cliques/search_report.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace kcp {
namespace {

using namespace Clique_find_report_sub_routines;

// The common blocks are pinned by the searches' own tests; these are the corner cases.
TEST(SearchReport, ProgressBlocksAreUnderlinedByTheLongerHeaderAndSurviveAZeroTotal) {
  std::ostringstream out;
  Report_progress("", "units", 5, 10, out);
  Report_progress("ab", "nodes", 0, 0, out);
  Report_progress("x", "nodes", 0, 4, out);
  Report_progress(" Generating k-cliques:", " k=4", "cliques", 7, 8, out);
  Report_progress("ab", "abcde", "nodes", 2, 2, out);
  EXPECT_EQ(out.str(),
            "_\n\n 5 of 10 units to do (50.00% done)\n"
            "__\nab\n 0 of 0 nodes to do (0.00% done)\n"
            "_\nx\n 0 of 4 nodes to do (100.00% done)\n"
            "______________________\n Generating k-cliques:\n k=4\n"
            " 7 of 8 cliques to do (12.50% done)\n"
            "_____\nab\nabcde\n 2 of 2 nodes to do (0.00% done)\n");
}

// A percentage exactly halfway between two hundredths is rounded as the stream rounds the
// quotient, to even (1/32 = 3.125 %, 3/32 = 9.375 %); the others to nearest.
TEST(SearchReport, PercentagesHalfwayBetweenHundredthsRoundToEven) {
  std::ostringstream out;
  Report_progress("x", "nodes", 31, 32, out);
  Report_progress("x", "nodes", 29, 32, out);
  Report_progress("x", "nodes", 2, 3, out);
  EXPECT_EQ(out.str(),
            "_\nx\n 31 of 32 nodes to do (3.12% done)\n"
            "_\nx\n 29 of 32 nodes to do (9.38% done)\n"
            "_\nx\n 2 of 3 nodes to do (33.33% done)\n");
}

}  // namespace
}  // namespace kcp
