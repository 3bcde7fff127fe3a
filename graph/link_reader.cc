#include "graph/link_reader.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <locale>
#include <memory>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

namespace kcp {

namespace {

constexpr std::size_t kReadBufferSize = 1 << 20;

// Formatted stream extraction in the classic locale separates tokens by exactly these bytes.
bool Is_blank(const char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\v' || c == '\f' || c == '\r';
}

// The next whitespace-separated token at or after pos, as `in >> std::string` would extract it.
bool Next_token(std::string_view line, std::size_t& pos, std::string_view& token) {
  while (pos < line.size() && Is_blank(line[pos])) ++pos;
  const std::size_t start = pos;
  while (pos < line.size() && !Is_blank(line[pos])) ++pos;
  token = line.substr(start, pos - start);
  return pos > start;
}

bool Is_digit(const char c) {
  return c >= '0' && c <= '9';
}

// A token of digits, points, exponent letters and signs that from_chars takes whole is a
// complete decimal number: the stream would gather all of it and round it the same way (both
// round correctly). A value out of range fails here and is left to the stream.
bool Plain_decimal(std::string_view token, double& weight) {
  // The stream takes one sign and then needs a digit or a point; from_chars refuses a '+'.
  const std::size_t sign = (!token.empty() && (token[0] == '+' || token[0] == '-')) ? 1 : 0;
  if (sign >= token.size() || !(Is_digit(token[sign]) || token[sign] == '.')) return false;
  for (const char c : token.substr(sign)) {
    if (!Is_digit(c) && c != '.' && c != 'e' && c != 'E' && c != '+' && c != '-') return false;
  }
  const char* const begin = token.data() + (token[0] == '+' ? 1 : 0);
  const char* const end = token.data() + token.size();
  double value = 0.0;
  const auto [stop, error] = std::from_chars(begin, end, value);
  if (error != std::errc() || stop != end) return false;
  weight = value;
  return true;
}

struct Thresholds {
  bool lower_flag;
  double lower;
  bool upper_flag;
  double upper;
};

void Read_links(const std::string& file, LinkMap& links, const Thresholds* thresholds) {
  const auto buffer = std::make_unique<char[]>(kReadBufferSize);
  std::ifstream in;
  in.rdbuf()->pubsetbuf(buffer.get(), kReadBufferSize);
  in.open(file, std::ios::in | std::ios::binary);
  if (!in.is_open()) throw Xep_file_not_found(file);
  links.clear();

  const bool weighted = thresholds != nullptr;
  std::string line;
  // Files often list their links in key order: the place after the last link is then the right
  // place for the next one, and a wrong hint costs only a normal search.
  auto hint = links.end();
  while (std::getline(in, line)) {
    // No blanks are stripped first: " # x y" is a link from "#" to "x".
    if (line.empty() || line[0] == '#') continue;
    std::size_t pos = 0;
    std::string_view source;
    std::string_view target;
    if (!Next_token(line, pos, source) || !Next_token(line, pos, target)) {
      throw Xep_wrong_line(line);
    }
    double weight = 0.0;
    if (weighted) {
      std::string_view token;
      if (!Next_token(line, pos, token) || !Read_weight_token(token, weight))
        throw Xep_wrong_line(line);
    }
    if (source == target) continue;
    // The thresholds judge each line on its own weight, never the sum; deliberate.
    if (weighted && !Link_in_interval(weight, thresholds->lower_flag, thresholds->lower,
                                      thresholds->upper_flag, thresholds->upper)) {
      continue;
    }
    const auto it =
        links.try_emplace(hint, std::pair<std::string, std::string>(source, target), 0.0);
    if (weighted) {
      it->second += weight;
    } else {
      it->second = 0.0;
    }
    hint = std::next(it);
  }
  // A stream that failed without reaching the end could not be read: a directory, which opens
  // but yields nothing, or an input error in the middle of the file.
  if (in.bad() || !in.eof()) throw Xep_read_file(file);
}

}  // namespace

Xep_read_file::Xep_read_file() : Xep_read_file(" the file I was reading") {}

Xep_read_file::Xep_read_file(const std::string& file)
    : std::logic_error(""),
      file(file),
      message_("ERROR: Something went wrong when trying to read from " + file) {}

const char* Xep_read_file::what() const noexcept {
  return message_.c_str();
}

Xep_file_not_found::Xep_file_not_found(const std::string& file) : Xep_read_file(file) {
  message_ = "ERROR : File not found: '" + file + "' ";
}

Xep_wrong_line::Xep_wrong_line(const std::string& line) : Xep_read_file(), line(line) {
  message_ = "ERROR: Wrong line found in '" + file + "' :\n" + line;
}

Xep_wrong_line::Xep_wrong_line(const std::string& line, const std::string& file)
    : Xep_read_file(file), line(line) {
  message_ = "ERROR: Wrong line found in '" + file + "' :\n" + line;
}

void Read_unw_links(const std::string& file, LinkMap& links) {
  Read_links(file, links, nullptr);
}

void Read_weighted_links(const std::string& file, LinkMap& links, const bool& lower_flag,
                         const double& lower, const bool& upper_flag, const double& upper) {
  const Thresholds thresholds{lower_flag, lower, upper_flag, upper};
  Read_links(file, links, &thresholds);
}

// Everything else (a number followed by letters, a lone sign, a value beyond the range of a
// double, an exponent without digits) goes to the stream itself.
bool Read_weight_token(std::string_view token, double& weight) {
  if (Plain_decimal(token, weight)) return true;
  std::istringstream in{std::string(token)};
  in.imbue(std::locale::classic());
  double value = 0.0;
  in >> value;
  if (in.fail()) return false;
  weight = value;
  return true;
}

bool Link_in_interval(const double& w, const bool& lower_flag, const double& lower,
                      const bool& upper_flag, const double& upper) {
  if (lower_flag && !(w > lower)) return false;
  if (upper_flag && !(w < upper)) return false;
  return true;
}

}  // namespace kcp
