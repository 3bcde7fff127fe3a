#include "results/record_numbers.h"

#include <limits>

namespace kcp {

bool Parse_unsigned(std::string_view token, std::uint32_t& value) {
  if (token.empty() || (token.size() > 1 && token[0] == '0')) return false;
  std::uint64_t v = 0;
  for (const char c : token) {
    if (c < '0' || c > '9') return false;
    v = v * 10 + static_cast<std::uint64_t>(c - '0');
    if (v > std::numeric_limits<std::uint32_t>::max()) return false;
  }
  value = static_cast<std::uint32_t>(v);
  return true;
}

bool Parse_position(std::string_view token, std::uint32_t& value, bool& negative) {
  negative = !token.empty() && token[0] == '-';
  if (negative) token.remove_prefix(1);
  return Parse_unsigned(token, value);
}

std::uint32_t Unsigned_field(const LineTokeniser& t, std::string_view token,
                             const std::string& what) {
  std::uint32_t value = 0;
  if (Parse_unsigned(token, value)) return value;
  if (token.size() > 1 && token[0] == '-' && Parse_unsigned(token.substr(1), value)) {
    t.Fail("a negative number (\"" + std::string(token) + "\") where " + what +
           " is expected, which is never negative");
  }
  t.Fail("expected " + what + ", found \"" + std::string(token) + "\"");
}

void PositionSequence::Next(const LineTokeniser& t, std::string_view token) {
  const std::string expected = "expected a " + what_ + " number followed by \":\"";
  std::uint32_t position = 0;
  bool negative = false;
  if (!token.ends_with(':') ||
      !Parse_position(token.substr(0, token.size() - 1), position, negative)) {
    t.Fail(expected + ", found \"" + std::string(token) + "\"");
  }
  if (negative && !negatives_allowed_) {
    t.Fail("a negative " + what_ + " number (\"" + std::string(token) +
           "\") where none is allowed");
  }
  if (position != count_) {
    t.Fail("expected " + what_ + " number " + std::to_string(count_) +
           (negatives_allowed_ ? " (or -" + std::to_string(count_) + ")" : std::string()) +
           ", found \"" + std::string(token) + "\"");
  }
  if (approximate_ && !negative) {
    t.Fail("exact " + what_ + " " + std::to_string(position) +
           " after approximate ones: the exact ones come first");
  }
  if (negative && !approximate_) {
    approximate_ = true;
    n_exact_ = count_;
  }
  ++count_;
}

}  // namespace kcp
