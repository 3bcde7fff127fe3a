// The frame every result file is written through: the directory is prepared with the policy
// "keep", the file is opened with truncation behind a large buffer, the writer puts its header
// and records, and Close() finishes it. A file that cannot be opened is silently left unwritten
// (a run goes on without it); a file that was opened but could not be written completely (a full
// disk, a file-size limit) throws Xerror_msg naming the file and the reason the first failed write
// gave, so no result is ever lost without a word. Under a JournalScope (core/output_journal.h)
// the file's path is noted before it is opened.
#pragma once

#include <charconv>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/output_journal.h"

namespace kcp {

// A file buffer that keeps the errno of its first failed write, which later calls would lose.
class ErrnoFilebuf : public std::filebuf {
 public:
  int First_error() const { return error_; }

 protected:
  int_type overflow(int_type c) override;
  std::streamsize xsputn(const char_type* text, std::streamsize count) override;
  int sync() override;

 private:
  void Note_error();
  int error_ = 0;
};

class ResultFile {
 public:
  // Prepares `directory` ("keep") and opens directory + "/" + name.
  ResultFile(const std::string& directory, const std::string& name);
  // Opens `path` as it is, without preparing a directory.
  explicit ResultFile(const std::string& path);
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;
  ~ResultFile();

  // The stream behind the file, for what the appenders below do not format; what they staged
  // is handed to it first, so the two may be mixed.
  std::ostream& out() {
    Hand_over();
    return out_;
  }
  // Text and integers are formatted into a staging buffer that reaches the stream in large
  // blocks; anything else goes through the stream's own formatting.
  ResultFile& operator<<(std::string_view text) {
    staged_.append(text);
    if (staged_.size() >= kStageLimit) Hand_over();
    return *this;
  }
  ResultFile& operator<<(const char* text) { return *this << std::string_view(text); }
  ResultFile& operator<<(const std::string& text) { return *this << std::string_view(text); }
  ResultFile& operator<<(char c) {
    staged_.push_back(c);
    return *this;
  }
  template <typename T>
  ResultFile& operator<<(const T& value) {
    if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
      char digits[24];
      const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
      return *this << std::string_view(digits, static_cast<std::size_t>(end - digits));
    } else {
      out() << value;
      return *this;
    }
  }
  // Flushes and closes; throws when an opened file could not be written completely.
  void Close();

 private:
  void Open();
  void Hand_over();

  static constexpr std::size_t kStageLimit = std::size_t{1} << 20;
  std::string staged_;
  std::string path_;
  std::unique_ptr<char[]> buffer_;
  ErrnoFilebuf file_;
  std::ostream out_{&file_};
  bool opened_ = false;
  bool closed_ = false;
};

}  // namespace kcp
