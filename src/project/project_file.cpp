#include "project/project_file.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/edited_xml.h"
#include "project/file_lookup.h"
#include "project/menu_rows.h"
#include "project/messages.h"
#include "project/moved_files.h"
#include "project/picked_file.h"
#include "project/preferences.h"
#include "project/project_text.h"
#include "project/recent_projects.h"
#include "project/stream_dialogs.h"
#include "project/subtitle_rows.h"
#include "project/title_rows.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

namespace corvane {
namespace {

bool may_replace_titles(document& doc) {
  if (doc.p.List1.empty())
    return true;
  message_box question;
  question.text = "overwrite currect project?";
  question.picture = icon::information;
  question.choice = buttons::ok_cancel;
  question.enter_cancels = true;
  return doc.ask.message(question) == answer::ok;
}

file_dialog project_dialog(const document& doc, const char* title) {
  file_dialog dialog;
  dialog.title = title;
  dialog.filter = project_filter;
  if (!doc.file().empty())
    dialog.folder = text_of(path_of(doc.file()).parent_path());
  return dialog;
}

void refuse_file(document& doc, const std::string& path, const std::string& reason) {
  say(doc, icon::critical,
      "\"" + sanitized(path) + "\" is not a project file that can be loaded: " + reason + ".");
}

void refuse_version(document& doc, const std::string& number) {
  say(doc, icon::exclamation,
      "Sorry, but this project file is from Corvane" +
          std::string(number.starts_with('-') ? "" : " ") + number +
          " and is incompatible with the lastest version.");
  dvdsize(doc);
}

void say_other_characters(document& doc, const std::string& path) {
  say(doc, icon::information,
      "\"" + sanitized(path) +
          "\" is not UTF-8 text.  It was read as Windows-1252, as older programs and editors write "
          "it; please look whether all names are right.  Saved, it will be UTF-8.");
}

/// The files that a loaded project names, looked up one by one.
class file_check {
 public:
  file_check(document& doc, file_lookup& files) : doc_(doc), files_(files) {}

  void stream(const std::string& part) {
    if (files_.size_of(part))
      return;
    if (++missing_ <= most_messages)
      say_missing(doc_, part);
  }
  /// The audio of a menu without one is empty, and is looked up as any file in the current folder.
  void menu_part(const std::string& part, bool audio) {
    if (!audio || !part.empty() || !files_.current_folder_has_any())
      stream(part);
  }
  /// A field that may be something else than a path.
  void field(const std::string& part) {
    if (is_bitmap(part))
      stream(part);
  }
  /// Whether any was missing. Tells how many went without a message of their own.
  bool any_missing() {
    if (missing_ > most_messages)
      say(doc_, icon::critical,
          trimmed(missing_ - most_messages) + " more files appear to be missing");
    return missing_ > 0;
  }

 private:
  // A damaged or hostile file could name a million; nobody can click those away.
  static constexpr std::int64_t most_messages = 100;

