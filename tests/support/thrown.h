// What an action throws, as text, for tests that pin exact error messages.
#pragma once

#include <string>

namespace kcp::testing {

// The what() of the exception of type E the action throws, or "no exception".
template <typename E, typename Action>
std::string What(Action action) {
  try {
    action();
  } catch (const E& e) {
    return e.what();
  }
  return "no exception";
}

}  // namespace kcp::testing
