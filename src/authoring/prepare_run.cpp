// From "author dvd..." to the files of the run.
#include "authoring/author.h"
#include "authoring/checks.h"
#include "authoring/earlier_disc.h"
#include "authoring/look_before_run.h"
#include "authoring/menu_overlays.h"
#include "authoring/navigation_xml.h"
#include "authoring/subtitle_xml.h"
#include "authoring/work_script.h"
#include "platform/files/files.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/missing_tools.h"
#include "project/plain_texts.h"
#include "runner/run_files.h"

#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace corvane {
namespace {

/// What ends the conversation early; nothing when it goes on.
using ending = std::optional<author_result>;

ending tell(document& doc, author_result end, const std::string& text, icon picture) {
  doc.ask.message({text, picture, buttons::ok, program_name});
  return end;
}

ending refuse(document& doc, const std::string& text) {
  return tell(doc, author_result::refused, text, icon::exclamation);
}

// An edit that cannot be authored as it stands is mended in the editor, which therefore has to
// open; it is looked at again when the run starts.
bool is_edited_first(const project& p, const author_equipment& e) {
  return p.editxml && e.edit_xml && !edited_xml(p).empty();
}

refusal why_not_this_project(const project& p, const disc_description& d,
                             const author_equipment& e) {
  const path_style style = native_style();
  refusal why = is_edited_first(p, e) ? why_not_these_rows(d, style)
                                      : why_not_authorable(d, edited_xml(p), style);
  if (!why)
    why = why_not_these_menu_streams(d, style);
  if (!why)
    why = why_not_these_subtitles(d, style);
  if (!why)
    why = why_not_these_bitmaps(d, style);
  return why;
}

// What cannot be authored at all is told with everything else that is known to be wrong: somebody
// repairs all of it, not one thing after another.
ending check_project(document& doc, const disc_description& d, const author_equipment& e,
                     run_paths where) {
  if (d.titles.empty())
    return tell(doc, author_result::nothing_to_author, "please add more titles", icon::exclamation);
  const refusal why = why_not_this_project(doc.p, d, e);
  if (!why)
    return std::nullopt;
  where.out = output_folder(folder_of_custom_xml(edited_xml(doc.p)));
  looked_at_disc look = disc_to_look_at(doc, d, where);
  const findings_question known{*why, known_faults(look.disc, std::move(look.around), e.material),
                                false};
  if (count_of(known.findings, finding_severity::error) == 0)
    return refuse(doc, *why);
  doc.ask.go_on_despite(known);
  return author_result::refused;
}

ending check_tools(document& doc, const disc_description& d, const std::string& app) {
  const std::string missing = missing_tools(app, needed_tools(d));
  if (missing.empty())
    return std::nullopt;
  return tell(doc, author_result::tool_missing, missing, icon::critical);
}

// Hand-edited XML names its folder itself; any other run asks, and so does one whose edit has lost
// that line.
std::string named_folder(document& doc) {
  if (names_folder(edited_xml(doc.p)))
    return folder_of_custom_xml(edited_xml(doc.p));
  return doc.ask.save_file({"enter a folder name to create the dvd", "", "folder"});
}

// What a run that died has left there goes before the folder is looked at.
ending choose_folder(document& doc, const disc_description& d, prepared_run& run) {
  const std::string named = named_folder(doc);
  if (named.empty())
    return author_result::cancelled;
  run.where.out = output_folder(named);
  if (const auto why = why_not_this_folder(d, run.where))
    return refuse(doc, *why);
  if (!settle_interrupted_at(doc, run.where.out))
    return tell(doc, author_result::folder_in_use, output_folder_in_use(run.where.out),
                icon::critical);
  if (const auto why = why_not_what_lies_there(run.where))
    return refuse(doc, *why);
  if (const auto why = why_nothing_is_written_there(run.where))
    return tell(doc, author_result::not_written, *why, icon::critical);
  return std::nullopt;
}

// dvdauthor adds a second titleset to a disc that it finds, so the earlier one goes or stays whole.
ending check_earlier_disc(document& doc, const disc_description& d, const author_equipment& e,
                          prepared_run& run) {
  run.replace = earlier_disc(run.where, d.image);
  run.record = {d.image, {}, streams_of_run(d)};
  if (run.replace.empty())
    return std::nullopt;
  if (e.replace_earlier_disc)
    return *e.replace_earlier_disc ? std::nullopt : ending(author_result::holds_disc);

  const bool image_alone = run.replace.size() == 1 && run.replace[0] == run.where.out + ".iso";
  std::string text = image_alone ? "The disc image \"" + run.where.out + ".iso\" already exists."
                                 : "The folder \"" + run.where.out + "\" already holds a DVD.";
  text += "  Replace it?\n\nThis will be removed:";
  for (const std::string& path : run.replace)
    text += "\n" + path;
  if (doc.ask.message({text, icon::exclamation, buttons::yes_no, program_name}) == answer::yes)
    return std::nullopt;
  return author_result::holds_disc;
}

// Subtitles are drawn in fonts, which takes a while to list.
ending check_material(document& doc, const disc_description& d, const author_equipment& e,
                      prepared_run& run) {
  if (has_subtitles(d))
    run.where.fonts = e.fonts();
  return look_before_run(doc, e, run);
}

ending take_folder(document& doc, author_equipment& e) {
  if (e.lock.take())
    return std::nullopt;
  return tell(
      doc, e.lock.is_held_elsewhere() ? author_result::folder_in_use : author_result::not_written,
      program_folder_not_taken(e.app, e.lock), icon::critical);
}

using named_text = std::pair<std::string, std::string>;

// In the order in which they are written.
std::vector<named_text> texts_of_run(const disc_description& d, const std::string& customxml,
                                     const run_paths& where) {
  std::vector<named_text> texts;
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    texts.emplace_back(run_file::menu_control(menu), menu_subpicture_xml(d, where, menu));
  for (int title = 1; title <= d.title_count(); ++title) {
    int number = 0;
    for (const disc_subtitle& subtitle : d.title(title).subtitles)
      texts.emplace_back(run_file::subtitle_control(title, ++number),
                         subtitle_xml(subtitle, where));
  }
  texts.emplace_back(run_file::script, work_script(d, where));
  texts.emplace_back(run_file::navigation, config_xml(d, customxml, where));
  return texts;
}

// Tools write into a file of theirs that is there, and so through a link.
ending remove_pictures(document& doc, const disc_description& d, author_equipment& e,
                       const prepared_run& run) {
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    for (const std::string& name :
         {run_file::highlight_picture(menu), run_file::select_picture(menu)}) {
      const std::string file = run.where.in_app(name);
      std::error_code error;
      std::filesystem::remove(path_of(file), error);
      if (!error)
        continue;
      e.lock.release();
      return tell(doc, author_result::not_written,
                  "The file \"" + file +
                      "\" of an earlier run could not be removed: " + error.message() + ".",
                  icon::critical);
    }
  return std::nullopt;
}

ending write_texts(document& doc, const disc_description& d, author_equipment& e,
                   prepared_run& run) {
  for (const auto& [name, text] : texts_of_run(d, edited_xml(doc.p), run.where)) {
    const std::string file = run.where.in_app(name);
    if (const failure why = replace_file(file, text)) {
      e.lock.release();
      return tell(doc, author_result::not_written,
                  "The file \"" + file + "\" could not be written: " + *why + ".", icon::critical);
    }
    run.files.insert(name == run_file::script ? run.files.begin() : run.files.end(), file);
  }
  return std::nullopt;
}

}  // namespace

author_result prepare_run(document& doc, author_equipment& e, prepared_run& run) {
  run = {};
  run.where.app = e.app;
  const disc_description d = disc_of(doc.p);
  if (const ending end = check_project(doc, d, e, run.where))
    return *end;
  if (const ending end = check_tools(doc, d, e.app))
    return *end;
  settle_interrupted_runs(doc, e.app, e.lock);
  if (const ending end = choose_folder(doc, d, run))
    return *end;
  if (const ending end = check_earlier_disc(doc, d, e, run))
    return *end;
  if (const ending end = check_material(doc, d, e, run))
    return *end;
  if (const ending end = take_folder(doc, e))
    return *end;
  if (const ending end = remove_pictures(doc, d, e, run))
    return *end;
  if (const ending end = write_texts(doc, d, e, run))
    return *end;
  return author_result::prepared;
}

}  // namespace corvane
