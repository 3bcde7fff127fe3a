#include "graph/link_reader.h"

#include <charconv>
#include <cstring>
#include <fstream>
#include <iterator>
#include <locale>
#include <memory>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "graph/link_lines.h"

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

// The lines of a stream as std::getline gives them ('\n' ends a line, a last line needs none),
// read in large blocks. A line longer than kLongestLine is refused: no link file holds one, and
// an endless input without line ends (/dev/zero) would otherwise fill the memory.
class LineSource {
 public:
  LineSource(std::istream& in, const std::string& file)
      : in_(in), file_(file), block_(std::make_unique_for_overwrite<char[]>(kReadBufferSize)) {}

  // The next line, valid until the next call; false at the end of the input.
  bool Next(std::string_view& line) {
    if (carried_) {
      carry_.clear();
      carried_ = false;
    }
    for (;;) {
      if (begin_ < end_) {
        const char* const from = block_.get() + begin_;
        const auto* const stop = static_cast<const char*>(std::memchr(from, '\n', end_ - begin_));
        const std::size_t length =
            stop != nullptr ? static_cast<std::size_t>(stop - from) : end_ - begin_;
        Check_length(carry_.size() + length);
        if (stop != nullptr && carry_.empty()) {
          line = std::string_view(from, length);
          begin_ += length + 1;
          ++number_;
          return true;
        }
        carry_.append(from, length);
        begin_ += length;
        if (stop != nullptr) {
          ++begin_;
          return Give_carry(line);
        }
      }
      if (done_) return !carry_.empty() && Give_carry(line);
      Read_block();
    }
  }

  // The first bytes of the input, as many as one block holds, before any line is taken.
  std::string_view Start() {
    if (!started_) Read_block();
    return std::string_view(block_.get() + begin_, end_ - begin_);
  }

 private:
  void Read_block() {
    in_.read(block_.get(), static_cast<std::streamsize>(kReadBufferSize));
    begin_ = 0;
    end_ = static_cast<std::size_t>(in_.gcount());
    done_ = !in_;
    started_ = true;
  }
  bool Give_carry(std::string_view& line) {
    line = carry_;
    carried_ = true;
    ++number_;
    return true;
  }
  void Check_length(const std::size_t& length) const {
    if (length > kLongestLine) throw Xep_line_too_long(file_, number_ + 1, kLongestLine);
  }

  static constexpr std::size_t kLongestLine = std::size_t{1} << 28;
  std::istream& in_;
  const std::string& file_;
  std::unique_ptr<char[]> block_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool done_ = false;
  bool started_ = false;
  std::string carry_;
  bool carried_ = false;
  std::uint64_t number_ = 0;
};

// A compressed file is refused by its leading bytes: read as text it would give a meaningless
// run. Only the whole leading sequence counts, so a link file whose first node is "PK" or "BZh9"
// is read as any other.
void Refuse_compressed(std::string_view start, const std::string& file) {
  struct Format {
    std::string_view kind;
    std::string_view tool;
    std::string_view magic;
  };
  using namespace std::string_view_literals;
  static constexpr Format kFormats[] = {{"gzip", "gunzip", "\x1f\x8b"sv},
                                        {"xz", "unxz", "\xfd\x37\x7a\x58\x5a\x00"sv},
                                        {"zstd", "unzstd", "\x28\xb5\x2f\xfd"sv},
                                        {"zip", "unzip", "\x50\x4b\x03\x04"sv}};
  for (const Format& format : kFormats) {
    if (start.starts_with(format.magic)) {
      throw Xep_compressed_file(file, std::string(format.kind), std::string(format.tool));
    }
  }
  // bzip2: "BZh", the block size as a digit 1 to 9, then the magic of the first block.
  if (start.size() >= 10 && start.starts_with("BZh") && start[3] >= '1' && start[3] <= '9' &&
      start.substr(4, 6) == "1AY&SY") {
    throw Xep_compressed_file(file, "bzip2", "bunzip2");
  }
}

struct Thresholds {
  bool lower_flag;
  double lower;
  bool upper_flag;
  double upper;
};

// The lines kept so far, until the read ends either way: the links read before a failure stay.
void Read_lines(std::istream& in, const std::string& file, const Thresholds* thresholds,
                LinkLines& kept) {
  const bool weighted = thresholds != nullptr;
  LineSource lines(in, file);
  Refuse_compressed(lines.Start(), file);
  std::string_view line;
  while (lines.Next(line)) {
    // No blanks are stripped first: " # x y" is a link from "#" to "x".
    if (line.empty() || line[0] == '#') continue;
    std::size_t pos = 0;
    std::string_view source;
    std::string_view target;
    if (!Next_token(line, pos, source) || !Next_token(line, pos, target)) {
      throw Xep_wrong_line(std::string(line));
    }
    double weight = 0.0;
    if (weighted) {
      std::string_view token;
      if (!Next_token(line, pos, token) || !Read_weight_token(token, weight))
        throw Xep_wrong_line(std::string(line));
    }
    if (source == target) continue;
    // The thresholds judge each line on its own weight, never the sum; deliberate.
    if (weighted && !Link_in_interval(weight, thresholds->lower_flag, thresholds->lower,
                                      thresholds->upper_flag, thresholds->upper)) {
      continue;
    }
    kept.Add(source, target, weight);
  }
}

void Read_links(const std::string& file, LinkMap& links, const Thresholds* thresholds) {
  // The lines are read in blocks of their own: the stream needs no buffer.
  std::ifstream in;
  in.rdbuf()->pubsetbuf(nullptr, 0);
  in.open(file, std::ios::in | std::ios::binary);
  if (!in.is_open()) throw Xep_file_not_found(file);
  links.clear();

  LinkLines kept;
  try {
    Read_lines(in, file, thresholds, kept);
  } catch (const Xep_read_file&) {
    kept.Move_to(links, thresholds != nullptr);
    throw;
  }
  kept.Move_to(links, thresholds != nullptr);
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

Xep_compressed_file::Xep_compressed_file(const std::string& file, const std::string& kind,
                                         const std::string& tool)
    : Xep_read_file(file) {
  message_ = "ERROR: '" + file + "' is a " + kind +
             " file, not a link file: decompress it first, for example with " + tool + ".";
}

Xep_line_too_long::Xep_line_too_long(const std::string& file, const std::uint64_t& line,
                                     const std::size_t& longest)
    : Xep_read_file(file) {
  message_ = "ERROR: Line " + std::to_string(line) + " of '" + file + "' is longer than " +
             std::to_string(longest) + " bytes: this is not a link file.";
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
