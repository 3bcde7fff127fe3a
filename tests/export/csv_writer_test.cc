#include "export/csv_writer.h"

#include <gtest/gtest.h>

#include <sstream>

#include "tests/export/sample_results.h"

namespace kcp {
namespace {

using testing::Community;

TEST(CsvWriter, WritesOneRowPerNodeOfEveryCommunity) {
  const std::string header = "k,community,approximate,node\n";
  RunResults minus_zero = testing::At_k(3, {Community(0, {"p"}, {}), Community(-1, {"q"}, {})});
  minus_zero.per_k[0].communities[0].approximate = true;
  const std::vector<std::pair<RunResults, std::string>> cases = {
      {testing::Undirected_sample(),
       header + "3,0,false,a\n3,0,false,b\n3,0,false,c\n3,-1,true,b\n3,-1,true,c\n3,-1,true,d\n"},
      // The approximate community 0 is written "-0".
      {minus_zero, header + "3,-0,true,p\n3,-1,true,q\n"},
      {RunResults{}, header},
      // Only names holding a comma or a double quote are quoted; other bytes stay as they are.
      {testing::At_k(5, {Community(2, {"a,b", "say\"hi\"", "plain", "\xFF;x"}, {})}),
       header + "5,2,false,\"a,b\"\n5,2,false,\"say\"\"hi\"\"\"\n5,2,false,plain\n"
                "5,2,false,\xFF;x\n"},
  };
  for (const auto& [results, expected] : cases) {
    SCOPED_TRACE(expected);
    std::ostringstream out;
    Write_community_csv(results, out);
    EXPECT_EQ(out.str(), expected);
  }
}

}  // namespace
}  // namespace kcp
