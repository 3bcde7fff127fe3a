#include "fsutil/result_file.h"

#include <cerrno>
#include <cstring>

#include "core/xerror_msg.h"
#include "fsutil/dir_prepare.h"

namespace kcp {

namespace {
constexpr std::size_t kBufferSize = 1 << 20;
}

Result_file::Result_file(const std::string& directory, const std::string& name)
    : path_(directory + "/" + name) {
  Dir_prepare(directory, "keep");
  Open();
}

Result_file::Result_file(const std::string& path) : path_(path) {
  Open();
}

void Result_file::Open() {
  buffer_ = std::make_unique<char[]>(kBufferSize);
  out_.rdbuf()->pubsetbuf(buffer_.get(), kBufferSize);
  out_.open(path_, std::ios::out | std::ios::trunc | std::ios::binary);
  opened_ = out_.is_open();
  staged_.reserve(kStageLimit + 4096);
}

void Result_file::Hand_over() {
  if (opened_ && !staged_.empty())
    out_.write(staged_.data(), static_cast<std::streamsize>(staged_.size()));
  staged_.clear();
}

void Result_file::Close() {
  if (closed_) return;
  closed_ = true;
  if (!opened_) return;
  errno = 0;
  Hand_over();
  out_.flush();
  const bool ok = out_.good();
  const int error = errno;
  out_.close();
  if (!ok || out_.fail()) {
    throw Xerror_msg("ERROR: could not write the whole of '" + path_ + "'" +
                     (error != 0 ? std::string(": ") + std::strerror(error) : std::string()) + ".");
  }
}

Result_file::~Result_file() {
  // Close() reports write errors; a destructor must not throw, so an unclosed file (the stack
  // is already unwinding from another error) is closed quietly.
  if (!closed_ && opened_) {
    Hand_over();
    out_.close();
  }
}

}  // namespace kcp
