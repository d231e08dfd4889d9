#include "examine/disc_walk.h"

#include "formats/vm_machine.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace corvane {
namespace {

using vm_place = vm_target::place;
using chain_pointer = std::shared_ptr<const program_chain>;

constexpr int most_jumps = 200;
constexpr int link_top_of_chain = 9, link_next_chain = 10, link_previous_chain = 11, link_up = 12,
              link_tail = 13;

bool is_shown(const disc_menu_contents& menu) {
  return menu.chain.seconds > 0;
}

/// The menus of a titleset (0: of the whole disc) in its first language.
std::vector<const disc_menu_contents*> menus_of(const disc_contents& disc, int titleset) {
  std::vector<const disc_menu_contents*> menus;
  for (const disc_menu_contents& menu : disc.menus)
    if (menu.titleset == titleset && (menus.empty() || menus.front()->language == menu.language))
      menus.push_back(&menu);
  return menus;
}

}  // namespace

class disc_walks::walk {
 public:
  explicit walk(disc_walks& all) : all_(all), disc_(all.disc_) {}

  std::optional<std::string> from_start() {
    if (!disc_.first_play)
      return titles_or_nowhere();
    return enter(disc_.first_play, {});
  }

  std::optional<std::string> from_end_of(const disc_title_contents& title) {
    registers_.known = 0;
    titleset_ = title.titleset;
    in_title_ = true;
    chain_ = title.chain.tables;
    return leave();
  }

  std::optional<std::string> by_commands(int titleset, bool in_title, const disc_chain& chain,
                                         std::span<const vm_command> commands) {
    registers_.known = 0;
    titleset_ = titleset;
    in_title_ = in_title;
    chain_ = chain.tables;
    const vm_end end = run(commands);
    return leads(end) ? led_by(end) : goes_on;
  }

  /// The menu itself, or the one that it links to if it shows nothing; without what that does
  /// first. Empty: none.
  std::string by_entry(const disc_menu_contents& entered) {
    const std::string name = name_of(entered.chain.tables);
    registers_.known = 0;
    const vm_end end = name.empty() ? run(entered.chain.tables->pre) : vm_end{};
    if (!end.to || end.to->where != vm_place::chain)
      return name;
    const auto linked = all_.menus_.find({entered.titleset, end.to->chain});
    return linked == all_.menus_.end() ? std::string() : name_of(linked->second->chain.tables);
  }

  std::optional<std::string> from_button(const disc_menu_contents& menu, std::size_t button) {
    titleset_ = menu.titleset;
    chain_ = menu.chain.tables;
    const auto& shown = menu.chain.highlight;
    if (!shown || button >= shown->buttons.size())
      return std::nullopt;
    registers_.system[8] = static_cast<std::uint16_t>((button + 1) << 10);
    registers_.known = 0;
    const vm_command command = shown->buttons[button].command;
    if (const vm_end end = run({&command, 1}); leads(end))
      return led_by(end);
    // One that sets something leaves the viewer in the menu, where he is not lost.
    return command.text() == "Nop" ? nowhere() : std::nullopt;
  }

 private:
  using answer = std::optional<std::string>;

  answer titles_or_nowhere() const {
    return disc_.titles.empty() ? nowhere() : answer("title 1 chapter 1");
  }

  answer nowhere() const { return registers_.guessed ? std::nullopt : answer("nowhere"); }

  bool may_go_on() { return all_.steps_left_-- > 0 && ++jumps_ <= most_jumps; }

  vm_end run(std::span<const vm_command> commands) {
    vm_end end = run_commands(commands, registers_);
    all_.steps_left_ -= end.steps;
    return end;
  }
  static bool leads(const vm_end& end) { return end.to || end.endless; }
  answer led_by(const vm_end& end) { return end.to ? follow(*end.to) : nowhere(); }

