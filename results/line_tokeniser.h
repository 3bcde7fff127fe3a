// Splits one result file into its header and its records, for every reader of the run's files.
// The header is the leading run of lines that begin with the comment marker; a run with a fixed k
// leaves a "." at the start of the line after its description, so a line "." closes the header
// and a line "." + marker continues it. An empty line closes the header too. After the header
// every line that holds a token is one record, split at the blanks of formatted stream extraction
// (with which the run read the names); only a header line can be a comment, so "#" in a record is a
// name byte. Reads through a large buffer; tokens stay valid until the next Next_record. Throws
// Xerror_msg "ERROR: <path>, line N: ..." on a file that cannot be read, holds a NUL byte or ends
// inside a line; given a CutFiles to note it in, a file that ends inside a line (as an
// interrupted run leaves it) is read without that line instead.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kcp {

// The paths of files whose unfinished last line was left out, in the order they were read.
using CutFiles = std::vector<std::string>;

// "ERROR: <path>, line <line>: <message>", or without the line part when line is 0.
[[noreturn]] void Fail_in_file(const std::string& path, const std::uint64_t& line,
                               const std::string& message);

class LineTokeniser {
 public:
  // With cut_files, a last line without its line end is left out and the path noted there.
  explicit LineTokeniser(const std::string& path, CutFiles* cut_files = nullptr);
  ~LineTokeniser();
  LineTokeniser(const LineTokeniser&) = delete;
  LineTokeniser& operator=(const LineTokeniser&) = delete;

  const std::string& Path() const { return path_; }
  // The header lines without their line ends; header line i is line i + 1 of the file. An empty
  // line that closed the header is the last entry.
  const std::vector<std::string>& Header_lines() const { return header_; }
  // The header as it stands in the file: every header line followed by its line end.
  std::string Header_text() const;
  // True when an empty line or a "." line closed the header.
  bool Header_closed() const { return header_closed_; }

  // Moves to the next line that holds a token; false at the end of the file.
  bool Next_record();
  const std::vector<std::string_view>& Tokens() const { return tokens_; }
  std::string_view Line() const { return line_; }
  std::uint64_t Line_number() const { return line_number_; }
  // Lines read so far, header included.
  std::uint64_t Lines_read() const { return lines_read_; }
  // After Next_record returned false: whether the last line of the file was an empty line after
  // the header.
  bool Ended_with_empty_line() const { return last_line_empty_; }
  // Whether an unfinished last line was left out.
  bool Cut() const { return cut_; }

  // Throws Xerror_msg for the current line.
  [[noreturn]] void Fail(const std::string& message) const;
  [[noreturn]] void Fail_at(const std::uint64_t& line, const std::string& message) const;

 private:
  void Read_header();
  bool Read_line(std::string_view& line);
  bool Is_dot_line(std::string_view line) const;
  void Split(std::string_view line);

  std::string path_;
  CutFiles* cut_files_;
  bool cut_ = false;
  bool separator_[256] = {};
  int fd_ = -1;
  std::unique_ptr<char[]> buffer_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool eof_ = false;

  std::vector<std::string> header_;
  bool header_closed_ = false;
  bool pending_ = false;
  std::string_view line_;
  std::uint64_t line_number_ = 0;
  std::uint64_t lines_read_ = 0;
  bool last_line_empty_ = false;
  std::vector<std::string_view> tokens_;
};

}  // namespace kcp
