#include "export/xml_text.h"

#include "export/safe_text.h"

namespace kcp {

void Append_xml_text(std::string& out, std::string_view bytes) {
  const std::string safe = Safe_text(bytes);
  for (const char c : safe) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      // Attribute-value normalisation would turn these into blanks.
      case '\t':
        out += "&#9;";
        break;
      case '\n':
        out += "&#10;";
        break;
      case '\r':
        out += "&#13;";
        break;
      default:
        out += c;
    }
  }
}

std::string Xml_text(std::string_view bytes) {
  std::string out;
  Append_xml_text(out, bytes);
  return out;
}

}  // namespace kcp
