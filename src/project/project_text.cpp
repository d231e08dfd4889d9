#include "project/project_text.h"

#include "formats/line_reader.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/text/charset.h"
#include "platform/text/utf8.h"
#include "project/messages.h"
#include "project/project_file.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view section_end = "***";
constexpr std::string_view menu_mark = "menu";

struct section {
  int number;        ///< as messages count them; the version line is 1
  const char* name;  ///< as messages name it
};

bool is_not_allowed(char c) {
  return is_control_character(c) && c != '\t';
}

std::size_t count_either(std::string_view line, char one, char other) {
  return static_cast<std::size_t>(
      std::count_if(line.begin(), line.end(), [=](char c) { return c == one || c == other; }));
}

/// Reads a project file's text from its first line to its last. Every step gives whether reading
/// goes on; after a false one `why` says what is wrong.
class project_reader {
 public:
  explicit project_reader(std::string_view text) : lines_(text) {}

  bool read_all();

  loaded_project loaded;
  std::string why;

 private:
  bool fail(std::string reason) {
    why = std::move(reason);
    return false;
  }
  bool fail_line(const std::string& reason) {
    return fail("line " + trimmed(lines_.number()) + " " + reason);
  }
  bool next_row(std::string_view& line, const char* where_it_ends);
  bool next_section_row(std::string_view& line, const section& s, bool& ended);
  bool rows(const section& s, std::vector<std::string>& list);
  bool counted_rows(const section& s, std::vector<std::string>& list);
  bool menus();
  bool button_rows();
  bool button_row(std::string_view line);
  bool settings_lines();
  bool check_mark(const char* name, bool& mark);
  bool custom_lines();

  line_reader lines_;
  std::size_t fields_ = 0;
  std::size_t settings_ = 0;
};

/// The next line, which must be there and be text without control characters.
bool project_reader::next_row(std::string_view& line, const char* where_it_ends) {
  const auto next = lines_.next();
  if (!next)
    return fail(std::string("it ends ") + where_it_ends);
  line = *next;
  if (!is_utf8(line))
    return fail_line("is not UTF-8 text");
  if (std::any_of(line.begin(), line.end(), is_not_allowed))
    return fail_line("contains a control character");
  fields_ += 1 + count_either(line, '/', '|');
  if (fields_ > most_fields)
    return fail_line("is beyond the " + trimmed(most_fields) + " fields that a project may have");
  settings_ += count_either(line, ',', '\t');
  if (settings_ > most_settings)
    return fail_line("is beyond the " + trimmed(most_settings) +
                     " times and settings that a project may have");
  return true;
}

bool project_reader::next_section_row(std::string_view& line, const section& s, bool& ended) {
  const std::string where = "inside section " + trimmed(s.number) + " (" + s.name + ")";
  if (!next_row(line, where.c_str()))
    return false;
  ended = line == section_end;
  return true;
}

bool project_reader::rows(const section& s, std::vector<std::string>& list) {
  std::string_view line;
  for (bool ended = false;;) {
    if (!next_section_row(line, s, ended))
      return false;
    if (ended)
      return true;
    list.emplace_back(line);
  }
}

/// Rows of which each title has one.
bool project_reader::counted_rows(const section& s, std::vector<std::string>& list) {
  if (!rows(s, list))
    return false;
  // Delays may outnumber the titles: a load that is taken back for missing files leaves them.
  const bool more_allowed = &list == &loaded.delay;
  const std::size_t titles = loaded.List11.size();
  if (list.size() == titles || (more_allowed && list.size() > titles))
    return true;
  return fail("it has " + trimmed(static_cast<std::int64_t>(list.size())) + " rows of " + s.name +
              " for " + trimmed(static_cast<std::int64_t>(titles)) + " titles");
}

bool project_reader::menus() {
  if (!rows({6, "menus"}, loaded.menulist))
    return false;
  const auto count = loaded.menulist.size();
  const std::string menu_count = trimmed(static_cast<std::int64_t>(count)) + " menus";
  if (count > static_cast<std::size_t>(most_menus))
    return fail("it has " + menu_count + ", and a project holds at most " + trimmed(most_menus));
  if (!rows({7, "menu options"}, loaded.moremenuoptions))
    return false;
  const auto options = loaded.moremenuoptions.size();
  if (options != count)
    return fail("it has " + trimmed(static_cast<std::int64_t>(options)) +
                " rows of menu options for " + menu_count);
  loaded.menubuttons.assign(std::max<std::size_t>(count, 1), std::string());
  return true;
}

