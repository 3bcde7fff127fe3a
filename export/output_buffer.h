// A string that the writers append to and that passes its content on to a stream in large
// pieces, so that exports of large results need neither one huge string nor many small writes.
// The destructor does not flush: call finish() once the document is complete.
#pragma once

#include <ostream>
#include <string>

namespace kcp {

class OutputBuffer {
 public:
  explicit OutputBuffer(std::ostream& out) : out_(out) { text_.reserve(kChunk + kChunk / 4); }
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;

  // Append freely, then call line_done() at any boundary where a flush may happen.
  std::string& text() { return text_; }
  void line_done() {
    if (text_.size() >= kChunk) finish();
  }
  void finish() {
    out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
    text_.clear();
  }

 private:
  static constexpr std::size_t kChunk = 1 << 16;
  std::ostream& out_;
  std::string text_;
};

}  // namespace kcp
