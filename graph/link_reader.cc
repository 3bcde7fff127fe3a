#include "graph/link_reader.h"

#include <fstream>
#include <locale>
#include <memory>
#include <sstream>
#include <string_view>
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

// Reads a weight token with the stream's own number parsing, so that partial numbers ("1.5abc"
// reads 1.5), out-of-range values and malformed exponents succeed or fail exactly as extraction
// from the line would: a number never continues past a blank, so the token holds all it reads.
class Weight_parser {
 public:
  Weight_parser() { in_.imbue(std::locale::classic()); }

  bool Parse(std::string_view token, double& weight) {
    in_.clear();
    in_.str(std::string(token));
    in_ >> weight;
    return !in_.fail();
  }

 private:
  std::istringstream in_;
};

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
  Weight_parser parser;
  std::string line;
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
      if (!Next_token(line, pos, token) || !parser.Parse(token, weight)) throw Xep_wrong_line(line);
    }
    if (source == target) continue;
    std::pair<std::string, std::string> key(source, target);
    if (!weighted) {
      links.insert_or_assign(std::move(key), 0.0);
    } else if (Link_in_interval(weight, thresholds->lower_flag, thresholds->lower,
                                thresholds->upper_flag, thresholds->upper)) {
      // The thresholds judge each line on its own weight, never the sum; deliberate.
      links[std::move(key)] += weight;
    }
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

const char* Xep_read_file::what() const noexcept { return message_.c_str(); }

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

void Read_unw_links(const std::string& file, LinkMap& links) { Read_links(file, links, nullptr); }

void Read_weighted_links(const std::string& file, LinkMap& links, const bool& lower_flag,
                         const double& lower, const bool& upper_flag, const double& upper) {
  const Thresholds thresholds{lower_flag, lower, upper_flag, upper};
  Read_links(file, links, &thresholds);
}

bool Link_in_interval(const double& w, const bool& lower_flag, const double& lower,
                      const bool& upper_flag, const double& upper) {
  if (lower_flag && !(w > lower)) return false;
  if (upper_flag && !(w < upper)) return false;
  return true;
}

}  // namespace kcp
