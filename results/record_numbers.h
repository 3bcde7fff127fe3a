// The numbers of record lines. The writers print unsigned decimals without sign, blanks or
// leading zeros, and put "-" before the position of an approximate clique or community; only that
// form is accepted, so that a file read back and written again gives the same bytes.
// PositionSequence checks the record heads "p:" of a file numbered by position: 0, 1, ... for
// the exact entries, then "-p:" for the approximate ones (the first of which may be "-0").
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "results/line_tokeniser.h"

namespace kcp {

bool Parse_unsigned(std::string_view token, std::uint32_t& value);
// "p" or "-p".
bool Parse_position(std::string_view token, std::uint32_t& value, bool& negative);
// An unsigned number, failing through t with "expected <what>" or, for "-n", with a sentence
// that a negative number is not allowed there.
std::uint32_t Unsigned_field(const LineTokeniser& t, std::string_view token,
                             const std::string& what);

class PositionSequence {
 public:
  // what: "community", "clique", "k-clique"; negatives_allowed: whether approximate entries can
  // occur in the file.
  PositionSequence(std::string what, bool negatives_allowed)
      : what_(std::move(what)), negatives_allowed_(negatives_allowed) {}

  // Takes the head token "p:" or "-p:" of the next record.
  void Next(const LineTokeniser& t, std::string_view token);
  bool Approximate() const { return approximate_; }
  // Records seen so far, and how many of them are exact.
  std::uint32_t Count() const { return count_; }
  std::uint32_t N_exact() const { return approximate_ ? n_exact_ : count_; }

 private:
  std::string what_;
  bool negatives_allowed_;
  bool approximate_ = false;
  std::uint32_t count_ = 0;
  std::uint32_t n_exact_ = 0;
};

}  // namespace kcp
