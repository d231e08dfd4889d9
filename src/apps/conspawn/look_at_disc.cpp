#include "apps/conspawn/look_at_disc.h"

#include "examine/verification.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "runner/output_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {
namespace {

constexpr std::uintmax_t largest_file = 64u << 20;
constexpr std::size_t most_lines = 100;

std::string_view mark_of(finding_severity severity) {
  switch (severity) {
    case finding_severity::error:
      return error_mark;
    case finding_severity::warning:
      return "WARN: ";
    case finding_severity::note:
      break;
  }
  return "INFO: ";
}

/// Title or menu, time and file, as far as there are any.
std::string place_of_difference(const finding& f) {
  if (f.file.empty())
    return place_text(f);
  const bool of_file_alone = f.item == finding_item{} && !f.seconds;
  return of_file_alone ? f.file : place_text(f) + ", " + f.file;
}

/// One line, which may be the only one that is looked at: all that a finding says.
std::string text_of_difference(const finding& f) {
  std::string text(mark_of(f.severity));
  text += place_of_difference(f) + ": " + f.found;
  const auto add = [&text](std::string_view label, const std::string& what) {
    if (!what.empty())
      text.append("; ").append(label).append(what);
  };
  if (f.severity != finding_severity::note) {
    add("it must be ", f.wanted);
    add("a viewer would see ", f.consequence);
    add("what to do: ", f.remedy);
  }
  add("rule: ", f.rule);
  return sanitized(text);
}

/// How far it is, in whole percent.
int percent_of(const verification& look) {
  return look.bytes_to_read() == 0
             ? 0
             : static_cast<int>(100.0 * static_cast<double>(look.bytes_read()) /
                                static_cast<double>(look.bytes_to_read()));
}

/// Reads to the end. The number has no blank before its "%": so the log window's bar finds it
/// (runner/output_text.h).
void read_back(verification& look, const look_output& out, int pause) {
  int told = -1;
  while (look.step(pause))
    if (const int percent = percent_of(look); percent != told) {
      told = percent;
      out.line("INFO: reading the disc back: " + std::to_string(percent) + "%");
    }
}

void print_findings(const std::vector<finding>& findings, const look_output& out) {
  const std::size_t shown = std::min(findings.size(), most_lines);
  for (std::size_t i = 0; i < shown; ++i)
    out.line(text_of_difference(findings[i]));
  if (shown < findings.size())
    out.line("INFO: and " + std::to_string(findings.size() - shown) + " more");
}

}  // namespace

result<shared_foreseen_run> read_foreseen(const std::string& foreseen) {
  using read = result<shared_foreseen_run>;
  const auto fail = [&foreseen](const std::string& why) {
    return read::fail("\"" + foreseen + "\" cannot be read: " + why);
  };
  const result<std::string> text = read_file(foreseen, largest_file);
  if (!text)
    return fail(text.error);
  result<foreseen_run> run = parse_foreseen(*text);
  return run ? read::ok(std::make_shared<const foreseen_run>(std::move(*run))) : fail(run.error);
}

std::vector<finding> look_at_disc(const shared_foreseen_run& foreseen, bool all_well,
                                  const look_output& out, int pause) {
  if (!all_well)
    return {};
  out.step("reading the disc back");
  out.line("INFO: the disc is read back and held against what was asked for");
  verification look({foreseen->out, foreseen->image ? foreseen->out + ".iso" : std::string()},
                    foreseen);
  read_back(look, out, pause);
  print_findings(look.findings(), out);
  const auto none = [&look](finding_severity of) { return count_of(look.findings(), of) == 0; };
  if (none(finding_severity::error))
    out.line(std::string("INFO: the disc is ") +
             (none(finding_severity::warning) ? "as it should be: "
                                              : "complete, but look at the warnings above: ") +
             std::to_string(look.bytes_read()) + " bytes were read");
  return look.findings();
}

}  // namespace corvane
