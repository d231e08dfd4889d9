#include "examine/foreseen_ways.h"

#include "examine/disc_traits.h"
#include "examine/disc_walk.h"
#include "formats/text.h"

#include <algorithm>
#include <cstddef>
#include <set>

namespace corvane {
namespace {

using place = command_lead::place;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;

std::string title_place(int title, int chapter) {
  return "title " + std::to_string(title) + " chapter " + std::to_string(chapter);
}

/// The ";" behind the last command may have been taken off; behind a "}" there was none.
command_reading reading_with_end(const std::string& text) {
  command_reading reading = read_commands(text + ";");
  return reading.fault ? read_commands(text) : reading;
}

}  // namespace

std::vector<std::pair<finding_item, const disc_menu*>> menus_shown(const disc_description& d) {
  std::vector<std::pair<finding_item, const disc_menu*>> shown;
  const auto add = [&shown](whole of, const std::vector<disc_menu>& menus) {
    int number = 0;
    for (const disc_menu& menu : menus)
      if (menu.language == 0 && !menu.files.empty())
        shown.emplace_back(finding_item{of, ++number, part::whole, 0}, &menu);
  };
  add(whole::menu, d.menus);
  add(whole::disc_menu, d.disc_menus);
  return shown;
}

/// Places that were found, and what has been looked at already.
struct foreseen_ways::search {
  std::vector<std::string> places;
  std::set<const void*> seen;
  bool is_known = true;

  void add(const std::string& name) {
    if (std::find(places.begin(), places.end(), name) == places.end())
      places.push_back(name);
  }

