// The frame every result file is written through: the directory is prepared with the policy
// "keep", the file is opened with truncation behind a large buffer, the writer puts its header
// and records, and Close() finishes it. A file that cannot be opened is silently left unwritten
// (a run goes on without it); a file that was opened but could not be written completely (a full
// disk, say) throws Xerror_msg naming the file, so no result is ever lost without a word.
#pragma once

#include <fstream>
#include <memory>
#include <string>

namespace kcp {

class Result_file {
 public:
  // Prepares `directory` ("keep") and opens directory + "/" + name.
  Result_file(const std::string& directory, const std::string& name);
  // Opens `path` as it is, without preparing a directory.
  explicit Result_file(const std::string& path);
  Result_file(const Result_file&) = delete;
  Result_file& operator=(const Result_file&) = delete;
  ~Result_file();

  std::ostream& out() { return out_; }
  template <typename T>
  Result_file& operator<<(const T& value) {
    out_ << value;
    return *this;
  }
  // Flushes and closes; throws when an opened file could not be written completely.
  void Close();

 private:
  void Open();

  std::string path_;
  std::unique_ptr<char[]> buffer_;
  std::ofstream out_;
  bool opened_ = false;
  bool closed_ = false;
};

}  // namespace kcp
