// Where commands lead. dvdauthor takes a first-play jump to a title that does not exist in silence
// (a disc that does nothing), and finds other dead ends only after all multiplexing is done.
#include "authoring/row_checks.h"
#include "examine/chapter_rules.h"
#include "examine/navigation_map.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t most_chapters = 99;
constexpr int most_commands = 128;  // of a program chain

std::vector<std::string> chapter_times(const disc_title& title) {
  std::vector<std::string> times;
  for (const text_time& time : title.chapters)
    if (!trim(time.text).empty())
      times.push_back(time.text);
  return times;
}

// Clauses that say what is wrong with a command -------------------------------------------------

refusal why_not_title(const disc_description& d, const command_form& c) {
  const int title = c.number.value_or(0);
  if (title < 1 || title > d.title_count())
    return "leads to title " + trimmed(title) + ", which does not exist";
  if (c.chapter &&
      (*c.chapter < 1 || *c.chapter > chapters_asked_for(d.title(title)).value_or(*c.chapter)))
    return "leads to chapter " + trimmed(*c.chapter) + " of title " + trimmed(title) +
           ", which does not exist";
  return std::nullopt;
}

refusal why_not_menu(const disc_description& d, int menu) {
  if (d.menu_count() == 0)
    return "leads to a menu, but the project has none";
  if (menu < 1 || menu > d.menu_count())
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
  if (const refusal why = why_not_plain_text(text))
    return why;
  // Commands are texts of elements, in which XML ends a CDATA section with it and nothing else.
  if (text.find("]]>") != std::string_view::npos)
    return "contains \"]]>\", which XML does not allow";
  return why_not_letters(text);
}

refusal why_not_first_play(const disc_description& d, const command_form& c) {
  switch (c.what) {
    case verb::jump_title:
      if (c.chapter)
        return "leads to a chapter, but a disc can only begin with a whole title";
      return why_not_title(d, c);
    case verb::jump_titleset:
      return why_not_menu(d, 1);
    case verb::jump_menu:
    case verb::call_menu:
    case verb::call_last_menu:
      return "cannot begin a disc; \"jump titleset 1 menu\" leads to the first menu";
    case verb::other:
      break;
  }
  return std::nullopt;
}

refusal why_not_call(const disc_description& d, const command_form& c) {
  if (d.menu_count() == 0)
    return why_not_menu(d, 1);
  if (!d.jump_table && (c.number || c.what == verb::call_last_menu))
    return "needs the jump table, which the project does not use; \"call menu\" leads to the "
           "first menu";
  if (!d.jump_table || c.what == verb::call_last_menu)
    return std::nullopt;
  if (!c.number)
    return "names no menu, which it must with the jump table; \"call menu 1\" leads to the first";
  return why_not_menu(d, *c.number);
}

refusal why_not_post(const disc_description& d, const std::string& text, const command_form& c) {
  switch (c.what) {
    case verb::jump_title:
      return why_not_title(d, c);
    case verb::jump_menu:
    case verb::jump_titleset:
      return "jumps to a menu, but a title can only call one (\"call menu\")";
    case verb::call_menu:
    case verb::call_last_menu:
      return why_not_call(d, c);
    case verb::other:
      break;
  }
  // With the jump table the text behind "call menu" becomes a menu number.
  if (d.jump_table && text.starts_with(call_menu_words))
    return "must name a menu by its number, as in \"call menu 1\"";
  return std::nullopt;
}

