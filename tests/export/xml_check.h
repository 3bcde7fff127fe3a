// Checks for XML documents written by the exporters, for the tests: a small well-formedness
// check in C++ (UTF-8, balanced tags, quoted attributes, only known entities, no stray markup
// characters), a count of occurrences and, where python3 is installed, a parse with its xml.etree.
#pragma once

#include <cctype>
#include <cstdlib>
#include <string>
#include <vector>

#include "export/safe_text.h"
#include "tests/support/test_dir.h"

namespace kcp::testing {

// "" when well formed, else what is wrong.
inline std::string Xml_fault(const std::string& xml) {
  if (!Is_safe_text(xml)) return "not UTF-8 or holds characters XML forbids";
  const auto name_char = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '-' || c == '.' ||
           c == ':';
  };
  const auto entity_ok = [&](std::size_t at) {
    const std::size_t end = xml.find(';', at);
    if (end == std::string::npos) return false;
    const std::string entity = xml.substr(at + 1, end - at - 1);
    if (entity == "amp" || entity == "lt" || entity == "gt" || entity == "quot" ||
        entity == "apos") {
      return true;
    }
    if (entity.size() < 2 || entity[0] != '#') return false;
    const bool hex = entity[1] == 'x';
    for (std::size_t i = hex ? 2 : 1; i < entity.size(); ++i) {
      if (!(hex ? std::isxdigit(static_cast<unsigned char>(entity[i]))
                : std::isdigit(static_cast<unsigned char>(entity[i])))) {
        return false;
      }
    }
    return entity.size() > (hex ? 2u : 1u);
  };
  std::vector<std::string> open;
  std::size_t i = 0;
  bool root_seen = false;
  if (xml.starts_with("<?xml")) i = xml.find("?>") + 2;
  while (i < xml.size()) {
    if (xml[i] == '&') {
      if (!entity_ok(i)) return "bad entity at " + std::to_string(i);
      ++i;
      continue;
    }
    if (xml[i] == '>') return "stray > at " + std::to_string(i);
    if (xml[i] != '<') {
      if (open.empty() && !std::isspace(static_cast<unsigned char>(xml[i]))) {
        return "text outside the root at " + std::to_string(i);
      }
      ++i;
      continue;
    }
    if (xml.compare(i, 4, "<!--") == 0) {
      const std::size_t end = xml.find("-->", i);
      if (end == std::string::npos) return "open comment";
      i = end + 3;
      continue;
    }
    const bool closing = xml[i + 1] == '/';
    std::size_t j = i + (closing ? 2 : 1);
    const std::size_t name_start = j;
    while (j < xml.size() && name_char(xml[j])) ++j;
    const std::string name = xml.substr(name_start, j - name_start);
    if (name.empty()) return "tag without name at " + std::to_string(i);
    if (closing) {
      if (open.empty() || open.back() != name) return "unbalanced </" + name + ">";
      open.pop_back();
      if (j >= xml.size() || xml[j] != '>') return "bad end tag " + name;
      i = j + 1;
      continue;
    }
    if (open.empty() && root_seen) return "second root element " + name;
    root_seen = true;
    // Attributes: name="value", value without < and with & only in entities.
    while (true) {
      while (j < xml.size() && std::isspace(static_cast<unsigned char>(xml[j]))) ++j;
      if (j >= xml.size()) return "open tag " + name;
      if (xml[j] == '>') {
        open.push_back(name);
        ++j;
        break;
      }
      if (xml.compare(j, 2, "/>") == 0) {
        j += 2;
        break;
      }
      const std::size_t attribute_start = j;
      while (j < xml.size() && name_char(xml[j])) ++j;
      if (j == attribute_start || xml.compare(j, 2, "=\"") != 0) {
        return "bad attribute in " + name;
      }
      j += 2;
      while (j < xml.size() && xml[j] != '"') {
        if (xml[j] == '<') return "< in an attribute of " + name;
        if (xml[j] == '&' && !entity_ok(j)) return "bad entity in an attribute of " + name;
        ++j;
      }
      ++j;
    }
    i = j;
  }
  if (!open.empty()) return "unclosed <" + open.back() + ">";
  if (!root_seen) return "no root element";
  return "";
}

// How often `part` occurs in `text`.
inline std::size_t Count(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

inline bool Python_available() {
  return std::system("python3 -c 'import xml.etree.ElementTree' >/dev/null 2>&1") == 0;
}

// Parses the document with python3's xml.etree; returns the parser's complaint, "" when fine.
inline std::string Python_xml_fault(const std::string& xml) {
  Test_dir dir;
  Write_file(dir / "doc.xml", xml);
  const std::string command =
      "python3 -c 'import sys, xml.etree.ElementTree as E; "
      "E.parse(sys.argv[1])' '" +
      (dir / "doc.xml") + "' >'" + (dir / "err.txt") + "' 2>&1";
  if (std::system(command.c_str()) == 0) return "";
  const std::string complaint = Read_file(dir / "err.txt");
  return complaint.empty() ? "python3 could not parse it" : complaint;
}

}  // namespace kcp::testing
