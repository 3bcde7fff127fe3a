#include "results/line_tokeniser.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "core/xerror_msg.h"

namespace kcp {

namespace {

// A small file gets a buffer of its own size; a line longer than the buffer doubles it.
constexpr std::size_t kMaxBufferSize = std::size_t{1} << 20;
constexpr std::size_t kMinBufferSize = std::size_t{1} << 12;
// The blanks of formatted stream extraction, and the marker of a header line.
constexpr std::string_view kSeparators = " \t\r\v\f";
constexpr char kComment = '#';

}  // namespace

void Fail_in_file(const std::string& path, const std::uint64_t& line, const std::string& message) {
  std::string text = "ERROR: " + path;
  if (line != 0) text += ", line " + std::to_string(line);
  throw Xerror_msg(text + ": " + message);
}

LineTokeniser::LineTokeniser(const std::string& path, CutFiles* cut_files)
    : path_(path), cut_files_(cut_files) {
  for (const char c : kSeparators) separator_[static_cast<unsigned char>(c)] = true;
  fd_ = ::open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) {
    Fail_in_file(path_, 0, std::string("cannot open the file: ") + std::strerror(errno));
  }
  struct stat info {};
  if (::fstat(fd_, &info) != 0 || S_ISDIR(info.st_mode)) {
    ::close(fd_);
    fd_ = -1;
    Fail_in_file(path_, 0, "this is a directory, not a result file");
  }
  capacity_ = std::clamp(static_cast<std::size_t>(std::max<off_t>(info.st_size, 0)) + 1,
                         kMinBufferSize, kMaxBufferSize);
  buffer_ = std::make_unique_for_overwrite<char[]>(capacity_);
  try {
    Read_header();
    // Only lines after the header count for Ended_with_empty_line.
    last_line_empty_ = false;
  } catch (...) {
    ::close(fd_);
    fd_ = -1;
    throw;
  }
}

LineTokeniser::~LineTokeniser() {
  if (fd_ >= 0) ::close(fd_);
}

std::string LineTokeniser::Header_text() const {
  std::string text;
  for (const std::string& line : header_) {
    text += line;
    text += '\n';
  }
  return text;
}

bool LineTokeniser::Is_dot_line(std::string_view line) const {
  return !header_.empty() && !line.empty() && line[0] == '.' &&
         (line.size() == 1 || line[1] == kComment);
}

void LineTokeniser::Read_header() {
  std::string_view line;
  while (Read_line(line)) {
    if (!line.empty() && line[0] == kComment) {
      header_.emplace_back(line);
    } else if (Is_dot_line(line)) {
      header_.emplace_back(line);
      if (line.size() == 1) {
        header_closed_ = true;
        return;
      }
    } else if (line.empty()) {
      header_.emplace_back();
      header_closed_ = true;
      return;
    } else {
      pending_ = true;
      line_ = line;
      line_number_ = lines_read_;
      return;
    }
  }
}

bool LineTokeniser::Read_line(std::string_view& line) {
  for (;;) {
    const char* start = buffer_.get() + begin_;
    const void* newline = std::memchr(start, '\n', end_ - begin_);
    if (newline != nullptr) {
      const std::size_t length = static_cast<const char*>(newline) - start;
      line = std::string_view(start, length);
      begin_ += length + 1;
      ++lines_read_;
      if (std::memchr(line.data(), '\0', line.size()) != nullptr) {
        Fail_at(lines_read_, "binary data (a NUL byte): this is not a result file of Varnel");
      }
      last_line_empty_ = line.empty();
      return true;
    }
    if (eof_) {
      if (begin_ == end_) return false;
      if (cut_files_ == nullptr) {
        Fail_at(lines_read_ + 1, "the last line has no line end: the file seems truncated");
      }
      cut_ = true;
      cut_files_->push_back(path_);
      begin_ = end_;
      return false;
    }
    // Keep the unfinished line and make room behind it; a line longer than the buffer doubles it.
    if (begin_ > 0) {
      std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
      end_ -= begin_;
      begin_ = 0;
    }
    if (end_ == capacity_) {
      auto bigger = std::make_unique_for_overwrite<char[]>(capacity_ * 2);
      std::memcpy(bigger.get(), buffer_.get(), end_);
      buffer_ = std::move(bigger);
      capacity_ *= 2;
    }
    const ssize_t got = ::read(fd_, buffer_.get() + end_, capacity_ - end_);
    if (got < 0) {
      if (errno == EINTR) continue;
      Fail_in_file(path_, 0, std::string("cannot read the file: ") + std::strerror(errno));
    }
    if (got == 0) eof_ = true;
    end_ += static_cast<std::size_t>(got);
  }
}

void LineTokeniser::Split(std::string_view line) {
  tokens_.clear();
  std::size_t i = 0;
  const std::size_t n = line.size();
  while (i < n) {
    while (i < n && separator_[static_cast<unsigned char>(line[i])]) ++i;
    const std::size_t start = i;
    while (i < n && !separator_[static_cast<unsigned char>(line[i])]) ++i;
    if (i > start) tokens_.push_back(line.substr(start, i - start));
  }
}

bool LineTokeniser::Next_record() {
  for (;;) {
    if (pending_) {
      pending_ = false;
    } else {
      std::string_view line;
      if (!Read_line(line)) {
        tokens_.clear();
        line_ = std::string_view();
        return false;
      }
      line_ = line;
      line_number_ = lines_read_;
    }
    Split(line_);
    if (!tokens_.empty()) return true;
  }
}

void LineTokeniser::Fail(const std::string& message) const {
  Fail_in_file(path_, line_number_, message);
}

void LineTokeniser::Fail_at(const std::uint64_t& line, const std::string& message) const {
  Fail_in_file(path_, line, message);
}

}  // namespace kcp