refusal why_not_action(const disc_description& d, const std::string& text, const command_form& c) {
  switch (c.what) {
    case verb::jump_title:
      return why_not_title(d, c);
    case verb::jump_menu:
      return why_not_menu(d, *c.number);
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
  if (d.jump_table && c.what == verb::other && text.starts_with(jump_menu_words))
    return "must name a menu by its number, as in \"jump menu 1\"";
  return std::nullopt;
}

refusal why_not_commands_of_titles(const disc_description& d) {
  for (int title = 1; title <= d.title_count(); ++title) {
    const std::optional<disc_command>& post = d.title(title).post;
    if (!post)
      continue;
    refusal why = why_not_text(post->text);
    if (!why)
      why = why_not_post(d, interpreted(post->text), post->form);
    if (why)
      return "The command after title " + trimmed(title) + ", " + sanitized_quoted(post->text) +
             ", " + *why + ".  Please change it in the navigation commands.";
  }
  return std::nullopt;
}

refusal why_not_commands_of_menus(const disc_description& d) {
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    int number = 0;
    for (const disc_button& b : d.menu(menu).buttons) {
      ++number;
      refusal why = why_not_text(b.action.text);
      if (!why)
        why = why_not_action(d, interpreted(b.action.text), b.action.form);
      if (why)
        return "The action of button " + trimmed(number) + " of menu " + trimmed(menu) + ", " +
               sanitized_quoted(b.action.text) + ", " + *why + ".  Please edit the menu.";
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
refusal why_not_many_commands(const disc_description& d) {
  if (!d.jump_table || d.menu_count() < 2)
    return std::nullopt;
  const int to_menus = d.menu_count() - 1;
  int titles = 0, number = 0, last = 0;
  for (const disc_button& b : d.menu(1).buttons) {
    ++number;
    if (!interpreted(b.action.text).starts_with(jump_title_words))
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

refusal why_not_first_command(const disc_description& d) {
  if (!d.first_play)
    return std::nullopt;
  refusal why = why_not_text(d.first_play->text);
  if (!why && trim(d.first_play->text).empty())
    why = "does nothing";
  if (!why)
    why = why_not_first_play(d, d.first_play->form);
  if (!why)
    return std::nullopt;
  return "The first-play command, " + sanitized_quoted(d.first_play->text) + ", " + *why +
         ".  Please change it in the navigation commands.";
}

refusal why_not_chapters(const disc_description& d) {
  for (int title = 1; title <= d.title_count(); ++title) {
    for (const std::string& time : chapter_times(d.title(title))) {
      const bool odd = time.find_first_not_of("0123456789:. ") != std::string::npos ||
                       std::count(time.begin(), time.end(), '.') > 1 ||
                       time.find_first_of("0123456789") == std::string::npos;
      if (odd)
        return "Title " + trimmed(title) + " has the chapter time " + sanitized_quoted(time) +
               ", which is not of the form 00:00:00.00.  Please edit the title's chapters.";
    }
    const std::size_t chapters = chapters_on_disc(d.title(title), {}).begins.size();
    if (chapters > most_chapters)
      return "Title " + trimmed(title) + " has " + std::to_string(chapters) +
             " chapters, but a DVD title holds at most 99.  Please edit the title's chapters.";
  }
  return std::nullopt;
}

bool is_language_code(const std::string& code) {
  return code.size() == 2 && std::all_of(code.begin(), code.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

refusal why_not_languages(const disc_description& d) {
  int audio = 0, subpictures = 0;
  for (const disc_language& language : d.languages) {
    ++(language.kind == disc_language::stream_kind::audio ? audio : subpictures);
    if (!is_language_code(language.code))
      return "The language tag " + sanitized_quoted(language.text) +
             " does not end in a language code of two letters.  Please edit the language tags.";
  }
  if (audio > 8 || subpictures > 32)
    return "There are " + trimmed(audio) + " audio tags and " + trimmed(subpictures) +
           " subtitle tags, but a DVD holds at most 8 and 32.  Please edit the language tags.";
  return std::nullopt;
}

}  // namespace

refusal why_not_navigation(const disc_description& d) {
  if (const refusal why = why_not_chapters(d))
    return why;
  if (const refusal why = why_not_languages(d))
    return why;
  if (const refusal why = why_not_first_command(d))
    return why;
  if (const refusal why = why_not_commands_of_titles(d))
    return why;
  if (const refusal why = why_not_commands_of_menus(d))
    return why;
  return why_not_many_commands(d);
}

}  // namespace corvane
