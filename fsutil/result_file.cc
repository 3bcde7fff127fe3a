#include "fsutil/result_file.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"

namespace kcp {

namespace {
constexpr std::size_t kBufferSize = 1 << 20;
}

// errno is cleared first so that a failure without a reason of its own is not given a stale one.
ErrnoFilebuf::int_type ErrnoFilebuf::overflow(int_type c) {
  errno = 0;
  const int_type result = std::filebuf::overflow(c);
  if (traits_type::eq_int_type(result, traits_type::eof())) Note_error();
  return result;
}

std::streamsize ErrnoFilebuf::xsputn(const char_type* text, std::streamsize count) {
  errno = 0;
  const std::streamsize written = std::filebuf::xsputn(text, count);
  if (written < count) Note_error();
  return written;
}

int ErrnoFilebuf::sync() {
  errno = 0;
  const int result = std::filebuf::sync();
  if (result != 0) Note_error();
  return result;
}

void ErrnoFilebuf::Note_error() {
  if (error_ == 0) error_ = errno;
}

ResultFile::ResultFile(const std::string& directory, const std::string& name)
    : path_(directory + "/" + name) {
  Dir_prepare(directory, "keep");
  Open();
}

ResultFile::ResultFile(const std::string& path) : path_(path) {
  Open();
}

void ResultFile::Open() {
  if (OutputJournal* const journal = OutputJournal::Current()) journal->File(path_);
  buffer_ = std::make_unique_for_overwrite<char[]>(kBufferSize);
  file_.pubsetbuf(buffer_.get(), kBufferSize);
  opened_ = file_.open(path_, std::ios::out | std::ios::trunc | std::ios::binary) != nullptr;
  staged_.reserve(kStageLimit + 4096);
}

void ResultFile::Hand_over() {
  if (opened_ && !staged_.empty())
    out_.write(staged_.data(), static_cast<std::streamsize>(staged_.size()));
  staged_.clear();
}

void ResultFile::Close() {
  if (closed_) return;
  closed_ = true;
  if (!opened_) return;
  Hand_over();
  out_.flush();
  errno = 0;
  const bool closed = file_.close() != nullptr;
  const int error = file_.First_error() != 0 ? file_.First_error() : errno;
  if (!out_.good() || !closed) {
    throw Xerror_msg("ERROR: could not write the whole of '" + path_ + "'" +
                     (error != 0 ? std::string(": ") + std::strerror(error) : std::string()) + ".");
  }
}

ResultFile::~ResultFile() {
  // Close() reports write errors; a destructor must not throw, so an unclosed file (the stack
  // is already unwinding from another error) is closed quietly.
  if (!closed_ && opened_) file_.close();
}

}  // namespace kcp
