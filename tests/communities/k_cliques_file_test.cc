#include "communities/k_cliques_file.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using kcp::testing::Read_file;
using kcp::testing::Test_dir;

const char kAlap[] = " from net.txt\n# second line\n";

TEST(KCliquesFile, HeaderThenNumberedRecordsOfNames) {
  Test_dir dir;
  NameMap names{{1, "alpha"}, {2, "b"}, {3, "c"}, {4, "d"}, {10, "ten"}};
  const KCliqueSet k_cliques{{2, 3, 10}, {1, 2, 3}, {1, 3, 4}};
  Kiir_k_cliques_VN(dir.path(), k_cliques, 3, names, kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/k-cliques"),
            "# The k-cliques at k=3 from net.txt\n"
            "# second line\n"
            "\n"
            "0: alpha b c \n"
            "1: alpha c d \n"
            "2: b c ten \n");
}

TEST(KCliquesFile, EmptySetWritesTheHeaderOnlyAndExistingFileIsReplaced) {
  Test_dir dir;
  NameMap names{{1, "a"}, {2, "b"}, {3, "c"}, {4, "d"}};
  Kiir_k_cliques_VN(dir.path(), {{1, 2, 3, 4}}, 12, names, kAlap);
  Kiir_k_cliques_VN(dir.path(), {}, 12, names, kAlap);
  EXPECT_EQ(Read_file(dir / "k=12/k-cliques"),
            "# The k-cliques at k=12 from net.txt\n# second line\n\n");
}

TEST(KCliquesFile, UnknownNodeIsWrittenAsAnEmptyName) {
  Test_dir dir;
  NameMap names{{1, "a"}, {3, "c"}};
  Kiir_k_cliques_VN(dir.path(), {{1, 2, 3}}, 3, names, kAlap);
  EXPECT_EQ(Read_file(dir / "k=3/k-cliques"),
            "# The k-cliques at k=3 from net.txt\n# second line\n\n0: a  c \n");
  EXPECT_EQ(names.count(2), 1u);
}

}  // namespace
}  // namespace kcp
