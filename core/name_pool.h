// Node names stored back to back in one block of bytes, numbered 0, 1, 2, ... in the order they
// were added: a name costs its bytes and eight more, with no allocation of its own. The views it
// hands out stay valid until the pool changes. Names may hold any byte, NUL included.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace kcp {

// The first eight bytes of a name as a big-endian number, zero-padded: names whose keys differ
// are ordered as their bytes are, and equal names have equal keys.
inline std::uint64_t Name_prefix_key(std::string_view name) {
  unsigned char bytes[8] = {0, 0, 0, 0, 0, 0, 0, 0};
  std::memcpy(bytes, name.data(), name.size() < 8 ? name.size() : 8);
  std::uint64_t key = 0;
  for (const unsigned char b : bytes) key = (key << 8) | b;
  return key;
}

class NamePool {
 public:
  std::size_t size() const noexcept { return ends_.size(); }
  bool empty() const noexcept { return ends_.empty(); }
  std::size_t Bytes() const noexcept { return bytes_.size(); }

  std::string_view operator[](const std::size_t& id) const noexcept {
    const std::size_t begin = id == 0 ? 0 : ends_[id - 1];
    return std::string_view(bytes_.data() + begin, ends_[id] - begin);
  }

  // The number of the name added.
  std::uint32_t Add(std::string_view name) {
    bytes_.append(name);
    ends_.push_back(bytes_.size());
    return static_cast<std::uint32_t>(ends_.size() - 1);
  }
  // Puts a name at number `id`, renumbering those from id on by one.
  void Insert(const std::size_t& id, std::string_view name) {
    const std::size_t begin = id == 0 ? 0 : ends_[id - 1];
    bytes_.insert(begin, name);
    ends_.insert(ends_.begin() + static_cast<std::ptrdiff_t>(id), begin);
    for (std::size_t i = id; i < ends_.size(); ++i) ends_[i] += name.size();
  }

  void Reserve(const std::size_t& names, const std::size_t& bytes) {
    ends_.reserve(names);
    bytes_.reserve(bytes);
  }
  // Releases the storage.
  void Clear() noexcept {
    std::string().swap(bytes_);
    std::vector<std::size_t>().swap(ends_);
  }

  friend bool operator==(const NamePool&, const NamePool&) = default;

 private:
  std::string bytes_;
  std::vector<std::size_t> ends_;  // name i ends at ends_[i], and begins where i - 1 ends
};

}  // namespace kcp
