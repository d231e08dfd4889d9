#include "authoring/author.h"

#include "authoring/checks.h"
#include "authoring/navigation_xml.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "runner/run_files.h"
#include "runner/video_format.h"

#include <optional>

namespace corvane {
namespace {

author_result not_started(document& doc, author_equipment& e, author_result end,
                          const std::string& text) {
  e.lock.release();
  doc.ask.message({text, icon::critical, buttons::ok, program_name});
  return end;
}

// The XML editor may have changed the text since the run was prepared.
std::optional<std::string> why_not_edited_xml(const project& p, const prepared_run& run) {
  if (p.customxml.empty())
    return std::nullopt;
  if (const auto why = why_not_safe_xml(p.customxml))
    return why;
  if (output_folder(folder_of_custom_xml(p.customxml)) != run.where.out)
    return "The edited XML names another output folder than \"" + run.where.out +
           "\", for which this run was prepared.  Please author again.";
  return std::nullopt;
}

// The earlier disc last: when anything is in the way, it stays.
failure remove_leftovers(const prepared_run& run) {
  for (const std::string& path : leftovers(run.where))
    if (const failure why = remove_all(path))
      return "\"" + path + "\", left by an earlier run, could not be removed: " + *why +
             ".  Authoring was not started.";
  return std::nullopt;
}

failure remove_earlier_disc(const prepared_run& run) {
  for (const std::string& path : run.replace)
    if (const failure why = remove_all(path))
      return "\"" + path + "\" of the earlier DVD could not be removed: " + *why +
             ".  Authoring was not started.";
  return std::nullopt;
}

}  // namespace

author_result authordvd(document& doc, author_equipment& e, const prepared_run& run) {
  if (!e.lock.take())
    return not_started(doc, e, author_result::folder_in_use,
                       "Another authoring run is using the program folder \"" + e.app +
                           "\".  Please wait until it has finished.");
  if (const auto why = why_not_edited_xml(doc.p, run))
    return not_started(doc, e, author_result::refused, *why);
  // The runner would say so too, but only once the earlier disc is gone.
  if (!tool_is_there(e.app, "conspawn"))
    return not_started(doc, e, author_result::not_started, missing_script_runner);
  if (const failure why = remove_leftovers(run))
    return not_started(doc, e, author_result::refused, *why);
  if (const failure why = remove_earlier_disc(run))
    return not_started(doc, e, author_result::refused, *why);

  e.runner.ExecuteCommand(
      run.where.in_app(run_file::script),
      {{video_format(doc.p.globalregion)}, version_title + std::string(crlf), doc.p.cleanup});
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
