#include "examine/navigation_map.h"

#include "examine/chapter_rules.h"
#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane {
namespace {

using place = command_lead::place;

constexpr std::string_view missing = "command-target-missing";
constexpr std::string_view not_allowed = "command-not-allowed";
constexpr std::string_view syntax = "command-syntax";

std::string titles_there_are(std::size_t count) {
  if (count == 0)
    return "there is no title";
  return count == 1 ? "there is only title 1" : "there are " + std::to_string(count) + " titles";
}

std::string menus_there_are(std::size_t count) {
  if (count == 0)
    return "there is no menu";
  return count == 1 ? "there is only menu 1" : "there are " + std::to_string(count) + " menus";
}

command_lead lead_to_title(const command_form& form) {
  command_lead lead;
  lead.to = place::title;
  lead.number = form.number.value_or(0);
  lead.chapter = form.chapter;
  return lead;
}

command_lead lead_to_menu(std::optional<int> number, bool is_call) {
  command_lead lead;
  lead.to = number ? place::menu : place::menu_entry;
  lead.number = number.value_or(0);
  lead.is_call = is_call;
  return lead;
}

bool is_menu_lead(const command_lead& lead) {
  return lead.to == place::menu || lead.to == place::menu_entry;
}

/// Commands as dvdauthor gets them. In hand-edited XML their ";" may be missing or stand; which, is
/// looked at in the XML itself.
command_reading reading_of(const std::string& text, bool hand_edited) {
  command_reading with_end = read_commands(text + ";");
  if (!hand_edited || !with_end.fault)
    return with_end;
  command_reading as_it_stands = read_commands(text);
  return as_it_stands.fault ? with_end : as_it_stands;
}

/// dvdauthor knows its words in small letters only.
std::string hint_about_letters(const std::string& text, bool hand_edited) {
  const std::string small = lower(text);
  if (small == text || reading_of(small, hand_edited).fault)
    return {};
  return ": commands are in small letters";
}

}  // namespace

std::optional<int> chapters_asked_for(const disc_title& title) {
  if (is_cut(title))
    return std::nullopt;
  const std::vector<text_time> entries = chapters_read(title);
  const bool begins = !entries.empty() && entries.front().seconds == 0.0;
  std::size_t chapters = entries.size() + (begins ? 0 : 1);
  for (const title_file& file : title.further)
    chapters += std::max<std::size_t>(1, chapters_read(file).size());
  return static_cast<int>(chapters);
}

navigation_map::navigation_map(const disc_description& d, bool hand_edited)
    : disc_(&d), hand_edited_(hand_edited) {
  for (int number = 1; number <= d.title_count(); ++number)
    parts_[d.title(number).titleset].titles.push_back(number);
  for (int number = 1; number <= d.menu_count(); ++number)
    parts_[d.menu(number).titleset].menus.push_back(number);
}

int navigation_map::place_count() const {
  return disc_->title_count() + disc_->menu_count();
}

int navigation_map::number_of(int place) const {
  return is_menu(place) ? place - disc_->title_count() + 1 : place + 1;
}

const navigation_map::part* navigation_map::part_of(int titleset) const {
  const auto found = parts_.find(titleset);
  return found == parts_.end() ? nullptr : &found->second;
}

std::optional<int> navigation_map::root_menu(int titleset) const {
  const part* const p = part_of(titleset);
  if (p == nullptr || p->menus.empty())
    return std::nullopt;
  return place_of_menu(p->menus.front());
}

/// An element of the XML without a text is no command.
bool navigation_map::is_default(const disc_command& command) const {
  return hand_edited_ && trim(command.text).empty();
}

command_outcome navigation_map::beginning() const {
  if (disc_->first_play && !is_default(*disc_->first_play))
    return outcome_of({}, *disc_->first_play);
  command_outcome outcome;
  if (const std::optional<int> menu = root_menu(1))
    outcome.places.push_back(*menu);
  else if (!disc_->titles.empty())
    outcome.places.push_back(place_of_title(1));
  return outcome;
}

