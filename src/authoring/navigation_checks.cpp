// Where commands lead. dvdauthor takes a first-play jump to a title that does not exist in silence
// (a disc that does nothing), and finds other dead ends only after all multiplexing is done.
#include "authoring/navigation_command.h"
#include "authoring/row_checks.h"
#include "authoring/rows.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

constexpr int most_chapters = 99;
constexpr int most_commands = 128;  // of a program chain

std::vector<std::string> chapter_times(const project& p, int title) {
  std::vector<std::string> times = split(chapters_of(p, title), ',');
  std::erase_if(times, [](const std::string& time) { return trim(time).empty(); });
  return times;
}

// dvdauthor puts a chapter at the beginning where the list does not have one.
int chapter_count(const project& p, int title) {
  const std::vector<std::string> times = chapter_times(p, title);
  const bool begins = !times.empty() && times[0].find_first_not_of("0:. ") == std::string::npos;
  return static_cast<int>(times.size()) + (begins ? 0 : 1);
}

// Clauses that say what is wrong with a command -------------------------------------------------

refusal why_not_title(const project& p, const command_form& c) {
  const int title = c.number.value_or(0);
  if (title < 1 || title > title_count(p))
    return "leads to title " + trimmed(title) + ", which does not exist";
  if (c.chapter && (*c.chapter < 1 || *c.chapter > chapter_count(p, title)))
    return "leads to chapter " + trimmed(*c.chapter) + " of title " + trimmed(title) +
           ", which does not exist";
  return std::nullopt;
}

refusal why_not_menu(const project& p, int menu) {
  if (menu_count(p) == 0)
    return "leads to a menu, but the project has none";
  if (menu < 1 || menu > menu_count(p))
    return "leads to menu " + trimmed(menu) + ", which does not exist";
  return std::nullopt;
}

// dvdauthor knows its commands in small letters only.
refusal why_not_letters(std::string_view text) {
  const std::string small = lower(text);
  const bool is_lost = parse_command(text).what != parse_command(small).what ||
                       is_interpreted(text) != is_interpreted(small) ||
                       (trim(small) == "exit" && trim(text) != "exit");
  if (is_lost)
    return "must be in small letters, as in " + sanitized_quoted(trim(small));
  return std::nullopt;
}

refusal why_not_text(std::string_view text) {
  const refusal why = why_not_plain_text(text);
  return why ? why : why_not_letters(text);
}

refusal why_not_first_play(const project& p, const command_form& c) {
  switch (c.what) {
    case verb::jump_title:
      if (c.chapter)
        return "leads to a chapter, but a disc can only begin with a whole title";
      return why_not_title(p, c);
    case verb::jump_titleset:
      return why_not_menu(p, 1);
    case verb::jump_menu:
    case verb::call_menu:
    case verb::call_last_menu:
      return "cannot begin a disc; \"jump titleset 1 menu\" leads to the first menu";
    case verb::other:
      break;
  }
  return std::nullopt;
}

refusal why_not_call(const project& p, const command_form& c) {
  if (menu_count(p) == 0)
    return why_not_menu(p, 1);
  if (!p.jumptable && (c.number || c.what == verb::call_last_menu))
    return "needs the jump table, which the project does not use; \"call menu\" leads to the "
           "first menu";
  if (!p.jumptable || c.what == verb::call_last_menu)
    return std::nullopt;
  if (!c.number)
    return "names no menu, which it must with the jump table; \"call menu 1\" leads to the first";
  return why_not_menu(p, *c.number);
}

refusal why_not_post(const project& p, const std::string& text, const command_form& c) {
  switch (c.what) {
    case verb::jump_title:
      return why_not_title(p, c);
    case verb::jump_menu:
    case verb::jump_titleset:
      return "jumps to a menu, but a title can only call one (\"call menu\")";
    case verb::call_menu:
    case verb::call_last_menu:
      return why_not_call(p, c);
    case verb::other:
      break;
  }
  // With the jump table the text behind "call menu" becomes a menu number.
  if (p.jumptable && text.starts_with(call_menu_words))
    return "must name a menu by its number, as in \"call menu 1\"";
  return std::nullopt;
}

refusal why_not_action(const project& p, const std::string& text, const command_form& c) {
  switch (c.what) {
    case verb::jump_title:
      return why_not_title(p, c);
    case verb::jump_menu:
      return why_not_menu(p, *c.number);
    case verb::call_menu:
    case verb::call_last_menu:
      return "calls a menu, but from a menu one can only jump to another (\"jump menu 1\")";
    case verb::jump_titleset:
    case verb::other:
      break;
  }
  if (trim(text).empty())
    return "does nothing; \"exit\" ends the disc";
  // With the jump table the text behind "jump menu" becomes a menu number.
  if (p.jumptable && c.what == verb::other && text.starts_with(jump_menu_words))
    return "must name a menu by its number, as in \"jump menu 1\"";
  return std::nullopt;
}

