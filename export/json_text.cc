#include "export/json_text.h"

#include "export/safe_text.h"

namespace kcp {

void Append_json_string(std::string& out, std::string_view bytes) {
  // The safe form holds no control character but these three, so no \u escape is needed.
  const std::string safe = Safe_text(bytes);
  out += '"';
  for (const char c : safe) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        out += c;
    }
  }
  out += '"';
}

std::string Json_string(std::string_view bytes) {
  std::string out;
  Append_json_string(out, bytes);
  return out;
}

}  // namespace kcp
