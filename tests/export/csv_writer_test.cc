#include "export/csv_writer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/export/sample_results.h"

namespace kcp {
namespace {

std::string Csv_of(const RunResults& results) {
  std::ostringstream out;
  Write_community_csv(results, out);
  return out.str();
}

TEST(CsvWriter, WritesOneRowPerNodeOfEveryCommunity) {
  EXPECT_EQ(Csv_of(testing::Undirected_sample()),
            "k,community,approximate,node\n"
            "3,0,false,a\n"
            "3,0,false,b\n"
            "3,0,false,c\n"
            "3,-1,true,b\n"
            "3,-1,true,c\n"
            "3,-1,true,d\n");
}

TEST(CsvWriter, WritesTheApproximateCommunityZeroAsMinusZero) {
  RunResults results;
  KResults k3;
  k3.k = 3;
  k3.communities = {testing::Community(0, {"p"}, {}), testing::Community(-1, {"q"}, {})};
  k3.communities[0].approximate = true;
  results.per_k = {k3};
  EXPECT_EQ(Csv_of(results),
            "k,community,approximate,node\n"
            "3,-0,true,p\n"
            "3,-1,true,q\n");
}

TEST(CsvWriter, WritesTheHeaderAloneForAnEmptyRun) {
  EXPECT_EQ(Csv_of(RunResults{}), "k,community,approximate,node\n");
}

TEST(CsvWriter, QuotesNamesWithCommasOrQuotesOnly) {
  RunResults results;
  KResults k5;
  k5.k = 5;
  k5.communities = {testing::Community(2, {"a,b", "say\"hi\"", "plain", "\xFF;x"}, {})};
  results.per_k = {k5};
  EXPECT_EQ(Csv_of(results),
            "k,community,approximate,node\n"
            "5,2,false,\"a,b\"\n"
            "5,2,false,\"say\"\"hi\"\"\"\n"
            "5,2,false,plain\n"
            "5,2,false,\xFF;x\n");
}

}  // namespace
}  // namespace kcp
