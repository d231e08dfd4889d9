#include "authoring/author.h"

#include "authoring/checks.h"
#include "authoring/earlier_disc.h"
#include "authoring/foreseen_run.h"
#include "authoring/look_before_run.h"
#include "authoring/navigation_xml.h"
#include "disc/finding_file.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/plain_texts.h"
#include "runner/run_files.h"
#include "runner/tools/tool_outcomes.h"
#include "runner/video_format.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr std::uintmax_t largest_findings_file = std::uintmax_t{64} << 20;

author_result not_started(document& doc, author_equipment& e, author_result end,
                          const std::string& text) {
  e.lock.release();
  doc.ask.message({text, icon::critical, buttons::ok, program_name});
  return end;
}

// The XML editor may have changed the text since the run was prepared; without an edit, the XML is
// that of the rows, whose commands nobody has looked at where there was one.
std::optional<std::string> why_not_edited_xml(const project& p, const prepared_run& run) {
  if (edited_xml(p).empty())
    return run.looked_at_xml.empty() ? std::nullopt
                                     : why_not_authorable(disc_of(p), {}, native_style());
  if (const auto why = why_not_safe_xml(edited_xml(p)))
    return why;
  if (output_folder(folder_of_custom_xml(edited_xml(p))) != run.where.out)
    return "The edited XML names another output folder than \"" + run.where.out +
           "\", for which this run was prepared.  Please author again.";
  return std::nullopt;
}

// What came into the output folder since the user was asked.
refusal why_not_as_asked(const prepared_run& run) {
  if (const refusal why = why_not_what_lies_there(run.where))
    return why;
  for (const std::string& path : earlier_disc(run.where, run.record.image))
    if (std::find(run.replace.begin(), run.replace.end(), path) == run.replace.end())
      return "\"" + path + "\" was not there when this run was prepared.  Please author again.";
  return std::nullopt;
}

// With the parts of an earlier disc that are there now: of one that has gone since the question,
// what the run makes in its place would be taken for the part itself, put back already.
run_record record_of(const prepared_run& run) {
  run_record record = run.record;
  const std::vector<std::string> there = earlier_disc(run.where, record.image);
  for (const char* const part : disc_parts)
    if (std::find(there.begin(), there.end(), home_of_part(part, run.where.out)) != there.end())
      record.earlier.emplace_back(part);
  return record;
}

// Here, for the XML editor may have changed the disc that is asked for. What an earlier run has
// found is not to be taken for this one's.
failure write_foreseen(const project& p, const author_equipment& e, const prepared_run& run) {
  const foreseen_run foreseen = foreseen_of(p, run.where, e.material.facts, run.accepted);
  for (const auto& [name, text] : {std::pair{run_file::foreseen, foreseen_text(foreseen)},
                                   std::pair{run_file::findings, findings_text({})}}) {
    const std::string file = run.where.in_app(name);
    if (const failure why = replace_file(file, text))
      return "The file \"" + file + "\" could not be written: " + *why + ".";
  }
  return std::nullopt;
}

// What conspawn has written down; of a run that it did not see to its end, what is known here.
found_in_run found_by(const std::string& app, run_outcome outcome) {
  if (outcome == run_outcome::none)
    return std::nullopt;
  const result<std::string> text =
      read_file(join_path(app, run_file::findings), largest_findings_file);
  const result<std::vector<finding>> read =
      text ? parse_findings(*text) : result<std::vector<finding>>::fail(text.error);
  std::vector<finding> found = read ? *read : std::vector<finding>();
  if (outcome == run_outcome::stopped)
    found.push_back(outcome_finding("run-stopped", {}, "the run was stopped before its end"));
  if (outcome == run_outcome::failed && count_of(found, finding_severity::error) == 0)
    found.push_back(outcome_finding("run-failed", {}, "the run has failed"));
  return found;
}

std::vector<std::string> parts_put_aside(const run_place& place, const run_record& record) {
  std::vector<std::string> paths;
  for (const std::string& part : record.earlier)
    paths.push_back(join_path(place.path(), part));
  return paths;
}

std::string first_lines(const prepared_run& run) {
  std::string lines = version_title + std::string(crlf);
  if (run.material_unseen)
    lines += skipped_look + std::string(crlf);
  return lines;
}

}  // namespace

author_result authordvd(document& doc, author_equipment& e, prepared_run run) {
  if (!e.lock.take())
    return not_started(
        doc, e,
        e.lock.is_held_elsewhere() ? author_result::folder_in_use : author_result::not_written,
        program_folder_not_taken(e.app, e.lock));
  if (const auto why = why_not_edited_xml(doc.p, run))
    return not_started(doc, e, author_result::refused, *why);
  // The runner would say so too, but only once the earlier disc has been put aside.
  if (!tool_is_there(e.app, "conspawn"))
    return not_started(doc, e, author_result::not_started, missing_script_runner);
  if (const auto end = look_at_edit(doc, e, run)) {
    e.lock.release();
    return *end;
  }
  if (const refusal why = why_not_as_asked(run))
    return not_started(doc, e, author_result::refused, *why);
  if (const failure why = write_foreseen(doc.p, e, run))
    return not_started(doc, e, author_result::not_written, *why);
  const run_record record = record_of(run);
  const begun_run begun = begin_run(e.app, run.where.out, record);
  if (begun.in_use)
    return not_started(doc, e, author_result::folder_in_use, output_folder_in_use(run.where.out));
  if (!begun.place)
    return not_started(doc, e, author_result::refused, begun.why + "  Authoring was not started.");

  const auto settle = [app = e.app, record, place = begun.place](run_outcome outcome) {
    run_settled settled = settle_run(app, record, *place, outcome);
    settled.findings = found_by(app, outcome);
    return settled;
  };
  e.runner.ExecuteCommand(
      run.where.in_app(run_file::script),
      {{video_format(doc.p.globalregion), {run_file::makes_disc_variable, "yes"}},
       first_lines(run),
       doc.p.cleanup,
       settle,
       parts_put_aside(*begun.place, record),
       [place = begun.place] { place->note_alive(); },
       [out = run.where.out, record] { return is_complete(run_outcome::success, out, record); }});
  return e.runner.running() ? author_result::started : author_result::not_started;
}

author_result author_command(document& doc, author_equipment& e, prepared_run& run) {
  const author_result prepared = prepare_run(doc, e, run);
  if (prepared != author_result::prepared)
    return prepared;
  if (doc.p.editxml && e.edit_xml) {
    e.edit_xml();
    return author_result::editing;
  }
  return authordvd(doc, e, run);
}

}  // namespace corvane
