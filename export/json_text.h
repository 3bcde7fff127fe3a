// JSON string literals. Append_json_string writes the safe form of the bytes (export/safe_text.h)
// between double quotes, with the quote and the backslash escaped by a backslash and tab, line
// feed and carriage return as \t, \n and \r; every other character passes as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace kcp {

void Append_json_string(std::string& out, std::string_view bytes);

std::string Json_string(std::string_view bytes);

}  // namespace kcp
