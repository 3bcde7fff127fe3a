// The one rule by which names (arbitrary bytes without white space) become text that XML and
// JSON can carry. A valid UTF-8 sequence of a character that XML 1.0 allows passes unchanged;
// every other byte (stray or overlong UTF-8 bytes, encoded surrogates, U+FFFE, U+FFFF, control
// characters other than tab, line feed and carriage return) is written as the four characters
// "\xHH" with the byte in upper-case hexadecimal. The result is always valid UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace kcp {

// Appends the safe form of `bytes` to `out`.
void Append_safe_text(std::string& out, std::string_view bytes);

std::string Safe_text(std::string_view bytes);

// True when Safe_text would leave `bytes` unchanged.
bool Is_safe_text(std::string_view bytes);

}  // namespace kcp