command_outcome navigation_map::after_title(int title) const {
  const disc_title& t = disc_->title(title);
  if (t.post && !is_default(*t.post))
    return outcome_of({command_owner::kind::title, title, t.titleset}, *t.post);
  command_outcome outcome;
  if (title < disc_->title_count())
    outcome.places.push_back(place_of_title(title + 1));
  else
    outcome.stops = true;
  return outcome;
}

command_outcome navigation_map::outcome_of(const command_owner& owner,
                                           const disc_command& command) const {
  command_outcome outcome;
  if (trim(command.text).empty()) {
    outcome.problems.push_back({"command-empty", "does nothing"});
  } else if (trim(command.text) == "exit") {
    outcome.stops = true;
  } else if (command.form.what == verb::other) {
    read_typed(owner, command, outcome);
  } else if (command.form == command_form{verb::call_menu, {}, {}} && disc_->jump_table &&
             !hand_edited_ && owner.what == command_owner::kind::title) {
    outcome.problems.push_back({syntax,
                                "names no menu, which it must with the jump table; \"call menu "
                                "1\" leads to the first"});
  } else {
    for (const command_lead& lead : leads_of(owner, command.form))
      follow(owner, lead, outcome);
  }
  return outcome;
}

/// With the jump table a title can call any menu, and the last one that was shown; where that leads
/// is the menu from which the title was started, or the first.
std::vector<command_lead> navigation_map::leads_of(const command_owner& owner,
                                                   const command_form& form) const {
  command_lead lead;
  switch (form.what) {
    case verb::jump_title:
      return {lead_to_title(form)};
    case verb::jump_menu:
      return {lead_to_menu(form.number, false)};
    case verb::jump_titleset:
      lead = lead_to_menu({}, false);
      lead.titleset = 1;
      return {lead};
    case verb::call_menu:
      return {lead_to_menu(form.number, true)};
    case verb::call_last_menu:
      // Without the jump table dvdauthor knows no such command.
      lead = lead_to_menu({}, true);
      if (!disc_->jump_table && owner.what == command_owner::kind::title)
        lead.entry = "last";
      return {lead};
    case verb::other:
      break;
  }
  return {};
}

void navigation_map::read_typed(const command_owner& owner, const disc_command& command,
                                command_outcome& outcome) const {
  outcome.is_typed = true;
  // The jump table takes what stands behind these words for the number of a menu.
  const std::string text = interpreted(command.text);
  const bool of_title = owner.what == command_owner::kind::title;
  const std::string_view words = of_title ? call_menu_words : jump_menu_words;
  if (!hand_edited_ && disc_->jump_table && owner.what != command_owner::kind::first_play &&
      text.starts_with(words)) {
    outcome.problems.push_back({syntax, "must name a menu by its number, as in \"" +
                                            std::string(words) +
                                            " 1\", since the project uses the jump table"});
    return;
  }
  command_reading reading = reading_of(command.text, hand_edited_);
  if (reading.fault) {
    outcome.problems.push_back(
        {syntax, *reading.fault + hint_about_letters(command.text, hand_edited_)});
    return;
  }
  for (const command_lead& lead : reading.leads)
    follow(owner, lead, outcome);
  outcome.stops = reading.ends;
  // What only sets a register goes on with whatever follows.
  outcome.leads_anywhere =
      outcome.leads_anywhere || reading.resumes || (reading.leads.empty() && !reading.ends);
}

