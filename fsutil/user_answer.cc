#include "fsutil/user_answer.h"

#include <iostream>

#include "core/xerror_msg.h"

namespace kcp {

void Stop_interactively() {
  throw Xerror_msg("stopped interactively by user.");
}

char Read_answer_char() {
  char answer = '\0';
  if (!(std::cin >> answer)) Stop_interactively();
  return answer;
}

std::string Read_answer_word() {
  std::string word;
  if (!(std::cin >> word)) Stop_interactively();
  return word;
}

}  // namespace kcp
