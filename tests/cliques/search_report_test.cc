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

TEST(SearchReport, ProgressBlockUnderlinesHeaderAndCountsDone) {
  EXPECT_EQ(Progress(" Locating cliques:", "nodes", 3, 3),
            "__________________\n Locating cliques:\n 3 of 3 nodes to do (0.00% done)\n");
  EXPECT_EQ(Progress(" Locating cliques:", "nodes", 1, 3),
            "__________________\n Locating cliques:\n 1 of 3 nodes to do (66.67% done)\n");
  EXPECT_EQ(Progress(" Locating dir. cliques:", "nodes", 1, 8),
            "_______________________\n Locating dir. cliques:\n"
            " 1 of 8 nodes to do (87.50% done)\n");
  EXPECT_EQ(Progress("x", "nodes", 0, 4), "_\nx\n 0 of 4 nodes to do (100.00% done)\n");
}

TEST(SearchReport, EmptyHeaderStillGetsOneUnderscore) {
  EXPECT_EQ(Progress("", "units", 5, 10), "_\n\n 5 of 10 units to do (50.00% done)\n");
}

TEST(SearchReport, ZeroTotalIsReportedAsNothingDone) {
  EXPECT_EQ(Progress("ab", "nodes", 0, 0), "__\nab\n 0 of 0 nodes to do (0.00% done)\n");
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

TEST(SearchReport, ClosingBlockUnderlineFollowsWordAndDigits) {
  std::ostringstream out;
  Report_clique_search_end("cliques", 12, out);
  EXPECT_EQ(out.str(), std::string(29, '_') + "\n Altogether 12 cliques found.\n");

  std::ostringstream none;
  Report_clique_search_end("directed cliques", 0, none);
  EXPECT_EQ(none.str(), std::string(37, '_') + "\n Altogether 0 directed cliques found.\n");

  std::ostringstream noted;
  Report_clique_search_end("cliques", 1234, " no approximation was needed", noted);
  EXPECT_EQ(noted.str(), std::string(31, '_') +
                             "\n Altogether 1234 cliques found.\n no approximation was needed\n");
}

TEST(SearchReport, HardNodeAndAllTooSlowTexts) {
  std::ostringstream hard;
  Report_hard_node(17, 2, 8, hard);
  EXPECT_EQ(hard.str(),
            " Exceeded allowed time at node no.17,\n"
            " skipping, 2 out of 8 skipped in a row, (25.00%)\n");
  std::ostringstream third;
  Report_hard_node(5, 1, 3, third);
  EXPECT_EQ(third.str(),
            " Exceeded allowed time at node no.5,\n"
            " skipping, 1 out of 3 skipped in a row, (33.33%)\n");

  std::ostringstream slow;
  Report_all_rem_nodes_to_hard("cliques", slow);
  EXPECT_EQ(slow.str(), std::string(50, '_') +
                            "\n The extraction of cliques has been found too slow \n"
                            " at all of the remaining nodes.\n");
}

}  // namespace
}  // namespace kcp