  /// The name of a chain that shows something; empty: it only leads on.
  answer enter(const chain_pointer& chain, const std::string& name) {
    if (!may_go_on())
      return std::nullopt;
    chain_ = chain;
    if (!chain)
      return nowhere();
    if (const vm_end end = run(chain->pre); leads(end))
      return led_by(end);
    return name.empty() ? leave() : answer(name);
  }

  /// What comes after the end of the chain.
  answer leave() {
    if (!may_go_on())
      return std::nullopt;
    if (!chain_)
      return nowhere();
    if (const vm_end end = run(chain_->post); leads(end))
      return led_by(end);
    if (chain_->next != 0)
      return chain_number(chain_->next);
    return in_title_ ? "stop" : nowhere();
  }

  answer follow(const vm_target& to) {
    switch (to.where) {
      case vm_place::exit:
        return "stop";
      case vm_place::title:
        return title_at(to.title);
      case vm_place::titleset_title:
        return title_of_titleset(to.title);
      case vm_place::chapter:
        return chapter_of_titleset(to.title, to.chapter);
      case vm_place::first_play:
        return from_start();
      case vm_place::manager_menu:
        return menu_of_kind(0, to.menu);
      case vm_place::manager_chain:
        return menu_number(0, to.chain);
      case vm_place::titleset_menu:
        return menu_of_kind(to.titleset == 0 ? titleset_ : to.titleset, to.menu);
      case vm_place::chain:
        return chain_number(to.chain);
      case vm_place::within:
        return within(to.link);
      default:
        return std::nullopt;
    }
  }

  answer within(int link) {
    switch (link) {
      case link_tail:
        return leave();
      case link_top_of_chain:
        return enter(chain_, name_of(chain_));
      case link_next_chain:
        return chain_number(chain_->next);
      case link_previous_chain:
        return chain_number(chain_->previous);
      case link_up:
        return chain_number(chain_->up);
      default:
        return std::nullopt;  // a cell or program of what plays already
    }
  }

  answer title_at(int number) {
    const auto found = all_.titles_.find(number);
    return found == all_.titles_.end() ? nowhere() : enter_title(*found->second);
  }

  answer title_of_titleset(int number) {
    const auto found = all_.titleset_titles_.find({titleset_, number});
    return found == all_.titleset_titles_.end() ? nowhere() : enter_title(*found->second);
  }

  answer chapter_of_titleset(int number, int chapter) const {
    const auto found = all_.titleset_titles_.find({titleset_, number});
    return found == all_.titleset_titles_.end() ? nowhere() : arrived(*found->second, chapter);
  }

  /// At its beginning, where its commands are done first.
  answer enter_title(const disc_title_contents& title) {
    if (!may_go_on())
      return std::nullopt;
    titleset_ = title.titleset;
    in_title_ = true;
    chain_ = title.chain.tables;
    if (const vm_end end = run(chain_->pre); leads(end))
      return led_by(end);
    return arrived(title, 1);
  }

  answer arrived(const disc_title_contents& title, int chapter) const {
    if (chapter < 1 || chapter > static_cast<int>(title.chapters.size()))
      return nowhere();
    return "title " + std::to_string(title.number) + " chapter " + std::to_string(chapter);
  }

  answer chain_number(int number) {
    if (!in_title_)
      return menu_number(titleset_, number);
    if (titleset_ < 1 || titleset_ > static_cast<int>(disc_.titlesets.size()) || number < 1)
      return nowhere();
    const auto& chains = disc_.titlesets[static_cast<std::size_t>(titleset_) - 1].chains;
    const auto index = static_cast<std::size_t>(number) - 1;
    return index < chains.size() ? title_of_titleset(chains[index].title) : nowhere();
  }

  answer menu_number(int titleset, int number) {
    const auto found = all_.menus_.find({titleset, number});
    return found == all_.menus_.end() ? nowhere() : enter_menu(*found->second);
  }

  answer menu_of_kind(int titleset, menu_kind kind) {
    const auto found = all_.entries_.find({titleset, kind});
    return found == all_.entries_.end() ? nowhere() : enter_menu(*found->second);
  }

