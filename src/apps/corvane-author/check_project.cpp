#include "apps/corvane-author/check_project.h"

#include "apps/corvane-author/author_project.h"
#include "apps/corvane-author/json_report.h"
#include "authoring/asked_disc.h"
#include "authoring/checks.h"
#include "authoring/foreseen_run.h"
#include "authoring/navigation_xml.h"
#include "platform/processes/interrupt.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "tools/finding_list.h"

#include <utility>
#include <vector>

namespace corvane {
namespace {

constexpr int slice_milliseconds = 100;

}  // namespace

bool read_all_files(examination& e, report& out, bool quiet) {
  bool told = false;
  for (bool more = true; more;) {
    more = e.step(slice_milliseconds);
    if (interrupt_number() != 0)
      return false;
    if (quiet || !more || e.bytes_to_read() == 0)
      continue;
    // What is done in a moment needs no line.
    if (!told)
      out.step("examining the project's files");
    told = true;
    out.percent(100.0 * static_cast<double>(e.bytes_read()) /
                static_cast<double>(e.bytes_to_read()));
  }
  if (told)
    out.end_progress();
  return true;
}

int check_project(const project& p, const std::string& app, const std::string& output, bool as_json,
                  report& out) {
  run_paths where;
  where.app = app;
  where.out = output_folder(folder_of_custom_xml(edited_xml(p)));
  const result<disc_description> disc = asked_disc(p, where);
  if (!disc) {
    out.message("the hand-edited XML cannot be read: " + disc.error + ".");
    return not_authorable;
  }
  if (disc_of(p).titles.empty()) {  // a run refuses it with the same words
    out.message("please add more titles");
    return not_authorable;
  }
  fact_store store;
  examination_around around;
  around.customxml = edited_xml(p);
  around.output_folder = where.out.empty() ? output : where.out;
  around.program_folder = app;
  if (has_subtitles(*disc))
    around.fonts = system_fonts();
  examination e(*disc, examination::depth::whole_files, store, std::move(around));
  if (!read_all_files(e, out, as_json)) {
    out.end_progress();
    out.message("stopped; nothing was examined to its end.");
    return 128 + interrupt_number();
  }
  std::vector<finding> found = e.findings();
  if (auto refused = finding_of_refusal(disc_of(p), edited_xml(p), where.style))
    found.push_back(std::move(*refused));
  const finding_list findings(std::move(found), files_read::whole);
  if (as_json) {
    out.line(json_report(findings, {}, foreseen_of(p, where, &store, {}).disc));
  } else {
    for (const finding& f : findings.findings())
      out.line(printable(text_of(f)) + "\n");
    out.line(findings.summary());
  }
  return findings.count(finding_severity::error) > 0 ? not_authorable : disc_authored;
}

}  // namespace corvane
