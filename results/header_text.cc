#include "results/header_text.h"

#include <limits>

namespace kcp {

bool Take_prefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

bool Take_suffix(std::string_view& text, std::string_view suffix) {
  if (!text.ends_with(suffix)) return false;
  text.remove_suffix(suffix.size());
  return true;
}

void Take_flag_word(std::string_view& text, std::string& flag) {
  flag.clear();
  if (Take_prefix(text, "directed ")) {
    flag = "directed";
  } else if (Take_prefix(text, "intensity ")) {
    flag = "intensity";
  }
}

bool Take_k(std::string_view& text, std::uint32_t& k) {
  std::uint64_t value = 0;
  std::size_t digits = 0;
  while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9') {
    value = value * 10 + static_cast<std::uint64_t>(text[digits] - '0');
    if (value > std::numeric_limits<std::uint32_t>::max()) return false;
    ++digits;
  }
  if (digits == 0) return false;
  k = static_cast<std::uint32_t>(value);
  text.remove_prefix(digits);
  return true;
}

std::string_view First_header_line(const LineTokeniser& t, const std::string& what) {
  if (t.Header_lines().empty()) t.Fail_at(1, "expected " + what + " (no header line found)");
  return t.Header_lines().front();
}

std::string Take_alap_szoveg(const LineTokeniser& t, std::string_view rest,
                             const std::uint64_t& first_line, std::string_view extra,
                             bool& extra_found) {
  const std::uint64_t end_line = t.Header_lines().size() + 1;
  if (!t.Header_closed()) {
    t.Fail_at(end_line, "expected the empty line that closes the header");
  }
  // The last line end is that of the closing line: the empty line, or the "." that a run with a
  // fixed k leaves at the end of its description.
  Take_suffix(rest, "\n");
  extra_found = !extra.empty() && Take_suffix(rest, extra);
  if (!rest.starts_with(" from ")) {
    t.Fail_at(first_line,
              "expected \" from \" and the input file at the start of the run "
              "description");
  }
  if (!rest.ends_with("\n") && !rest.ends_with("\n.")) {
    t.Fail_at(end_line - 1, "expected the empty line that closes the header");
  }
  return std::string(rest);
}

std::string Take_k_file_alap_szoveg(const LineTokeniser& t, std::string_view extra,
                                    bool& extra_found) {
  const std::string text = t.Header_text();
  std::string_view rest(text);
  rest.remove_prefix(t.Header_lines().front().size() + 1);
  if (!Take_prefix(rest, "#") || t.Header_lines().size() < 2) {
    t.Fail_at(2, "expected \"#\" and the run description");
  }
  return Take_alap_szoveg(t, rest, 2, extra, extra_found);
}

void Parse_k_title(const LineTokeniser& t, std::string_view before, std::string_view after,
                   std::string& flag, std::uint32_t& k) {
  const std::string expected =
      "\"" + std::string(before) + "[flag ]" + std::string(after) + "k=<k>\" as the first line";
  std::string_view line = First_header_line(t, expected);
  if (!Take_prefix(line, before)) t.Fail_at(1, "expected " + expected);
  Take_flag_word(line, flag);
  if (!Take_prefix(line, after) || !Take_prefix(line, "k=") || !Take_k(line, k) || !line.empty()) {
    t.Fail_at(1, "expected " + expected);
  }
}

}  // namespace kcp