refusal why_not_commands_of_titles(const project& p) {
  const int rows = std::min(static_cast<int>(p.postinfo.size()), title_count(p));
  for (int title = 1; title <= rows; ++title) {
    const std::string row = row_of(p.postinfo, title, {});
    const std::string text(trim(row));
    refusal why = why_not_text(text);
    if (!why)
      why = why_not_post(p, interpreted(text), parse_command(text));
    if (why)
      return "The command after title " + trimmed(title) + ", " + sanitized_quoted(text) + ", " +
             *why + ".  Please change it in the navigation commands.";
  }
  return std::nullopt;
}

refusal why_not_commands_of_menus(const project& p) {
  for (int menu = 1; menu <= menu_count(p); ++menu) {
    int number = 0;
    for (const button_record& b : buttons_of(p, menu)) {
      ++number;
      refusal why = why_not_text(b.action);
      if (!why)
        why = why_not_action(p, interpreted(b.action), parse_command(b.action));
      if (why)
        return "The action of button " + trimmed(number) + " of menu " + trimmed(menu) + ", " +
               sanitized_quoted(b.action) + ", " + *why + ".  Please edit the menu.";
    }
  }
  return std::nullopt;
}

// A program chain holds 128 commands, pre and post commands together, and dvdauthor counts them
// when all else is done. With the jump table menu 1 has a pre command for each other menu. A button
// that plays a title remembers its menu first, and as a button holds one command only, dvdauthor
// puts what it does behind the menu: three commands each, and three more to find the button's.
// What other typed commands come to only dvdauthor knows. Without the jump table, and from menu 2
// on, 36 buttons fit.
refusal why_not_many_commands(const project& p) {
  if (!p.jumptable || menu_count(p) < 2)
    return std::nullopt;
  const int to_menus = menu_count(p) - 1;
  int titles = 0, number = 0, last = 0;
  for (const button_record& b : buttons_of(p, 1)) {
    ++number;
    if (!interpreted(b.action).starts_with(jump_title_words))
      continue;
    ++titles;
    last = number;
  }
  const int of_buttons = titles == 0 ? 1 : 3 * titles + 3;
  const int too_many = to_menus + of_buttons - most_commands;
  if (too_many <= 0)
    return std::nullopt;
  return "Menu 1 needs " + trimmed(to_menus + of_buttons) +
         " commands, but a DVD menu holds at most 128: with the jump table, " + trimmed(to_menus) +
         " lead on to the other menus and " + trimmed(of_buttons) + " belong to its " +
         trimmed(titles) + " buttons that jump to a title, the last of which is button " +
         trimmed(last) + ".  Please edit menu 1 and delete " + trimmed((too_many + 2) / 3) +
         " of these buttons, or remove " + trimmed(too_many) + " of the other menus.";
}

refusal why_not_first_command(const project& p) {
  if (p.firstplay.empty() || p.firstplay == "<default>")
    return std::nullopt;
  refusal why = why_not_text(p.firstplay);
  if (!why && trim(p.firstplay).empty())
    why = "does nothing";
  if (!why)
    why = why_not_first_play(p, parse_command(p.firstplay));
  if (!why)
    return std::nullopt;
  return "The first-play command, " + sanitized_quoted(p.firstplay) + ", " + *why +
         ".  Please change it in the navigation commands.";
}

refusal why_not_chapters(const project& p) {
  for (int title = 1; title <= title_count(p); ++title) {
    for (const std::string& time : chapter_times(p, title)) {
      const bool odd = time.find_first_not_of("0123456789:. ") != std::string::npos ||
                       std::count(time.begin(), time.end(), '.') > 1 ||
                       time.find_first_of("0123456789") == std::string::npos;
      if (odd)
        return "Title " + trimmed(title) + " has the chapter time " + sanitized_quoted(time) +
               ", which is not of the form 00:00:00.00.  Please edit the title's chapters.";
    }
    if (chapter_count(p, title) > most_chapters)
      return "Title " + trimmed(title) + " has " + trimmed(chapter_count(p, title)) +
             " chapters, but a DVD title holds at most 99.  Please edit the title's chapters.";
  }
  return std::nullopt;
}

bool is_language_code(const std::string& code) {
  return code.size() == 2 && std::all_of(code.begin(), code.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

refusal why_not_languages(const project& p) {
  int audio = 0, subpictures = 0;
  for (const std::string& row : p.languagetags) {
    const language_tag tag = parse_language_tag(row);
    audio += tag.audio ? 1 : 0;
    subpictures += tag.subpicture ? 1 : 0;
    if ((tag.audio || tag.subpicture) && !is_language_code(tag.code))
      return "The language tag " + sanitized_quoted(row) +
             " does not end in a language code of two letters.  Please edit the language tags.";
  }
  if (audio > 8 || subpictures > 32)
    return "There are " + trimmed(audio) + " audio tags and " + trimmed(subpictures) +
           " subtitle tags, but a DVD holds at most 8 and 32.  Please edit the language tags.";
  return std::nullopt;
}

}  // namespace

refusal why_not_navigation(const project& p) {
  if (const refusal why = why_not_chapters(p))
    return why;
  if (const refusal why = why_not_languages(p))
    return why;
  if (const refusal why = why_not_first_command(p))
    return why;
  if (const refusal why = why_not_commands_of_titles(p))
    return why;
  if (const refusal why = why_not_commands_of_menus(p))
    return why;
  return why_not_many_commands(p);
}

}  // namespace corvane