void navigation_map::follow(const command_owner& owner, const command_lead& lead,
                            command_outcome& outcome) const {
  // The jump pad allows every way.
  if (disc_->has_other_paths && (lead.titleset || lead.of_disc || lead.to == place::first_play)) {
    outcome.leads_anywhere = true;
    return;
  }
  if (lead.to == place::nowhere) {
    outcome.problems.push_back({syntax, "names no title or menu to lead to"});
    return;
  }
  if (is_menu_lead(lead) && lead.chapter) {
    outcome.problems.push_back({not_allowed, "names a chapter of a menu, but menus have none"});
    return;
  }
  switch (owner.what) {
    case command_owner::kind::first_play:
      return follow_from_first_play(lead, outcome);
    case command_owner::kind::title:
      return follow_from_title(owner, lead, outcome);
    case command_owner::kind::menu:
      return follow_from_menu(owner, lead, outcome);
  }
}

void navigation_map::follow_from_first_play(const command_lead& lead,
                                            command_outcome& outcome) const {
  if (lead.to == place::title && !lead.titleset && !lead.is_call) {
    if (lead.chapter) {
      outcome.problems.push_back(
          {not_allowed, "leads to a chapter, but a disc can only begin with a whole title"});
      return;
    }
    std::vector<int> all;
    for (int number = 1; number <= disc_->title_count(); ++number)
      all.push_back(number);
    return to_numbered_title(all, "", lead, outcome);
  }
  if (lead.to == place::menu_entry && lead.titleset && !lead.is_call)
    return to_menu(*lead.titleset, lead, outcome);
  if (disc_->has_other_paths && (is_menu_lead(lead) || lead.to == place::first_play)) {
    outcome.leads_anywhere = true;
    return;
  }
  outcome.problems.push_back(
      {not_allowed,
       "cannot begin a disc; \"jump titleset 1 menu\" leads to the first menu, \"jump "
       "title 1\" to a title"});
}

void navigation_map::follow_from_title(const command_owner& owner, const command_lead& lead,
                                       command_outcome& outcome) const {
  const auto refuse = [&outcome](std::string why) {
    outcome.problems.push_back({not_allowed, std::move(why)});
  };
  if (lead.to == place::within) {
    outcome.leads_anywhere = true;
  } else if (lead.to == place::chapter && !lead.is_call) {
    outcome.places.push_back(place_of_title(owner.number));
    to_chapter(owner.number, lead.chapter.value_or(1), outcome);
  } else if (lead.is_call) {
    if (!is_menu_lead(lead))
      return refuse("calls something that is no menu; to a title one jumps (\"jump title 1\")");
    if (lead.entry == "last")
      return refuse(
          "needs the jump table, which the project does not use; \"call menu\" leads to "
          "the first menu");
    const part* const own = part_of(owner.titleset);
    const bool any_menu = own != nullptr && !own->menus.empty();
    if (lead.number != 0 && !disc_->jump_table && any_menu)
      return refuse(
          "calls a menu by its number, which needs the jump table; \"call menu\" leads "
          "to the first menu");
    to_menu(owner.titleset, lead, outcome);
  } else if (is_menu_lead(lead) || lead.to == place::first_play) {
    refuse("jumps to a menu, but a title can only call one (\"call menu\")");
  } else if (lead.titleset || lead.of_disc) {
    refuse(
        "jumps with \"titleset\" or \"vmgm\", but a title can only jump to titles of its own "
        "titleset (\"jump title 1\")");
  } else {
    to_title(owner.titleset, lead, outcome);
  }
}

