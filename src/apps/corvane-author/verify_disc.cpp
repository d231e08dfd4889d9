#include "apps/corvane-author/verify_disc.h"

#include "apps/corvane-author/author_project.h"
#include "apps/corvane-author/check_project.h"
#include "apps/corvane-author/json_report.h"
#include "authoring/asked_disc.h"
#include "authoring/foreseen_run.h"
#include "authoring/navigation_xml.h"
#include "examine/verification.h"
#include "platform/processes/interrupt.h"
#include "project/edited_xml.h"
#include "tools/finding_list.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace corvane {
namespace {

constexpr int disc_slice_milliseconds = 100;

void say_what_is_missing(const examination& e, report& out) {
  std::set<std::string> said;
  for (const finding& f : e.findings())
    if ((f.rule == "file-missing" || f.rule == "subtitle-unreadable") && said.insert(f.file).second)
      out.message("\"" + f.file +
                  "\" cannot be read.  What it would tell of the disc is not known.");
}

run_paths paths_of(const project& p, const std::string& app) {
  run_paths where;
  where.app = app;
  where.out = output_folder(folder_of_custom_xml(edited_xml(p)));
  return where;
}

/// What the project's disc should be, by all of its files; `asked` is the disc that it asks for.
/// Returns nullopt if it was interrupted.
std::optional<foreseen_run> foresee(const project& p, const disc_description& asked,
                                    const run_paths& where, bool quiet, report& out) {
  fact_store store;
  examination e(asked, examination::depth::whole_files, store, {});
  if (!read_all_files(e, out, quiet))
    return std::nullopt;
  say_what_is_missing(e, out);
  return foreseen_of(p, where, &store, {});
}

bool read_disc_whole(verification& look, bool quiet, report& out) {
  bool told = false;
  while (look.step(disc_slice_milliseconds)) {
    if (interrupt_number() != 0)
      return false;
    if (quiet || look.bytes_to_read() == 0)
      continue;
    if (!told)
      out.step("reading the disc");
    told = true;
    out.percent(100.0 * static_cast<double>(look.bytes_read()) /
                static_cast<double>(look.bytes_to_read()));
  }
  if (told)
    out.end_progress();
  return true;
}

int stopped(report& out) {
  out.end_progress();
  out.message("stopped; the disc was not read to its end.");
  return 128 + interrupt_number();
}

}  // namespace

int verify_disc(const project* p, const std::string& app, const std::string& disc, bool as_json,
                report& out) {
  std::shared_ptr<const foreseen_run> foreseen;
  disc_place where = place_of_disc(disc);
  if (p != nullptr) {
    const run_paths paths = paths_of(*p, app);
    const result<disc_description> disc_asked = asked_disc(*p, paths);
    if (!disc_asked) {
      out.message("the hand-edited XML cannot be read: " + disc_asked.error +
                  ".  The disc was not held against it.");
      return not_authorable;
    }
    std::optional<foreseen_run> asked = foresee(*p, *disc_asked, paths, as_json, out);
    if (!asked)
      return stopped(out);
    if (asked->image)
      where = place_with_image(disc);
    foreseen = std::make_shared<const foreseen_run>(std::move(*asked));
  }
  verification look(where, foreseen);
  if (!read_disc_whole(look, as_json, out))
    return stopped(out);
  const finding_list findings(look.findings(), files_read::whole);
  if (as_json) {
    out.line(json_report(findings, look.found(), look.foreseen()));
  } else {
    out.line(disc_table(look.found(), look.foreseen()));
    for (const finding& f : findings.findings())
      out.line(printable(text_of(f)) + "\n");
    out.line(findings.summary());
  }
  return findings.count(finding_severity::error) > 0 ? not_authorable : disc_authored;
}

}  // namespace corvane
