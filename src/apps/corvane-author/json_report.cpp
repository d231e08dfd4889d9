#include "apps/corvane-author/json_report.h"

#include "examine/verification.h"
#include "formats/json_text.h"
#include "project/project.h"

namespace corvane {

std::string json_report(const finding_list& findings, const disc_traits& found,
                        const disc_traits& asked) {
  const auto count = [&](finding_severity severity) {
    return std::to_string(findings.count(severity));
  };
  json_object all;
  all.add("program", json_string(version_title));
  all.add("errors", count(finding_severity::error));
  all.add("warnings", count(finding_severity::warning));
  all.add("notes", count(finding_severity::note));
  all.add("findings", json_of(findings.findings()));
  all.add("disc", disc_table_json(found, asked));
  return all.text();
}

}  // namespace corvane