void navigation_map::follow_from_menu(const command_owner& owner, const command_lead& lead,
                                      command_outcome& outcome) const {
  const auto refuse = [&outcome](std::string why) {
    outcome.problems.push_back({not_allowed, std::move(why)});
  };
  if (lead.is_call)
    return refuse("calls a menu, but from a menu one can only jump to another (\"jump menu 1\")");
  if (lead.to == place::chapter)
    return refuse(
        "jumps to a chapter without its title, but menus have no chapters (\"jump title "
        "1 chapter 2\")");
  if (lead.to == place::within) {
    outcome.leads_anywhere = true;
  } else if (lead.of_disc || lead.to == place::first_play) {
    if (lead.to == place::title || !lead.of_disc)
      return refuse("leads where a menu of a titleset cannot jump to");
    outcome.leads_anywhere = lead.to == place::first_play;
    if (is_menu_lead(lead))
      outcome.problems.push_back({missing, "leads to a menu of the whole disc, but there is none"});
  } else if (lead.titleset && lead.to != place::menu_entry) {
    refuse(
        "names its titleset, which only a jump to a titleset's first menu can (\"jump titleset "
        "1 menu\")");
  } else if (is_menu_lead(lead)) {
    to_menu(lead.titleset.value_or(owner.titleset), lead, outcome);
  } else {
    to_title(owner.titleset, lead, outcome);
  }
}

void navigation_map::to_title(int titleset, const command_lead& lead,
                              command_outcome& outcome) const {
  const part* const p = part_of(titleset);
  const std::string of =
      parts_.size() > 1 ? " in titleset " + std::to_string(titleset) : std::string();
  to_numbered_title(p == nullptr ? std::vector<int>() : p->titles, of, lead, outcome);
}

void navigation_map::to_numbered_title(const std::vector<int>& titles, const std::string& of,
                                       const command_lead& lead, command_outcome& outcome) const {
  if (lead.number < 1 || lead.number > std::ssize(titles)) {
    outcome.problems.push_back({missing, "leads to title " + trimmed(lead.number) + ", but " +
                                             titles_there_are(titles.size()) + of});
    return;
  }
  const int title = titles[static_cast<std::size_t>(lead.number) - 1];
  outcome.places.push_back(place_of_title(title));
  if (lead.chapter)
    to_chapter(title, *lead.chapter, outcome);
}

void navigation_map::to_chapter(int title, int chapter, command_outcome& outcome) const {
  const std::optional<int> chapters = chapters_asked_for(disc_->title(title));
  if (!chapters)
    return;
  outcome.chapters.push_back({title, chapter});
  if (disc_->has_other_paths)
    return;
  if (chapter < 1 || chapter > *chapters)
    outcome.problems.push_back(
        {missing, "leads to chapter " + trimmed(chapter) + " of title " + trimmed(title) +
                      ", which has " +
                      (*chapters == 1 ? "only one chapter" : trimmed(*chapters) + " chapters")});
}

/// dvdauthor makes the first menu the one for two of the keys that a player may have; for others a
/// menu must say that it is.
void navigation_map::to_entry(int first_menu, const std::string& entry,
                              command_outcome& outcome) const {
  if (disc_->has_other_paths && !entry.empty())
    outcome.leads_anywhere = true;
  else if (entry.empty() || entry == "root" || entry == "ptt" || entry == "last")
    outcome.places.push_back(first_menu);
  else
    outcome.problems.push_back(
        {missing, "leads to the menu \"" + entry + "\", but no menu has this entry"});
}

void navigation_map::to_menu(int titleset, const command_lead& lead,
                             command_outcome& outcome) const {
  const part* const p = part_of(titleset);
  const std::size_t count = p == nullptr ? 0 : p->menus.size();
  const std::string of =
      parts_.size() > 1 || titleset != 1 ? " in titleset " + std::to_string(titleset) : "";
  if (count == 0) {
    outcome.problems.push_back({missing, "leads to a menu, but " + menus_there_are(0) + of});
    return;
  }
  if (lead.to == place::menu_entry)
    return to_entry(place_of_menu(p->menus.front()), lead.entry, outcome);
  if (lead.number < 1 || lead.number > static_cast<int>(count)) {
    outcome.problems.push_back({missing, "leads to menu " + trimmed(lead.number) + ", but " +
                                             menus_there_are(count) + of});
    return;
  }
  outcome.places.push_back(place_of_menu(p->menus[static_cast<std::size_t>(lead.number) - 1]));
}

}  // namespace corvane
