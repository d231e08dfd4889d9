#include "authoring/earlier_disc.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "runner/lost_log.h"
#include "runner/run_files.h"

#include <utility>

namespace corvane {
namespace {

std::string parent_of(const std::string& path) {
  return text_of(path_of(path).parent_path());
}

/// Writes the run down, then puts aside; undone when it fails.
failure put_aside(const std::string& app, run_place& place, const run_record& record) {
  const unfinished_run run{place.out(), place.path()};
  failure why = add_unfinished_run(app, run);
  if (why)
    why = "The file \"" + join_path(app, run_file::unfinished) +
          "\" could not be written: " + *why + ".";
  else
    why = place.put_aside(record);
  if (!why)
    return std::nullopt;
  for (const std::string& trouble : place.bring_back().troubles)
    *why += "  " + trouble;
  if (place.is_settled())
    drop_unfinished_run(app, run);
  return why;
}

/// Tells what was done for a run that died; nothing when there was nothing to do.
void tell(document& doc, const std::string& out, const place_settled& done) {
  std::string text = "The authoring run into \"" + out + "\" was interrupted.";
  if (done.brought_back)
    text += "  The earlier DVD, which it was to replace, is in its place again.";
  else if (done.removed)
    text += "  What it had made was removed.";
  for (const std::vector<std::string>* more : {&done.kept, &done.troubles})
    for (const std::string& sentence : *more)
      text += "\n" + sentence;
  const bool all_well = done.kept.empty() && done.troubles.empty();
  if (done.brought_back || done.removed || !all_well)
    say(doc, all_well ? icon::information : icon::exclamation, text);
}

/// Whether the run needs no more looking after.
bool settle_interrupted(document& doc, const unfinished_run& run) {
  if (!folder_exists(run.place))
    return folder_exists(parent_of(run.place));
  run_place place(run.out, run.place);
  if (!place.take())
    return false;
  tell(doc, run.out, place.settle_interrupted());
  return place.is_settled();
}

}  // namespace

begun_run begin_run(const std::string& app, const std::string& out, const run_record& record) {
  begun_run begun;
  // The image could not be made where nothing can be written beside the folder.
  for (const bool inside : {false, true}) {
    if (inside && record.image)
      break;
    result<std::unique_ptr<run_place>> made = make_place(out, inside);
    failure why;
    if (!made)
      why = "Nothing can be written beside the output folder \"" + out + "\": " + made.error + ".";
    else if (*made == nullptr)
      return {nullptr, true, {}};
    else
      why = put_aside(app, **made, record);
    if (!why)
      return {std::move(*made), false, {}};
    if (begun.why.empty())
      begun.why = *why;
  }
  return begun;
}

bool is_complete(run_outcome outcome, const std::string& out, const run_record& record) {
  if (outcome != run_outcome::success)
    return false;
  // Tools have ended well and made nothing.
  return folder_exists(join_path(out, "VIDEO_TS")) &&
         (!record.image || file_exists(home_of_part(image_part, out)));
}

run_settled settle_run(const std::string& app, const run_record& record, run_place& place,
                       run_outcome outcome) {
  const bool complete = is_complete(outcome, place.out(), record);
  const place_settled done = complete ? place.complete() : place.bring_back();
  run_settled told;
  if (done.removed)
    told.notes.push_back("what the run had made in \"" + place.out() + "\" was removed");
  if (done.brought_back) {
    told.notes.emplace_back("the earlier DVD is in its place again");
    told.restored = "The earlier DVD, which the run was to replace, is in its place again: \"" +
                    place.out() + "\".";
  }
  if (!complete && outcome == run_outcome::success)
    told.warnings.push_back("The run has not made all of the DVD in \"" + place.out() + "\"." +
                            (done.brought_back ? "  The earlier one is in its place again." : ""));
  told.warnings.insert(told.warnings.end(), done.troubles.begin(), done.troubles.end());
  if (place.is_settled())
    drop_unfinished_run(app, {place.out(), place.path()});
  return told;
}

std::string output_folder_in_use(const std::string& out) {
  return "Another authoring run is using the output folder \"" + out +
         "\".  Please wait until it has finished, or choose another folder.";
}

std::string program_folder_not_taken(const std::string& app, const folder_lock& lock) {
  if (lock.is_held_elsewhere())
    return "Another authoring run is using the program folder \"" + app +
           "\".  Please wait until it has finished.";
  return "Nothing can be written into the program folder \"" + app +
         "\", where the files of a run go: " + lock.trouble() + ".  Please let it be written.";
}

void settle_interrupted_runs(document& doc, const std::string& app, folder_lock& lock) {
  const bool held = lock.held();
  const bool lost_log =
      !held && has_lost_log(app);  // while it is held, the log may be a run's of ours
  if ((!lost_log && unfinished_runs(app).empty()) || !lock.take())
    return;
  if (lost_log && keep_lost_log(app))
    say(doc, icon::information,
        "The last authoring run was lost with its program.  Its log, as far as it was written, is "
        "kept in \"" +
            join_path(app, run_file::log) + "\".");
  for (const unfinished_run& run : unfinished_runs(app))
    if (settle_interrupted(doc, run))
      drop_unfinished_run(app, run);
  if (!held)
    lock.release();
}

bool settle_interrupted_at(document& doc, const std::string& out) {
  for (const std::string& path : places_of(out)) {
    run_place place(out, path);
    if (!place.take())
      return false;
    tell(doc, out, place.settle_interrupted());
  }
  return true;
}

}  // namespace corvane