  std::optional<std::string> answer() const {
    return is_known && !places.empty() ? std::optional(join(places, either_place)) : std::nullopt;
  }
};

foreseen_ways::foreseen_ways(const disc_description& d, bool hand_edited)
    : d_(d), hand_edited_(hand_edited) {
  for (const auto* const menus : {&d.disc_menus, &d.menus})
    for (const disc_menu& menu : *menus)
      if (menu.language == 0)
        menus_[menu.titleset].push_back(&menu);
  for (const auto& [item, menu] : menus_shown(d)) {
    finding f;
    f.item = item;
    names_.emplace(menu, place_text(f));
  }
}

std::optional<std::string> foreseen_ways::after_start() const {
  if (d_.has_jump_pad)
    return std::nullopt;
  if (d_.jump_table && d_.first_play)
    return remembered_place(*d_.first_play, 0, 0);
  search s;
  if (is_given(d_.first_play))
    through(*d_.first_play, {}, s);
  else if (!d_.disc_menus.empty())
    to_menu(entry_of(0, "title"), s);
  else if (menus_.contains(1))
    to_menu(entry_of(1, "root"), s);
  else if (d_.title_count() > 0)
    to_title(1, s);
  return s.answer();
}

std::optional<std::string> foreseen_ways::after_title(int number) const {
  if (d_.has_jump_pad)
    return std::nullopt;
  const disc_title& title = d_.title(number);
  const owner of{title.titleset, number};
  if (is_given(title.post) && d_.jump_table)
    return remembered_place(*title.post, title.titleset, 0);
  search s;
  if (is_given(title.post)) {
    if (through(*title.post, of, s))
      s.add("stop");
  } else if (hand_edited_ || number == d_.title_count()) {
    s.add("stop");
  } else {
    to_title(number + 1, s);
  }
  return s.answer();
}

std::optional<std::string> foreseen_ways::after_button(const disc_menu& menu,
                                                       const disc_command& action) const {
  if (d_.has_jump_pad)
    return std::nullopt;
  if (d_.jump_table) {
    const std::vector<const disc_menu*>& all = menus_.at(menu.titleset);
    const auto own = std::find(all.begin(), all.end(), &menu);
    return own == all.end()
               ? std::nullopt
               : remembered_place(action, menu.titleset, static_cast<int>(own - all.begin()) + 1);
  }
  search s;
  through(action, {menu.titleset, 0}, s);
  return s.answer();
}

std::optional<std::string> foreseen_ways::by_title_command(int title,
                                                           const disc_command& command) const {
  return by_command(command, {d_.title(title).titleset, title});
}

std::optional<std::string> foreseen_ways::by_menu_command(const disc_menu& menu,
                                                          const disc_command& command) const {
  return by_command(command, {menu.titleset, 0});
}

std::optional<std::string> foreseen_ways::by_command(const disc_command& command,
                                                     const owner& of) const {
  if (d_.has_jump_pad || d_.jump_table)
    return std::nullopt;
  search s;
  if (through(command, of, s))
    s.add(goes_on);
  return s.answer();
}

// Following --------------------------------------------------------------------------------------

/// Whether the command may come to its end without leading anywhere.
bool foreseen_ways::through(const disc_command& command, const owner& of, search& s) const {
  constexpr std::size_t most_places = 200;
  s.is_known = s.is_known && s.seen.size() < most_places;
  const command_reading reading = reading_with_end(command.text);
  s.is_known = s.is_known && !reading.fault && !reading.resumes;
  for (const command_lead& lead : reading.leads)
    if (s.is_known)
      follow(lead, of, s);
  if (reading.ends)
    s.add("stop");
  return reading.falls_through;
}

void foreseen_ways::follow(const command_lead& lead, const owner& of, search& s) const {
  int titleset = lead.of_disc ? 0 : lead.titleset.value_or(of.titleset);
  switch (lead.to) {
    case place::title:
      if (const int number = title_number(titleset, lead.number); number == 0)
        s.is_known = false;
      else if (lead.chapter)
        s.add(title_place(number, *lead.chapter));
      else
        to_title(number, s);
      return;
    case place::menu:
      // Of a disc without menus of its own the first command means those of its only titleset.
      if (titleset == 0 && !lead.of_disc && d_.disc_menus.empty() && is_one_titleset())
        titleset = 1;
      if (lead.chapter)
        s.is_known = false;
      else
        to_menu(menu_at(titleset, lead.number), s);
      return;
    case place::menu_entry:
      to_menu(entry_of(titleset, lead.entry), s);
      return;
    case place::chapter:
      if (of.title != 0)
        s.add(title_place(of.title, lead.chapter.value_or(1)));
      else
        s.is_known = false;
      return;
    case place::first_play:
    case place::within:
    case place::nowhere:
      s.is_known = false;
  }
}

void foreseen_ways::to_title(int number, search& s) const {
  const disc_title& title = d_.title(number);
  if (!s.seen.insert(&title).second)
    return;
  if (is_given(title.pre) && !through(*title.pre, {title.titleset, number}, s))
    return;
  s.add(title_place(number, 1));
}

void foreseen_ways::to_menu(const disc_menu* menu, search& s) const {
  if (menu == nullptr) {
    s.is_known = false;
    return;
  }
  if (!s.seen.insert(menu).second)
    return;
  const owner of{menu->titleset, 0};
  if (is_given(menu->pre) && !through(*menu->pre, of, s))
    return;
  if (const auto name = names_.find(menu); name != names_.end())
    s.add(name->second);
  else if (!menu->loop && !is_given(menu->post))
    s.add("stop");
  else if (menu->loop || through(*menu->post, of, s))
    s.is_known = false;
}

/// The number on the disc of title `number` of a titleset (0: of the whole disc); 0: there is none.
int foreseen_ways::title_number(int titleset, int number) const {
  int before = 0;
  for (int title = 1; title <= d_.title_count(); ++title)
    if ((titleset == 0 || d_.title(title).titleset == titleset) && ++before == number)
      return title;
  return 0;
}

const disc_menu* foreseen_ways::menu_at(int titleset, int number) const {
  const auto all = menus_.find(titleset);
  if (all == menus_.end() || number < 1 || number > static_cast<int>(all->second.size()))
    return nullptr;
  return all->second[static_cast<std::size_t>(number) - 1];
}

/// `entry`: empty for the one that "menu" means. dvdauthor has the first menu for three of them
/// where none is said to be it.
const disc_menu* foreseen_ways::entry_of(int titleset, const std::string& entry) const {
  const auto all = menus_.find(titleset);
  if (all == menus_.end())
    return nullptr;
  const std::string name = !entry.empty() ? entry : titleset == 0 ? "title" : "root";
  for (const disc_menu* const menu : all->second)
    if (std::find(menu->entries.begin(), menu->entries.end(), name) != menu->entries.end())
      return menu;
  const bool is_first = titleset == 0 ? name == "title" : name == "root" || name == "ptt";
  return is_first ? all->second.front() : nullptr;
}

// The jump table ---------------------------------------------------------------------------------

/// Titles and menus of several titlesets are numbered in each of them.
bool foreseen_ways::is_one_titleset() const {
  const auto is_first = [](const auto& one) { return one.titleset == 1; };
  return std::all_of(d_.titles.begin(), d_.titles.end(), is_first) &&
         std::all_of(d_.menus.begin(), d_.menus.end(), is_first);
}

std::optional<std::string> foreseen_ways::remembered_menu(int titleset, int number) const {
  const disc_menu* const menu = menu_at(titleset, number);
  const auto name = names_.find(menu);
  return name == names_.end() ? std::nullopt : std::optional(name->second);
}

/// Where a command leads that the jump table has rewritten. `titleset`: 0: it is the disc's first.
/// `from`: the menu whose button it is; 0: a title's command, or the first one.
std::optional<std::string> foreseen_ways::remembered_place(const disc_command& command,
                                                           int titleset, int from) const {
  const bool has_others =
      !d_.disc_menus.empty() || std::any_of(d_.menus.begin(), d_.menus.end(), [](const auto& menu) {
        return is_given(menu.pre) || !menu.entries.empty() || menu.language > 0;
      });
  const bool has_pre_of_title = std::any_of(d_.titles.begin(), d_.titles.end(),
                                            [](const auto& title) { return is_given(title.pre); });
  if (has_others || has_pre_of_title || !is_one_titleset())
    return std::nullopt;
  const command_form& form = command.form;
  switch (form.what) {
    case verb::jump_title:
      if (const int number = form.number ? title_number(titleset, *form.number) : 0; number != 0)
        return title_place(number, form.chapter.value_or(1));
      return std::nullopt;
    case verb::jump_menu:
      return form.number ? remembered_menu(1, *form.number) : std::nullopt;
    case verb::jump_titleset:
      // Remembered, it comes back to the menu that it was chosen in.
      return remembered_menu(1, from > 0 ? from : 1);
    case verb::call_menu:
      return remembered_menu(1, form.number.value_or(1));
    case verb::call_last_menu:
      return remembered_menu(1, 1);  // none was shown before
    case verb::other:
      break;
  }
  return std::nullopt;
}

}  // namespace corvane
