#include "text/conversions.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

namespace kcp {

namespace {

// The rounding rule of the program, carried out on doubles so that it can serve any integer
// type: exact halves go up. The result is a whole number (or NaN when x is NaN).
double Round_half_up(const double& x) {
  const double t = std::trunc(x);
  if (std::fabs(x - (t - 1.0)) < std::fabs(x - t)) return t - 1.0;
  if (std::fabs(x - (t + 1.0)) > std::fabs(x - t)) return t;
  return t + 1.0;
}

// A whole-number double into an integer type. Values the type cannot hold would make the plain
// conversion undefined, so they are clamped to the type's range (NaN gives 0); every value the
// type can hold converts exactly.
template <typename Int>
Int Clamp_to(const double& whole) {
  if (std::isnan(whole)) return 0;
  // The lowest value of every integer type used here is 0 or a power of two, exact as a double.
  constexpr double kLowest = static_cast<double>(std::numeric_limits<Int>::lowest());
  // 2^digits is exact as a double and is the first value above the type's maximum.
  const double beyond_max = std::ldexp(1.0, std::numeric_limits<Int>::digits);
  if (whole < kLowest) return std::numeric_limits<Int>::lowest();
  if (whole >= beyond_max) return std::numeric_limits<Int>::max();
  return static_cast<Int>(whole);
}

// Whole text read as a double (standard extraction) with nothing but blanks after it.
bool Whole_text_is_number(const std::string& text, double& value) {
  std::istringstream in(text);
  double read = 0.0;
  if (!(in >> read)) return false;
  std::string rest;
  if (in >> rest) return false;
  value = read;
  return true;
}

// True when the text holds a '.' or a lower-case 'e', that is when it does not look like an
// integer. An upper-case 'E' is not looked for; kept as is on purpose.
bool Looks_fractional(const std::string& text) {
  return text.find_first_of(".e") != std::string::npos;
}

bool Bool_word(const std::string& text, bool& value) {
  if (text == "yes" || text == "Yes" || text == "YES" || text == "true" || text == "True" ||
      text == "TRUE") {
    value = true;
    return true;
  }
  if (text == "no" || text == "No" || text == "NO" || text == "false" || text == "False" ||
      text == "FALSE") {
    value = false;
    return true;
  }
  return false;
}

// The number of decimals double2string computes from the double itself. A double carries no
// more than 17 significant digits, and 10^18 is the largest power of ten a 64-bit integer holds,
// so the decimals beyond the 18th are written as zeros instead of overflowing.
constexpr std::uint32_t kComputedDecimals = 18;

}  // namespace

bool stringtodouble(const std::string& text, double& value) {
  return Whole_text_is_number(text, value);
}

int gRound(const double& x) {
  return Clamp_to<int>(Round_half_up(x));
}

bool Convert_from_string(const std::string& text, std::string& value, bool& suspicious) {
  value = text;
  suspicious = false;
  return true;
}

bool Convert_from_string(const std::string& text, double& value, bool& suspicious) {
  suspicious = false;
  return stringtodouble(text, value);
}

bool Convert_from_string(const std::string& text, std::int32_t& value, bool& suspicious) {
  suspicious = false;
  double read = 0.0;
  if (!stringtodouble(text, read)) {
    suspicious = true;
    return false;
  }
  if (Looks_fractional(text)) suspicious = true;
  value = Clamp_to<std::int32_t>(Round_half_up(read));
  return true;
}

bool Convert_from_string(const std::string& text, std::uint32_t& value, bool& suspicious) {
  suspicious = false;
  double read = 0.0;
  if (!stringtodouble(text, read) || read < 0.0) {
    suspicious = true;
    return false;
  }
  if (Looks_fractional(text)) suspicious = true;
  // Rounded over the whole unsigned range (not through an int), so that values above 2^31 - 1
  // are not undefined; every smaller value comes out as gRound gives it.
  value = Clamp_to<std::uint32_t>(Round_half_up(read));
  return true;
}

bool Convert_from_string(const std::string& text, bool& value, bool& suspicious) {
  suspicious = false;
  return Bool_word(text, value);
}

bool Convert_from_string(const std::string& text, std::vector<bool>::reference value,
                         bool& suspicious) {
  suspicious = false;
  bool read = false;
  if (!Bool_word(text, read)) return false;
  value = read;
  return true;
}

std::string double2string(const double& x, const std::uint32_t& digits) {
  // The integer part is held in 64 bits (clamped beyond), so thresholds of any size give their
  // true integer text instead of overflowing a 32-bit int.
  const std::int64_t ip = Clamp_to<std::int64_t>(std::trunc(x));
  double frac = std::fabs(x - static_cast<double>(ip));
  const std::uint32_t computed = digits < kComputedDecimals ? digits : kComputedDecimals;
  std::int64_t p = 10;
  for (std::uint32_t i = 0; i < computed; ++i) {
    frac *= 10.0;
    if (i > 0) p *= 10;
  }
  const std::int64_t r = Clamp_to<std::int64_t>(Round_half_up(frac));
  const std::string padding_beyond(digits - computed, '0');

  if (r == p) {
    const std::int64_t whole = x > 0 ? ip + 1 : ip - 1;
    std::string text = std::to_string(whole);
    if (digits > 0) {
      text += '.';
      text.append(digits, '0');
    }
    return text;
  }
  std::string text = std::to_string(ip);
  if (digits == 0) return text;
  std::string decimals = std::to_string(r);
  if (decimals.size() < computed) decimals.insert(0, computed - decimals.size(), '0');
  return text + "." + decimals + padding_beyond;
}

std::size_t double2string_length(const double& x, const std::uint32_t& digits) {
  if (digits <= kComputedDecimals) return double2string(x, digits).size();
  // Past the computed decimals only zeros follow, one per digit.
  return double2string(x, kComputedDecimals).size() + (digits - kComputedDecimals);
}

std::string int2string(const std::int32_t& n) {
  return std::to_string(n);
}

std::string int2string(const std::uint32_t& n) {
  return std::to_string(n);
}

namespace {

// Shared by both padded forms; the count of zeros is worked out as for an int.
std::string Padded(const std::int64_t& n, const std::uint32_t& width) {
  if (n == 0) return std::string(width, '0');
  std::string s = std::to_string(n);
  const double magnitude = std::log10(std::fabs(static_cast<double>(n)));
  // Compared as signed numbers: width 0 asks for no padding at all.
  if (magnitude >= static_cast<double>(width) - 1.0) return s;
  const auto zeros = static_cast<std::size_t>(static_cast<double>(width) - magnitude - 0.00000001);
  s.insert(n < 0 ? 1 : 0, zeros, '0');
  return s;
}

}  // namespace

std::string int2string(const std::int32_t& n, const std::uint32_t& width) {
  return Padded(n, width);
}

// Padded over the whole unsigned range: a value above 2^31 - 1 keeps its own digits instead of
// turning negative through an int.
std::string int2string(const std::uint32_t& n, const std::uint32_t& width) {
  return Padded(n, width);
}

std::string operator+(const std::string& s, const std::int32_t& n) {
  return s + int2string(n);
}

std::string operator+(const std::string& s, const std::uint32_t& n) {
  return s + int2string(n);
}

}  // namespace kcp
