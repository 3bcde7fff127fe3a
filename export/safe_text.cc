#include "export/safe_text.h"

#include <cstdint>

namespace kcp {

namespace {

// Length of the well-formed UTF-8 sequence at bytes[i] that encodes a character XML 1.0
// allows, or 0 when the byte at i starts no such sequence.
std::size_t Allowed_sequence_length(std::string_view bytes, std::size_t i) {
  const auto byte = [&](std::size_t j) { return static_cast<std::uint8_t>(bytes[j]); };
  const std::uint8_t lead = byte(i);
  if (lead < 0x80) {
    const bool allowed = lead >= 0x20 || lead == 0x09 || lead == 0x0A || lead == 0x0D;
    return allowed ? 1 : 0;
  }
  std::size_t length = 0;
  std::uint32_t code = 0;
  std::uint32_t smallest = 0;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
    code = lead & 0x1F;
    smallest = 0x80;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    code = lead & 0x0F;
    smallest = 0x800;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    code = lead & 0x07;
    smallest = 0x10000;
  } else {
    return 0;
  }
  if (bytes.size() - i < length) return 0;
  for (std::size_t j = 1; j < length; ++j) {
    if ((byte(i + j) & 0xC0) != 0x80) return 0;
    code = (code << 6) | (byte(i + j) & 0x3F);
  }
  if (code < smallest || code > 0x10FFFF) return 0;
  if (code >= 0xD800 && code <= 0xDFFF) return 0;
  if (code == 0xFFFE || code == 0xFFFF) return 0;
  return length;
}

}  // namespace

void Append_safe_text(std::string& out, std::string_view bytes) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::size_t length = Allowed_sequence_length(bytes, i);
    if (length > 0) {
      out.append(bytes.substr(i, length));
      i += length;
      continue;
    }
    const auto value = static_cast<std::uint8_t>(bytes[i]);
    out += "\\x";
    out += kHex[value >> 4];
    out += kHex[value & 0x0F];
    ++i;
  }
}

std::string Safe_text(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  Append_safe_text(out, bytes);
  return out;
}

bool Is_safe_text(std::string_view bytes) {
  std::size_t i = 0;
  while (i < bytes.size()) {
    const std::size_t length = Allowed_sequence_length(bytes, i);
    if (length == 0) return false;
    i += length;
  }
  return true;
}

}  // namespace kcp
