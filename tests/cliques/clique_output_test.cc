#include "cliques/clique_output.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/support/test_dir.h"

namespace kcp {
namespace {

using testing::Read_file;

TEST(CliqueOutput, WritesEveryCliqueByNameUnderTheHeaderOfItsKind) {
  const std::string plain = "# The cliques from net.txt\n# second line\n";
  const std::string note = "# Negative indices indicate approximate cliques.\n";
  const struct {
    CliqueList cliques;
    std::uint32_t n_exact;
    std::string kind;
    std::string file;
    std::string expected;
  } cases[] = {
      {{{1, 2, 3}, {3, 4, 5}}, 2, "", "cliques", plain + "\n0: a b c x \n1: x d e \n"},
      {{{1, 4, 5}},
       1,
       "directed",
       "directed_cliques",
       "# The directed cliques from net.txt\n# second line\n\n0: a d e \n"},
      {{{1, 4, 5}}, 1, "intensity", "cliques", plain + "\n0: a d e \n"},
      {{{1, 2, 3}, {3, 4, 5}, {1, 5}, {2}},
       2,
       "",
       "cliques",
       plain + note + "\n0: a b c x \n1: x d e \n-2: a e \n-3: b c \n"},
      {{{4, 5}, {1, 2}}, 0, "", "cliques", plain + note + "\n-0: d e \n-1: a b c \n"},
      {{}, 0, "", "cliques", plain + "\n"},
      {{{1, 4, 99}}, 3, "", "cliques", plain + "\n0: a d  \n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.expected);
    testing::TestDir dir;
    const std::string results = dir / "results";
    std::filesystem::create_directory(results);
    testing::Write_file(results + "/graph", "kept\n");
    NameMap names{{1, "a"}, {2, "b c"}, {3, "x"}, {4, "d"}, {5, "e"}};
    Kiir_cliques_VN(results, c.cliques, names, c.n_exact, c.kind, " from net.txt\n# second line\n");
    EXPECT_EQ(Read_file(results + "/" + c.file), c.expected);
    EXPECT_EQ(Read_file(results + "/graph"), "kept\n");
    EXPECT_EQ(std::filesystem::exists(results + "/cliques"), c.file == "cliques");
    Kiir_cliques_VN(dir / "fresh", c.cliques, names, c.n_exact, c.kind,
                    " from net.txt\n# second line\n");
    EXPECT_EQ(Read_file(dir / "fresh/" + c.file), c.expected);
  }
}

}  // namespace
}  // namespace kcp
