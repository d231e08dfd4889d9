#include "tools/association.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/text/charset.h"
#include "project/messages.h"

#include <cstdint>

namespace corvane {
namespace {

constexpr std::uintmax_t largest_list = 1u << 20;

void tell(document& doc, icon picture, const std::string& text) {
  say(doc, picture, text);
}

failure written(const std::string& file, const std::string& text) {
  if (const failure why = write_file(file, text))
    return "the file \"" + sanitized(file) + "\" could not be written: " + *why;
  return std::nullopt;
}

// Windows ----------------------------------------------------------------------------------------

/// The folder's path as it stands inside quoted values, with its last separator.
std::string doubled(std::string_view app) {
  if (app.ends_with('\\'))
    app.remove_suffix(1);
  std::string text;
  for (const std::string& piece : split(app, '\\'))
    text += piece + "\\\\";
  return text;
}

association_result register_on_windows(document& doc, const association_equipment& e) {
  const std::string script = join_path(e.app, "extension.reg");
  // A script of this kind holds 8-bit text, and the registry editor knows no UTF-8.
  const auto text = in_system_charset(registry_script(e.app));
  failure why = text ? written(script, *text)
                     : "the name of the program's folder, \"" + sanitized(e.app) +
                           "\", has characters that a registry script cannot hold";
  if (!why)
    why = written(join_path(e.app, "removeextension.reg"), registry_removal_script());
  if (!why && (why = e.user_desktop.import_registry(script)))
    why = "the registry editor could not be started: " + *why;
  if (!why)
    return association_result::associated;
  tell(doc, icon::critical,
       "Project files could not be associated with Corvane: " + sanitized(*why) + ".");
  return association_result::incomplete;
}

// Linux ------------------------------------------------------------------------------------------

/// Inside double quotes in a desktop entry's command: the quoting of the command, then that of the
/// entry's texts.
std::string quoted_in_entry(std::string_view program) {
  std::string text = "\"";
  for (const char c : program)
    switch (c) {
      case '"':
      case '`':
      case '$':
        text += std::string("\\\\") + c;
        break;
      case '\\':
        text += "\\\\\\\\";
        break;
      case '%':
        text += "%%";
        break;
      default:
        text += c;
    }
  return text + '"';
}

/// The program as a command's first word. Without quotes where it needs none: on a plain window
/// manager xdg-open takes quotes for a part of the program's name.
std::string word_in_entry(std::string_view program) {
  constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`%";
  if (program.find_first_of(reserved) == std::string_view::npos)
    return std::string(program);
  return quoted_in_entry(program);
}

struct user_file {
  std::string path, text;
};

std::string below(const std::string& folder, std::string_view rest) {
  return join_path(folder, rest, path_style::posix);
}

std::string mimeapps_of(const association_equipment& e) {
  return below(e.folders.config, "mimeapps.list");
}

std::vector<user_file> files_of(const association_equipment& e) {
  const std::string pictures = below(e.folders.data, "icons/hicolor/scalable");
  const std::string picture_of_type = replace_all(project_mime_type, "/", "-") + ".svg";
  return {{below(pictures, "apps/corvane.svg"), e.icon},
          {below(pictures, "mimetypes/" + picture_of_type), e.icon},
          {below(e.folders.data, "mime/packages/corvane.xml"), mime_type_xml()},
          {below(e.folders.data, "applications/" + std::string(desktop_entry_name)),
           desktop_entry(e.program)}};
}

std::string text_of_file(const std::string& file) {
  const auto text = read_file(file, largest_list);
  return text ? *text : std::string();
}

bool stands_already(const association_equipment& e) {
  for (const user_file& file : files_of(e))
    if (text_of_file(file.path) != file.text)
      return false;
  return is_default_in(text_of_file(mimeapps_of(e)));
}

void note(std::vector<std::string>& trouble, const failure& why) {
  if (why)
    trouble.push_back(sanitized(*why));
}

void refresh_databases(const association_equipment& e, std::vector<std::string>& trouble) {
  note(trouble, e.user_desktop.run({"update-mime-database", below(e.folders.data, "mime")}));
  note(trouble,
       e.user_desktop.run({"update-desktop-database", below(e.folders.data, "applications")}));
}

// xdg-mime ends with status 0 also when it could not write its list.
failure set_default(const association_equipment& e) {
  failure why = e.user_desktop.run(
      {"xdg-mime", "default", std::string(desktop_entry_name), std::string(project_mime_type)});
  if (!why && !is_default_in(text_of_file(mimeapps_of(e))))
    why = "the file \"" + mimeapps_of(e) + "\" does not name Corvane: xdg-mime did not write it";
  return why;
}

association_result outcome(document& doc, association_result done, const std::string& text,
                           const std::vector<std::string>& trouble) {
  if (trouble.empty()) {
    tell(doc, icon::information, text);
    return done;
  }
  tell(doc, icon::exclamation,
       "The association of project files is not complete:\r\n" + join(trouble, "\r\n"));
  return association_result::incomplete;
}

association_result associate(document& doc, const association_equipment& e) {
  std::vector<std::string> trouble;
  for (const user_file& file : files_of(e)) {
    const std::string folder = file.path.substr(0, file.path.rfind('/'));
    if (const failure why = make_folders(folder))
      note(trouble, "the folder \"" + folder + "\" could not be made: " + *why);
    else
      note(trouble, written(file.path, file.text));
  }
  if (trouble.empty()) {
    refresh_databases(e, trouble);
    note(trouble, make_folders(e.folders.config));
    note(trouble, set_default(e));
  }
  return outcome(doc, association_result::associated,
                 "Project files (.cvp) are now opened with Corvane.", trouble);
}

association_result take_away(document& doc, const association_equipment& e) {
  std::vector<std::string> trouble;
  const std::string list = mimeapps_of(e);
  note(trouble, written(list, without_corvane(text_of_file(list))));
  for (const user_file& file : files_of(e))
    if (const failure why = remove_all(file.path))
      note(trouble, "the file \"" + file.path + "\" could not be removed: " + *why);
  refresh_databases(e, trouble);
  return outcome(doc, association_result::removed,
                 "Project files (.cvp) are no longer opened with Corvane.", trouble);
}

association_result register_on_linux(document& doc, const association_equipment& e) {
  if (!stands_already(e))
    return associate(doc, e);
  message_box question;
  question.text = "Project files (.cvp) are opened with Corvane already.  Remove this association?";
  question.picture = icon::information;
  question.choice = buttons::yes_no;
  if (doc.ask.message(question) != answer::yes)
    return association_result::kept;
  return take_away(doc, e);
}

/// The value of a mimeapps.list line that is about project files; nothing for any other line.
std::optional<std::vector<std::string>> entries_of(std::string_view line) {
  const auto equals = line.find('=');
  if (equals == std::string_view::npos || trim(line.substr(0, equals)) != project_mime_type)
    return std::nullopt;
  std::vector<std::string> entries;
  for (const std::string& entry : split(line.substr(equals + 1), ';'))
    if (const std::string_view name = trim(entry); !name.empty())
      entries.emplace_back(name);
  return entries;
}

}  // namespace

std::string registry_script(std::string_view app) {
  const std::string folder = doubled(app);
  const std::string lines[] = {
      "REGEDIT4",
      "",
      R"([HKEY_CLASSES_ROOT\.cvp])",
      R"(@="cvp_auto_file")",
      "",
      R"([HKEY_CLASSES_ROOT\cvp_auto_file])",
      R"(@="corvane project")",
      R"("EditFlags"=dword:00000000)",
      R"("BrowserFlags"=dword:00000008)",
      "",
      R"([HKEY_CLASSES_ROOT\cvp_auto_file\DefaultIcon])",
      "@=\"" + folder + "corvane.exe,0\"",
      "",
      R"([HKEY_CLASSES_ROOT\cvp_auto_file\shell])",
      R"(@="")",
      "",
      R"([HKEY_CLASSES_ROOT\cvp_auto_file\shell\open])",
      "",
      R"([HKEY_CLASSES_ROOT\cvp_auto_file\shell\open\command])",
      R"(@="\")" + folder + R"(corvane.exe\" %1")",
  };
  std::string text;
  for (const std::string& line : lines)
    text += line + std::string(crlf);
  return text;
}

std::string registry_removal_script() {
  return "REGEDIT4\r\n"
         "\r\n"
         "[HKEY_CLASSES_ROOT\\.cvp]\r\n"
         "@=-\r\n"
         "\r\n"
         "[-HKEY_CLASSES_ROOT\\cvp_auto_file]\r\n";
}

std::string desktop_entry(std::string_view program) {
  return "[Desktop Entry]\n"
         "Type=Application\n"
         "Name=Corvane\n"
         "GenericName=DVD authoring\n"
         "Comment=Author DVD-Video discs\n"
         "Exec=" +
         word_in_entry(program) +
         " %f\n"
         "Icon=corvane\n"
         "Terminal=false\n"
         "Categories=AudioVideo;Video;DiscBurning;\n"
         "MimeType=" +
         std::string(project_mime_type) + ";\n";
}

std::string mime_type_xml() {
  const std::string type(project_mime_type);
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
         "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
         "  <mime-type type=\"" +
         type +
         "\">\n"
         "    <comment>corvane project</comment>\n"
         "    <sub-class-of type=\"text/plain\"/>\n"
         "    <icon name=\"" +
         replace_all(type, "/", "-") +
         "\"/>\n"
         "    <glob pattern=\"*.cvp\"/>\n"
         "  </mime-type>\n"
         "</mime-info>\n";
}

bool is_default_in(std::string_view mimeapps) {
  bool defaults = false;
  for (const std::string& line : split(mimeapps, '\n')) {
    if (line.starts_with('['))
      defaults = line.starts_with("[Default Applications]");
    else if (const auto entries = entries_of(line); defaults && entries)
      return !entries->empty() && entries->front() == desktop_entry_name;
  }
  return false;
}

std::string without_corvane(std::string_view mimeapps) {
  std::vector<std::string> kept;
  for (const std::string& line : split(mimeapps, '\n')) {
    auto entries = entries_of(line);
    if (!entries || std::erase(*entries, desktop_entry_name) == 0)
      kept.push_back(line);
    else if (!entries->empty())
      kept.push_back(std::string(project_mime_type) + "=" + join(*entries, ";") + ";");
  }
  return join(kept, "\n");
}

association_result register_command(document& doc, const association_equipment& e) {
  return e.style == path_style::windows ? register_on_windows(doc, e) : register_on_linux(doc, e);
}

}  // namespace corvane