bool project_reader::button_rows() {
  std::string_view line;
  for (bool ended = false;;) {
    if (!next_section_row(line, {8, "buttons"}, ended))
      return false;
    if (ended)
      break;
    if (line.starts_with(menu_mark) && !button_row(line))
      return false;
  }
  for (std::string& element : loaded.menubuttons)
    if (!element.empty())
      element.pop_back();  // the "|" after its last record
  return true;
}

/// "menu07:" and a record.
bool project_reader::button_row(std::string_view line) {
  const std::string_view after = line.substr(menu_mark.size());
  const std::string_view digits = after.substr(0, after.find(':'));
  const bool two_digits =
      digits.size() == 2 && digits.size() < after.size() &&
      std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
  const int menu = two_digits ? leading_whole(digits) : 0;
  if (menu < 1)
    return fail_line("names menu \"" + sanitized_short(digits) + "\"");
  // Buttons of menus that are gone stand in files too: a load that is taken back for missing
  // files leaves them.
  auto& elements = loaded.menubuttons;
  const auto index = static_cast<std::size_t>(menu) - 1;
  if (index >= elements.size())
    elements.resize(index + 1);
  elements[index].append(after.substr(digits.size() + 1)).append("|");
  return true;
}

bool project_reader::check_mark(const char* name, bool& mark) {
  std::string_view line;
  const std::string where = std::string("before ") + name;
  if (!next_row(line, where.c_str()))
    return false;
  mark = line == "True";
  if (mark || line == "False")
    return true;
  return fail_line("reads \"" + sanitized_short(line) + "\" instead of True or False");
}

bool project_reader::settings_lines() {
  std::string_view line;
  if (!next_row(line, "before the first-play command"))
    return false;
  loaded.firstplay = line;
  if (!next_row(line, "before the region"))
    return false;
  if (line != "NTSC" && line != "PAL")
    return fail("the region is \"" + sanitized_short(line) + "\"");
  loaded.globalregion = line;
  return check_mark("the ISO switch", loaded.isocreate) &&
         check_mark("the JumpTable switch", loaded.jumptable);
}

/// Hand-edited XML is the user's text and may hold any character that a text box does.
bool project_reader::custom_lines() {
  while (const auto line = lines_.next()) {
    if (!is_utf8(*line))
      return fail_line("is not UTF-8 text");
    if (line->find('\0') != std::string_view::npos)
      return fail_line("contains a control character");
    loaded.customxml.append(*line).append(crlf);
  }
  return true;
}

bool project_reader::read_all() {
  std::string_view version_line;
  return next_row(version_line, "before the version line") && rows({2, "titles"}, loaded.List11) &&
         counted_rows({3, "chapters"}, loaded.chapters) &&
         counted_rows({4, "delays"}, loaded.delay) &&
         rows({5, "language tags"}, loaded.languagetags) && menus() && button_rows() &&
         rows({9, "post commands"}, loaded.postinfo) &&
         counted_rows({10, "subtitles"}, loaded.subtitledata) &&
         counted_rows({11, "subtitle options"}, loaded.subtitleoptions) && settings_lines() &&
         custom_lines();
}

}  // namespace

result<project_characters> project_characters_of(std::string_view bytes) {
  using read = result<project_characters>;
  constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
  if (bytes.starts_with(byte_order_mark))
    bytes.remove_prefix(byte_order_mark.size());
  if (is_utf8(bytes))
    return read::ok({std::string(bytes)});
  auto text = in_utf8(bytes, "CP1252");
  if (!text)
    return read::fail("it is neither UTF-8 text nor Windows-1252 text");
  return read::ok({std::move(*text), true});
}

std::string version_number(std::string_view text) {
  constexpr std::string_view name = "Corvane ";
  constexpr std::size_t longest_number = 100;  // a message carries it
  if (!text.starts_with(name))
    return "0";
  text = text.substr(name.size(), longest_number);
  return leading_number_text(text.substr(0, text.find_first_of(",\r\n")));
}

result<loaded_project> parse_project(std::string_view text) {
  project_reader reader(text);
  if (!reader.read_all())
    return result<loaded_project>::fail(std::move(reader.why));
  return result<loaded_project>::ok(std::move(reader.loaded));
}

}  // namespace corvane
