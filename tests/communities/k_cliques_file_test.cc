#include "communities/k_cliques_file.h"

#include <gtest/gtest.h>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

TEST(KCliquesFile, HeaderThenNumberedRecordsOfNamesReplacingAnEarlierFile) {
  testing::TestDir dir;
  NameMap names{{1, "alpha"}, {2, "b"}, {3, "c"}, {4, "d"}, {10, "ten"}};
  const char kAlap[] = " from net.txt\n# second line\n";
  Kiir_k_cliques_VN(dir.path(), {{1, 2, 3, 4, 10}}, 3, names, kAlap);
  Kiir_k_cliques_VN(dir.path(), {{2, 3, 10}, {1, 2, 3}, {1, 3, 9}}, 3, names, kAlap);
  EXPECT_EQ(testing::Read_file(dir / "k=3/k-cliques"),
            "# The k-cliques at k=3 from net.txt\n# second line\n\n"
            "0: alpha b c \n1: alpha c  \n2: b c ten \n");
  Kiir_k_cliques_VN(dir.path(), {}, 12, names, kAlap);
  EXPECT_EQ(testing::Read_file(dir / "k=12/k-cliques"),
            "# The k-cliques at k=12 from net.txt\n# second line\n\n");
}

}  // namespace
}  // namespace kcp