  answer enter_menu(const disc_menu_contents& menu) {
    titleset_ = menu.titleset;
    in_title_ = false;
    return enter(menu.chain.tables, name_of(menu.chain.tables));
  }

  /// Empty if it shows nothing.
  std::string name_of(const chain_pointer& chain) const {
    const auto found = all_.names_.find(chain.get());
    return found == all_.names_.end() ? std::string() : found->second;
  }

  disc_walks& all_;
  const disc_contents& disc_;
  vm_registers registers_;
  chain_pointer chain_;  // where the player is
  int titleset_ = 0;
  bool in_title_ = false;
  int jumps_ = 0;
};

std::vector<named_menu> menus_with_pictures(const disc_contents& disc) {
  using whole = finding_item::whole_kind;
  std::vector<named_menu> shown;
  int number = 0;
  const auto add = [&](whole of, int titleset) {
    for (const disc_menu_contents* menu : menus_of(disc, titleset))
      if (is_shown(*menu))
        shown.emplace_back(finding_item{of, ++number, finding_item::part_kind::whole, 0}, menu);
  };
  for (int titleset = 1; titleset <= static_cast<int>(disc.titlesets.size()); ++titleset)
    add(whole::menu, titleset);
  number = 0;
  add(whole::disc_menu, 0);
  return shown;
}

// The first of a kind or number is the one that players find.
disc_walks::disc_walks(const disc_contents& disc) : disc_(disc) {
  for (const auto& [item, menu] : menus_with_pictures(disc))
    names_.try_emplace(menu->chain.tables.get(),
                       std::string(name_of(item.whole)) + " " + std::to_string(item.number));
  for (int titleset = 0; titleset <= static_cast<int>(disc.titlesets.size()); ++titleset)
    for (const disc_menu_contents* menu : menus_of(disc, titleset)) {
      menus_.try_emplace({titleset, menu->number}, menu);
      if (menu->entry != menu_kind::none)
        entries_.try_emplace({titleset, menu->entry}, menu);
    }
  for (const disc_title_contents& title : disc.titles) {
    titles_.try_emplace(title.number, &title);
    titleset_titles_.try_emplace({title.titleset, title.number_in_titleset}, &title);
  }
}

std::optional<std::string> disc_walks::after_start() {
  return walk(*this).from_start();
}

std::optional<std::string> disc_walks::after_title(const disc_title_contents& title) {
  return walk(*this).from_end_of(title);
}

std::optional<std::string> disc_walks::by_commands(const disc_title_contents& title,
                                                   std::span<const vm_command> commands) {
  return walk(*this).by_commands(title.titleset, true, title.chain, commands);
}

std::optional<std::string> disc_walks::by_commands(const disc_menu_contents& menu,
                                                   std::span<const vm_command> commands) {
  return walk(*this).by_commands(menu.titleset, false, menu.chain, commands);
}

std::vector<std::string> disc_walks::entries_of(const disc_menu_contents& menu) {
  constexpr std::pair<menu_kind, const char*> kinds[] = {
      {menu_kind::title, "title"}, {menu_kind::root, "root"},   {menu_kind::subpicture, "subtitle"},
      {menu_kind::audio, "audio"}, {menu_kind::angle, "angle"}, {menu_kind::chapter, "ptt"}};
  const auto own = names_.find(menu.chain.tables.get());
  std::vector<std::string> entries;
  for (const auto& [kind, name] : kinds) {
    const auto entry = entries_.find({menu.titleset, kind});
    if (own != names_.end() && entry != entries_.end() &&
        walk(*this).by_entry(*entry->second) == own->second)
      entries.emplace_back(name);
  }
  return entries;
}

std::optional<std::string> disc_walks::after_button(const disc_menu_contents& menu,
                                                    std::size_t button) {
  return walk(*this).from_button(menu, button);
}

}  // namespace corvane