  document& doc_;
  file_lookup& files_;
  std::int64_t missing_ = 0;
};

void check_titles(const project& p, file_check& check) {
  for (const std::string& row : p.List11)
    for (const std::string& part : streams_of(row))
      check.stream(part);
}

void check_menus(const project& p, file_check& check) {
  for (const std::string& row : p.menulist) {
    const std::vector<std::string> parts = menu_files(row);
    for (std::size_t i = 0; i < parts.size(); ++i)
      check.menu_part(parts[i], i != 0);
  }
}

void check_buttons(const project& p, file_check& check) {
  for (const std::string& element : p.menubuttons)
    for (const std::string& record : pieces_of(element))
      for (const std::string& field : fields_of(record))
        check.field(field);
}

void check_subtitles(const project& p, file_check& check) {
  for (const std::string& row : p.subtitledata)
    for (const std::string& part : subtitle_paths(row))
      check.field(part);
}

void fill(project& p, loaded_project loaded) {
  p.List11 = std::move(loaded.List11);
  p.chapters = std::move(loaded.chapters);
  p.delay = std::move(loaded.delay);
  for (std::string& tag : loaded.languagetags)
    p.languagetags.push_back(std::move(tag));
  p.menulist = std::move(loaded.menulist);
  p.moremenuoptions = std::move(loaded.moremenuoptions);
  p.menubuttons = std::move(loaded.menubuttons);
  p.postinfo = std::move(loaded.postinfo);
  p.subtitledata = std::move(loaded.subtitledata);
  p.subtitleoptions = std::move(loaded.subtitleoptions);
  p.firstplay = std::move(loaded.firstplay);
  p.globalregion = std::move(loaded.globalregion);
  p.isocreate = loaded.isocreate;
  p.jumptable = loaded.jumptable;
  p.customxml = std::move(loaded.customxml);
  p.led_to.clear();
  p.selected = -1;
  rebuild_List1(p);
  show_title_count(p);
}

/// Back to a project without titles and menus. What is not named here stays as it was loaded.
void reset_project(project& p) {
  for (auto* list : {&p.List1, &p.List11, &p.chapters, &p.menulist, &p.moremenuoptions, &p.postinfo,
                     &p.subtitledata, &p.subtitleoptions})
    list->clear();
  p.firstplay.clear();
  show_title_count(p);
}

/// The text that a file would have which holds this alone.
std::string text_as_saved(const loaded_project& loaded) {
  project alone;
  fill(alone, loaded);
  return project_text(alone);
}

/// Files that are not there are looked for where the user says, as often as he does; what was found
/// stands in their place.
void find_moved_files(document& doc, loaded_project& loaded) {
  project wanted;
  fill(wanted, loaded);
  file_lookup files;
  if (!offer_to_find_files(doc, wanted, files))
    return;
  loaded.List11 = std::move(wanted.List11);
  loaded.menulist = std::move(wanted.menulist);
  loaded.menubuttons = std::move(wanted.menubuttons);
  loaded.subtitledata = std::move(wanted.subtitledata);
}

/// Replaces the project with what a file holds (its language tags are added to those already
/// there). Each file it names that is missing gets a message; after one, titles, menus and subtitle
/// data are emptied again and the answer is false.
bool replace_project(document& doc, loaded_project loaded) {
  fill(doc.p, std::move(loaded));
  file_lookup files;  // a button's bitmap may be named thousands of times
  file_check check(doc, files);
  check_titles(doc.p, check);
  check_menus(doc.p, check);
  check_buttons(doc.p, check);
  check_subtitles(doc.p, check);
  if (!doc.p.List1.empty() || !doc.p.buttondata.empty())
    doc.p.Comboregion_enabled = false;
  doc.p.saved = 1;
  const bool missing = check.any_missing();
  if (missing)
    reset_project(doc.p);
  dvdsize(doc, files);
  if (missing)
    doc.forget_file();
  return !missing;
}

/// Returns nullopt if the file is refused (a message was shown).
std::optional<loaded_project> read_project(document& doc, const std::string& path) {
  const auto bytes = read_file(path, largest_project_file);
  if (!bytes) {
    refuse_file(doc, path, bytes.error);
    return std::nullopt;
  }
  const auto characters = project_characters_of(*bytes);
  const std::string version = version_number(characters ? characters->text : *bytes);
  if (leading_number(version) < oldest_version) {
    refuse_version(doc, version);
    return std::nullopt;
  }
  auto loaded =
      characters ? parse_project(characters->text) : result<loaded_project>::fail(characters.error);
  if (!loaded) {
    refuse_file(doc, path, loaded.error);
    return std::nullopt;
  }
  if (characters->was_windows_1252)
    say_other_characters(doc, path);
  return std::move(*loaded);
}

}  // namespace

namespace {

bool may_be_saved(document& doc) {
  const std::size_t menus = menus_in_file(doc.p);
  if (menus > static_cast<std::size_t>(most_menus)) {
    say(doc, icon::critical,
        "A project file holds at most " + trimmed(most_menus) + " menus; this project has " +
            trimmed(static_cast<std::int64_t>(menus)) + ".  Nothing was saved.");
    return false;
  }
  return true;
}

/// "Do you want to save project?" and what follows. False when the project is to stay open.
bool may_leave(document& doc) {
  message_box question;
  question.text = "Do you want to save project?";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no_cancel;
  const answer reply = doc.ask.message(question);
  return reply == answer::no || (reply == answer::yes && save_project(doc) == save_outcome::saved);
}

/// Whether the file is write-protected, which is then told.
bool is_kept_from_us(document& doc, const std::string& path) {
  const failure why = why_not_writable_file(path);
  if (why)
    say(doc, icon::exclamation,
        "\"" + sanitized(path) + "\" " + *why +
            ".  Nothing was saved: please choose another name with \"save project...\", or let the "
            "file be "
            "written.");
  return why.has_value();
}

/// The same text as this program would write it; empty if it is no project.
std::string as_saved_here(const std::string& bytes) {
  const auto characters = project_characters_of(bytes);
  if (!characters)
    return {};
  auto loaded = parse_project(characters->text);
  return loaded ? text_as_saved(*loaded) : std::string();
}

/// What the file of a project holds, as this program would write it; empty if it cannot be read.
std::string text_in_file(const std::string& path) {
  const auto bytes =
      path.empty() ? result<std::string>::fail("") : read_file(path, largest_project_file);
  return bytes ? as_saved_here(*bytes) : std::string();
}

/// Whether the project's file may be replaced. It may be another than the one that was loaded or
/// saved here, as when two programs have the same project.
bool may_replace_file(document& doc) {
  if (!file_exists(doc.file()))
    return true;
  const auto bytes = read_file(doc.file(), largest_project_file);
  if (bytes && *bytes == doc.text_of_file())
    return true;
  const std::string there = bytes ? as_saved_here(*bytes) : std::string();
  if (!there.empty() && there == as_saved_here(doc.text_of_file()))
    return true;
  message_box question;
  question.text = "\"" + sanitized(doc.file()) +
                  "\" is not as it was when this project was loaded or saved last, as when another "
                  "program has changed it; what stands there now would be lost.  With Cancel "
                  "nothing is saved, and \"save project...\" saves under another name.\r\n\r\nDo "
                  "you want to replace it?";
  question.picture = icon::exclamation;
  question.choice = buttons::ok_cancel;
  question.enter_cancels = true;
  return doc.ask.message(question) == answer::ok;
}

// The document's own path would go while it is saved.
save_outcome save_to(document& doc, const std::string path) {  // NOLINT(*-unnecessary-value-param)
  const auto before = read_file(path, largest_project_file);
  if (const failure why = write_file(path, project_text(doc.p))) {
    const auto after = read_file(path, largest_project_file);
    const bool as_it_was = before ? after && *after == *before : !after;
    say(doc, icon::critical,
        "The project could not be saved to \"" + sanitized(path) + "\": " + *why +
            (as_it_was ? ".  The file is as it was." : "."));
    return save_outcome::failed;
  }
  doc.p.saved = 1;
  doc.saved_to(path);
  note_recent_project(doc.prefs, path);
  return save_outcome::saved;
}

}  // namespace

save_outcome save_project(document& doc) {
  if (!may_be_saved(doc))
    return save_outcome::failed;
  const std::string path = doc.ask.save_file(project_dialog(doc, "save corvane project"));
  if (is_kept_from_us(doc, path))
    return save_outcome::failed;
  if (path.empty() || (file_exists(path) && !may_overwrite(doc)))
    return save_outcome::given_up;
  return save_to(doc, path);
}

void saveproject_command(document& doc) {
  save_project(doc);
}

void savefile_command(document& doc) {
  if (doc.file().empty())
    saveproject_command(doc);
  else if (may_be_saved(doc) && !is_kept_from_us(doc, doc.file()) && may_replace_file(doc))
    save_to(doc, doc.file());
}

void newproject_command(document& doc) {
  const bool holds_something =
      !doc.p.List11.empty() || !doc.p.menulist.empty() || !edited_xml(doc.p).empty();
  if (holds_something && doc.is_unsaved() && !may_leave(doc))
    return;
  const project old = std::exchange(doc.p, {});
  start_up(doc);
  doc.p.cleanup = old.cleanup;
  doc.p.editxml = old.editxml;
  dvdsize(doc);
}

void loadproject_command(document& doc) {
  load_asked(doc);
}

bool load_asked(document& doc) {
  if (!may_replace_titles(doc))
    return false;
  const std::string path = doc.ask.open_file(project_dialog(doc, "load corvane project"));
  return !path.empty() && may_be_taken(doc, path, file_use::project) && loadprojectf(doc, path);
}

void load_recent_command(document& doc, const std::string& path) {
  if (may_replace_titles(doc))
    loadprojectf(doc, path);
}

bool loadprojectf(document& doc, const std::string& path) {
  doc.given_up_files.clear();
  std::optional<loaded_project> loaded = read_project(doc, path);
  if (!loaded)
    return false;
  std::string text = text_as_saved(*loaded);
  find_moved_files(doc, *loaded);
  if (!replace_project(doc, std::move(*loaded)))
    return false;
  doc.set_file(path, std::move(text));
  note_recent_project(doc.prefs, path);
  return true;
}

namespace {

message_box question_about(const kept_project& left) {
  message_box question;
  const std::string name = left.file.empty() ? "A project that was never saved"
                                             : "The project \"" + sanitized(left.file) + "\"";
  question.text = name + " had changes that were not saved when Corvane ended.";
  if (!left.editor.empty())
    question.text +=
        "  The window \"" + sanitized(left.editor) + "\" was open; what stood there is among them.";
  question.text += "\r\n\r\nDo you want to bring them back?  With No they are gone for good.";
  question.picture = icon::information;
  question.choice = buttons::yes_no;
  question.enter_answers_yes = true;
  return question;
}

/// What the project's file holds, if that is what it held when the project was kept; else nothing,
/// so that it is not replaced unasked.
std::string text_known_of(const kept_project& left) {
  const auto bytes = left.file.empty() ? result<std::string>::fail("")
                                       : read_file(left.file, largest_project_file);
  if (!bytes)
    return {};
  const std::string text = as_saved_here(*bytes);
  const bool is_known =
      left.mark.empty() || mark_of_text(*bytes) == left.mark || mark_of_text(text) == left.mark;
  return is_known ? text : std::string();
}

bool bring_back(document& doc, const kept_project& left) {
  auto loaded = parse_project(left.text);
  if (!loaded)
    return false;
  doc.p.languagetags.clear();
  fill(doc.p, std::move(*loaded));
  doc.p.Comboregion_enabled = doc.p.List1.empty() && doc.p.menulist.empty();
  doc.p.saved = 0;
  doc.set_file(left.file, text_known_of(left));
  show_size_of_what_is_there(doc.p);
  return true;
}

}  // namespace

bool load_to_look(document& doc, const std::string& path) {
  std::optional<loaded_project> loaded = read_project(doc, path);
  if (!loaded)
    return false;
  fill(doc.p, std::move(*loaded));
  doc.p.saved = 1;
  return true;
}

bool recover_command(document& doc, recovery& kept) {
  std::vector<left_project> all = kept.left();
  for (auto left = all.rbegin(); left != all.rend(); ++left) {
    if (left->what().text == text_in_file(left->what().file)) {
      left->drop();  // saved, and ended before it could forget it
      continue;
    }
    const answer reply = doc.ask.message(question_about(left->what()));
    if (reply == answer::no)
      left->drop();
    if (reply != answer::yes)
      continue;
    if (!bring_back(doc, left->what())) {
      say(doc, icon::critical, "What was kept of the project cannot be read.  It stays kept.");
      continue;
    }
    // Kept by this program before the other's goes.
    doc.keep();
    if (!kept.flush())
      left->drop();
    return true;
  }
  return false;
}

std::string path_from_command_line(std::string_view command_line) {
  std::string path(command_line);
  std::erase(path, '"');
  return path;
}

}  // namespace corvane
