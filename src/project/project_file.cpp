#include "project/project_file.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/messages.h"
#include "project/project_text.h"
#include "project/replace_project.h"
#include "project/stream_dialogs.h"

#include <algorithm>
#include <cstdint>

namespace corvane {
namespace {

bool may_replace_titles(document& doc) {
  if (doc.p.List1.empty())
    return true;
  message_box question;
  question.text = "overwrite currect project?";
  question.picture = icon::information;
  question.choice = buttons::ok_cancel;
  return doc.ask.message(question) == answer::ok;
}

file_dialog project_dialog(const char* title) {
  file_dialog dialog;
  dialog.title = title;
  dialog.filter = project_filter;
  return dialog;
}

bool refuse_file(document& doc, const std::string& path, const std::string& reason) {
  say(doc, icon::critical,
      "\"" + sanitized(path) + "\" is not a project file that can be loaded: " + reason + ".");
  return false;
}

bool refuse_version(document& doc, const std::string& number) {
  say(doc, icon::exclamation,
      "Sorry, but this project file is from Corvane" +
          std::string(number.starts_with('-') ? "" : " ") + number +
          " and is incompatible with the lastest version.");
  dvdsize(doc);
  return false;
}

}  // namespace

save_outcome save_project(document& doc) {
  const std::size_t menus = menus_in_file(doc.p);
  if (menus > static_cast<std::size_t>(most_menus)) {
    say(doc, icon::critical,
        "A project file holds at most " + trimmed(most_menus) + " menus; this project has " +
            trimmed(static_cast<std::int64_t>(menus)) + ".  Nothing was saved.");
    return save_outcome::failed;
  }
  const std::string path = doc.ask.save_file(project_dialog("save corvane project"));
  if (path.empty() || (file_exists(path) && !may_overwrite(doc)))
    return save_outcome::given_up;
  if (const failure why = write_file(path, project_text(doc.p))) {
    say(doc, icon::critical,
        "The project could not be saved to \"" + sanitized(path) + "\": " + *why +
            ".  The file is as it was.");
    return save_outcome::failed;
  }
  doc.p.saved = 1;
  return save_outcome::saved;
}

void saveproject_command(document& doc) {
  save_project(doc);
}

void loadproject_command(document& doc) {
  if (!may_replace_titles(doc))
    return;
  const std::string path = doc.ask.open_file(project_dialog("load corvane project"));
  if (!path.empty())
    loadprojectf(doc, path);
}

bool loadprojectf(document& doc, const std::string& path) {
  const auto text = read_file(path, largest_project_file);
  if (!text)
    return refuse_file(doc, path, text.error);
  const std::string version = version_number(*text);
  if (leading_number(version) < oldest_version)
    return refuse_version(doc, version);
  auto loaded = parse_project(*text);
  if (!loaded)
    return refuse_file(doc, path, loaded.error);
  return replace_project(doc, std::move(*loaded));
}

std::string path_from_command_line(std::string_view command_line) {
  std::string path(command_line);
  std::erase(path, '"');
  return path;
}

}  // namespace corvane
