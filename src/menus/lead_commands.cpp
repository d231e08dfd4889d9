#include "menus/lead_commands.h"

#include "examine/navigation_map.h"
#include "formats/numbers.h"
#include "menus/navcommands.h"
#include "project/button_data.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/menu_rows.h"
#include "project/messages.h"
#include "project/post_rows.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace corvane {
namespace {

using lead_kind = map_place::kind;

result<std::string> refused(const std::string& why) {
  return result<std::string>::fail(why);
}

result<std::string> given(const std::string& command) {
  return result<std::string>::ok(command);
}

int chapters_of(const disc_description& d, int title) {
  return chapters_asked_for(d.title(title)).value_or(0);
}

/// "jump title 2 chapter 3" as the menu editor offers it.
std::string jump_to_chapter(int title, int chapter) {
  return "jump title" + leading_blank(title) + " chapter " + leading_blank(chapter);
}

result<std::string> from_first_play(const lead_target& to) {
  if (to.place.what == lead_kind::title)
    return to.chapter <= 1
               ? given("jump title" + leading_blank(to.place.number))
               : refused("A disc can only begin with a whole title, not with a chapter of one.");
  if (to.place.number == 1)
    return given("jump titleset 1 menu");
  return refused("A disc can begin with menu 1 or with a title, but not with another menu.");
}

result<std::string> from_title(const disc_description& d, const lead_target& to) {
  if (to.place.what == lead_kind::menu) {
    if (d.jump_table)
      return given("call menu" + leading_blank(to.place.number));
    if (to.place.number == 1)
      return given("call menu");
    return refused(
        "Without the jump table a title can only lead to menu 1.  \"use JumpTable\" in "
        "the menu \"tools\" allows any menu; it can be switched on only while the "
        "project has no menus.");
  }
  std::string command = "jump title" + leading_blank(to.place.number);
  if (to.chapter > 1)
    command += " chapter" + leading_blank(to.chapter);
  if (command.size() > post_width)
    return refused("The command \"" + command + "\" cannot be kept: that of a title has at most " +
                   trimmed(static_cast<std::int64_t>(post_width)) + " characters.");
  return given(command);
}

/// The editor offers each chapter of a title, the first one too.
std::string from_button(const disc_description& d, const lead_target& to) {
  if (to.place.what == lead_kind::menu)
    return "jump menu" + leading_blank(to.place.number);
  return d.title(to.place.number).chapters.empty()
             ? "jump title" + leading_blank(to.place.number)
             : jump_to_chapter(to.place.number, std::max(1, to.chapter));
}

bool is_there(const disc_description& d, const map_place& place) {
  const int count = place.what == lead_kind::title  ? d.title_count()
                    : place.what == lead_kind::menu ? d.menu_count()
                                                    : 0;
  return place.number >= 1 && place.number <= count;
}

/// The button's piece of the menu's records: those that describe none are not counted.
bool write_action(project& p, const lead_source& from, const std::string& command) {
  std::vector<std::string> records =
      recallbuttondata(p, static_cast<std::int16_t>(from.place.number));
  int button = 0;
  for (std::string& text : records) {
    if (text.find_first_not_of(' ') == std::string::npos || ++button != from.button)
      continue;
    button_record record = parse_button(text);
    record.action = command;
    text = button_text(record);
    store_edited_menu(p, static_cast<std::int16_t>(from.place.number), records,
                      row_of(p.moremenuoptions, from.place.number, new_menu_options));
    p.saved = 0;
    return true;
  }
  return false;
}

bool write_command(document& doc, const lead_source& from, const std::string& command) {
  if (from.button > 0)
    return write_action(doc.p, from, command);
  std::optional<navcommands> editor = navcommands::prepare(doc);
  if (!editor)
    return false;
  if (from.place.what == lead_kind::title) {
    editor->select(from.place.number - 1);
    editor->set_command(command);
  } else {
    editor->set_firstplay(command);
  }
  editor->accept();
  return true;
}

}  // namespace

result<std::string> command_to(const disc_description& d, const lead_source& from,
                               const lead_target& to) {
  if (to.place.what == lead_kind::first_play)
    return refused("Nothing can lead to the first play: it is done when the disc is put in.");
  if (!is_there(d, to.place))
    return refused("The project has no " + name_of(to.place) + ".");
  if (to.place.what == lead_kind::title &&
      to.chapter > std::max(1, chapters_of(d, to.place.number)))
    return refused("Title " + trimmed(to.place.number) + " has no chapter " + trimmed(to.chapter) +
                   ".");
  switch (from.place.what) {
    case lead_kind::first_play:
      return from_first_play(to);
    case lead_kind::title:
      return from_title(d, to);
    default:
      return given(from_button(d, to));
  }
}

std::vector<lead_target> targets_from(const disc_description& d, const lead_source& from) {
  std::vector<lead_target> all;
  const auto add = [&](const lead_target& to) {
    if (command_to(d, from, to))
      all.push_back(to);
  };
  for (int menu = 1; menu <= d.menu_count(); ++menu)
    add({{lead_kind::menu, menu}, 0});
  for (int title = 1; title <= d.title_count(); ++title) {
    add({{lead_kind::title, title}, 0});
    for (int chapter = 2; chapter <= chapters_of(d, title); ++chapter)
      add({{lead_kind::title, title}, chapter});
  }
  return all;
}

bool lead_command(document& doc, const lead_source& from, const lead_target& to) {
  const auto refuse = [&doc](const std::string& why) {
    say(doc, icon::exclamation, why);
    return false;
  };
  if (!edited_xml(doc.p).empty())
    return refuse(
        "The project has hand-edited navigation XML, which says where things lead.  Please change "
        "it there (\"edit xml before authoring\").");
  const result<std::string> command = command_to(disc_of(doc.p), from, to);
  return command ? write_command(doc, from, *command) : refuse(command.error);
}

}  // namespace corvane
