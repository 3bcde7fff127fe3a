#include "export/csv_writer.h"

#include "export/export_network.h"
#include "export/output_buffer.h"

namespace kcp {

void Append_csv_field(std::string& out, std::string_view field) {
  if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
    out.append(field);
    return;
  }
  out += '"';
  for (const char c : field) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

void Write_community_csv(const RunResults& results, std::ostream& out) {
  OutputBuffer buffer(out);
  std::string& text = buffer.text();
  text += "k,community,approximate,node\n";
  for (const KResults& at_k : results.per_k) {
    const std::string k_text = std::to_string(at_k.k);
    for (const CommunityRecord& community : at_k.communities) {
      const std::string row_start = k_text + ',' + Community_label(community) +
                                    (community.approximate ? ",true," : ",false,");
      for (const std::string& node : community.nodes) {
        text += row_start;
        Append_csv_field(text, node);
        text += '\n';
        buffer.line_done();
      }
    }
  }
  buffer.finish();
}

}  // namespace kcp
