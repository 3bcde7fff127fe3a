// Text for XML documents (GraphML and SVG). Append_xml_text writes the safe form of the bytes
// (export/safe_text.h) with the five markup characters as entity references and tab, line feed
// and carriage return as character references, so the result is valid both as element content
// and inside a quoted attribute value, and reads back as the safe form unchanged.
#pragma once

#include <string>
#include <string_view>

namespace kcp {

void Append_xml_text(std::string& out, std::string_view bytes);

std::string Xml_text(std::string_view bytes);

}  // namespace kcp
