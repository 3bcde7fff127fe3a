#include "fsutil/user_answer.h"

#include <gtest/gtest.h>

#include <string>

#include "core/xerror_msg.h"
#include "tests/fsutil/console_session.h"

namespace kcp {
namespace {

using testing::Console_session;

TEST(UserAnswer, CharSkipsWhiteSpaceAndLeavesTheRestOfTheLine) {
  Console_session console(" \n\t Kx y\n");
  EXPECT_EQ(Read_answer_char(), 'K');
  EXPECT_EQ(console.Unread(), "x y\n");
  EXPECT_EQ(console.Output(), "");
}

TEST(UserAnswer, WordIsWhitespaceDelimited) {
  Console_session console("\n  new/path.txt  rest");
  EXPECT_EQ(Read_answer_word(), "new/path.txt");
  EXPECT_EQ(console.Unread(), "  rest");
}

TEST(UserAnswer, EndOfInputStops) {
  for (const std::string input : {"", "   \n\n "}) {
    {
      Console_session console(input);
      try {
        Read_answer_char();
        FAIL() << "no exception";
      } catch (const Xerror_msg& e) {
        EXPECT_STREQ(e.what(), "stopped interactively by user.");
      }
    }
    Console_session console(input);
    EXPECT_THROW(Read_answer_word(), Xerror_msg);
  }
}

}  // namespace
}  // namespace kcp
