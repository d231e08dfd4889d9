#include "examine/navigation_rules.h"

#include "examine/navigation_map.h"
#include "examine/xml_commands.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;
using owner_kind = command_owner::kind;

constexpr std::string_view dvdauthor_grammar = "dvdauthor 0.7.2, its grammar and measured";
constexpr std::string_view of_this_program = "what a viewer's remote control can do";
constexpr std::string_view other_command =
    "choose another command: in \"nav cmds\" for a title or first play, in \"edit existing "
    "titleset "
    "menu\" for a button";

constexpr std::array navigation_rules_table = {
    rule{"command-target-missing", severity::error,
         "Commands lead to titles, menus and chapters that there are",
         "a command that leads to a title, menu or chapter of the disc",
         "nothing: the run fails when everything has been multiplexed; as first play, a disc that "
         "does nothing",
         other_command, dvdauthor_grammar},
    rule{"command-not-allowed", severity::error,
         "Titles call menus, menus jump, and a disc begins with a whole title or a menu",
         "a command that is allowed where it stands",
         "nothing: the run fails when everything has been multiplexed", other_command,
         dvdauthor_grammar},
    rule{"command-syntax", severity::error, "dvdauthor can read each command",
         "a command as the editors offer it, in small letters; the program adds its \";\"",
         "nothing: the run fails when everything has been multiplexed", other_command,
         dvdauthor_grammar},
    rule{"command-empty", severity::error, "Each button, and first play, has a command",
         "a command; \"exit\" ends the disc",
         "nothing: the run fails when everything has been multiplexed", other_command,
         dvdauthor_grammar},
    rule{"command-typed", severity::note, "Commands are ones that the editors offer",
         "nothing: a typed command is allowed, but only where it leads is checked",
         "perhaps something else than was meant", "try the button or title in a player",
         of_this_program},
    rule{"command-moved", severity::warning,
         "Commands lead to what they led to before titles or menus were removed or moved, as long "
         "as the project is open",
         "a command that leads to the title or menu that was meant",
         "another title or menu than the one that was meant",
         "choose the command anew, in \"nav cmds\" for a title or first play, in \"edit existing "
         "titleset menu\" for a button; if it is right as it is, accept it there",
         of_this_program},
    rule{"menu-too-many-commands", severity::error, "The first menu's commands fit into it",
         "at most 128 commands in a menu, those that the jump table adds included",
         "nothing: the run fails when everything has been multiplexed",
         "edit menu 1 and delete buttons that jump to a title, or remove menus",
         "DVD Forum, book of the DVD-Video format: program chain command table"},
    rule{"title-not-reachable", severity::warning, "Something leads to each title",
         "a title that first play, a button or the end of another title leads to",
         "the title only by its number on the remote control, if the player has that",
         "add a button that jumps to it, or let another title go on with it in \"nav cmds\"",
         of_this_program},
    rule{"menu-not-reachable", severity::warning, "Something leads to each menu",
         "a menu that first play, a button, the end of a title or the menu key leads to",
         "never this menu", "add a button to another menu that jumps to it, or remove it",
         of_this_program},
    rule{"menu-not-left", severity::warning, "A button leads out of each menu",
         "a button that leads to a title or ends the disc, here or in a menu that follows",
         "the same menus for ever: no button of them plays anything",
         "give a button of the menu another action in \"edit existing titleset menu\"",
         of_this_program},
    rule{"menu-without-buttons", severity::warning, "Each menu has a button", "at least one button",
         "a picture that stays until the player is stopped",
         "add a button in \"edit existing titleset menu\", or remove the menu", of_this_program},
};

std::string name_of(const command_owner& owner) {
  return owner.what == owner_kind::first_play ? "the first-play command" : "the command";
}

std::string_view remedy_for(owner_kind what) {
  switch (what) {
    case owner_kind::first_play:
      return "choose another command under \"first play\" in \"nav cmds\"";
    case owner_kind::title:
      return "choose another post command for the title in \"nav cmds\"";
    case owner_kind::menu:
      break;
  }
  return "choose another action for the button in \"edit existing titleset menu\"";
}

class navigation_examiner {
 public:
  navigation_examiner(const disc_description& d, std::string_view customxml)
      : disc_(d), customxml_(customxml), map_(d, !customxml.empty()) {}

  std::vector<finding> findings() {
    if (!customxml_.empty())
      add_xml_faults();
    look_at_commands();
    look_at_command_count();
    if (!disc_.has_other_paths) {
      look_at_what_is_reached();
      look_at_menus_that_hold();
    }
    return std::move(findings_);
  }

 private:
  // Commands --------------------------------------------------------------------------------------

  void look_at_commands() {
    if (disc_.first_play && !map_.is_default(*disc_.first_play))
      look_at_command({}, {whole::disc, 0, part::command, 0}, *disc_.first_play);
    for (int title = 1; title <= disc_.title_count(); ++title)
      if (const auto& post = disc_.title(title).post; post && !map_.is_default(*post))
        look_at_command({owner_kind::title, title, disc_.title(title).titleset},
                        {whole::title, title, part::command, 0}, *post);
    for (int menu = 1; menu <= disc_.menu_count(); ++menu) {
      int button = 0;
      for (const disc_button& b : disc_.menu(menu).buttons)
        look_at_command({owner_kind::menu, menu, disc_.menu(menu).titleset},
                        {whole::menu, menu, part::button, ++button}, b.action);
    }
  }

  void look_at_command(const command_owner& owner, finding_item item, const disc_command& command) {
    const command_outcome outcome = map_.outcome_of(owner, command);
    for (const command_problem& problem : outcome.problems) {
      const bool told = !customxml_.empty() &&
                        (problem.rule == "command-syntax" || problem.rule == "command-empty");
      if (!told)
        add_about_command(problem.rule, owner, item, command.text, problem.clause);
    }
    const bool is_read =
        std::find(unreadable_.begin(), unreadable_.end(), item) == unreadable_.end();
    if (outcome.is_typed && outcome.problems.empty() && is_read)
      add_about_command("command-typed", owner, item, command.text,
                        "is none that the editors offer: only where it leads is checked");
  }

  void add_about_command(std::string_view rule, const command_owner& owner, finding_item item,
                         const std::string& text, const std::string& clause) {
    finding f = finding_of(navigation_rules_table, rule, item,
                           name_of(owner) + " " + sanitized_quoted(text) + " " + clause);
    if (!customxml_.empty())
      f.remedy = "correct the command in the navigation XML (\"edit xml before authoring\")";
    else if (rule != "command-typed")
      f.remedy = remedy_for(owner.what);
    findings_.push_back(std::move(f));
  }

  void add_xml_faults() {
    for (const xml_command_fault& fault : xml_command_faults(customxml_)) {
      unreadable_.push_back(fault.item);
      finding f = finding_of(navigation_rules_table, "command-syntax", fault.item,
                             "the command " + sanitized_quoted(fault.command) + " in line " +
                                 trimmed(fault.line) + " of the navigation XML " + fault.clause,
                             "a command that dvdauthor can read, with \";\" at its end");
      f.remedy = "correct this line of the navigation XML (\"edit xml before authoring\")";
      findings_.push_back(std::move(f));
    }
  }

  /// A program chain holds 128 commands. With the jump table menu 1 has one to lead on to each
  /// other menu, and three for each of its buttons that jump to a title (it remembers the menu
  /// first), with three more to find the button's.
  void look_at_command_count() {
    constexpr int most = 128;
    if (!customxml_.empty() || !disc_.jump_table || disc_.menu_count() < 2)
      return;
    const std::vector<disc_button>& buttons = disc_.menu(1).buttons;
    const int to_menus = disc_.menu_count() - 1;
    const auto titles =
        static_cast<int>(std::count_if(buttons.begin(), buttons.end(), [](const disc_button& b) {
          return interpreted(b.action.text).starts_with(jump_title_words);
        }));
    const int of_buttons = titles == 0 ? 1 : 3 * titles + 3;
    if (to_menus + of_buttons > most)
      findings_.push_back(finding_of(
          navigation_rules_table, "menu-too-many-commands", {whole::menu, 1, part::whole, 0},
          "the menu needs " + trimmed(to_menus + of_buttons) + " commands: with the jump table, " +
              trimmed(to_menus) + " for the other menus and " + trimmed(of_buttons) + " for its " +
              trimmed(titles) + " buttons that jump to a title"));
  }

  // Ways ------------------------------------------------------------------------------------------

  command_outcome outcome_at(int place) const {
    const int number = map_.number_of(place);
    if (!map_.is_menu(place))
      return map_.after_title(number);
    command_outcome all;
    for (const disc_button& b : disc_.menu(number).buttons) {
      const command_outcome one =
          map_.outcome_of({owner_kind::menu, number, disc_.menu(number).titleset}, b.action);
      all.places.insert(all.places.end(), one.places.begin(), one.places.end());
      all.problems.insert(all.problems.end(), one.problems.begin(), one.problems.end());
      all.leads_anywhere = all.leads_anywhere || one.leads_anywhere;
      all.stops = all.stops || one.stops;
    }
    return all;
  }

  /// From first play on; a command that leads nowhere was meant to lead somewhere, and behind it
  /// nothing is known.
  void look_at_what_is_reached() {
    const command_outcome beginning = map_.beginning();
    std::vector<bool> reached(static_cast<std::size_t>(map_.place_count()));
    std::vector<int> waiting;
    bool is_known = true;
    const auto go = [&](const command_outcome& outcome) {
      is_known = is_known && !outcome.leads_anywhere && outcome.problems.empty();
      for (const int place : outcome.places)
        if (!reached[static_cast<std::size_t>(place)]) {
          reached[static_cast<std::size_t>(place)] = true;
          waiting.push_back(place);
        }
    };
    go(beginning);
    while (is_known && !waiting.empty()) {
      const int place = waiting.back();
      waiting.pop_back();
      go(outcome_at(place));
      go(menu_key_at(place));
    }
    if (!is_known)
      return;
    for (int place = 0; place < map_.place_count(); ++place)
      if (!reached[static_cast<std::size_t>(place)])
        add_not_reached(place);
  }

  command_outcome menu_key_at(int place) const {
    const int number = map_.number_of(place);
    command_outcome outcome;
    if (const auto menu = map_.root_menu(map_.is_menu(place) ? disc_.menu(number).titleset
                                                             : disc_.title(number).titleset))
      outcome.places.push_back(*menu);
    return outcome;
  }

  void add_not_reached(int place) {
    const int number = map_.number_of(place);
    if (map_.is_menu(place))
      findings_.push_back(finding_of(navigation_rules_table, "menu-not-reachable",
                                     {whole::menu, number, part::whole, 0},
                                     "no button, title or key leads to menu " + trimmed(number)));
    else
      findings_.push_back(finding_of(
          navigation_rules_table, "title-not-reachable", {whole::title, number, part::whole, 0},
          "no button and no end of another title leads to title " + trimmed(number)));
  }

  /// A menu holds its viewer when its buttons lead only to menus that do: those are left over when
  /// one goes back from the menus that are left.
  void look_at_menus_that_hold() {
    const auto menus = static_cast<std::size_t>(disc_.menu_count());
    std::vector<std::vector<std::size_t>> leading_here(menus);
    std::vector<bool> is_left(menus);
    std::vector<std::size_t> waiting;
    for (std::size_t i = 0; i < menus; ++i) {
      const command_outcome outcome = outcome_at(map_.place_of_menu(static_cast<int>(i) + 1));
      for (const int place : outcome.places)
        if (map_.is_menu(place))
          leading_here[static_cast<std::size_t>(map_.number_of(place)) - 1].push_back(i);
      is_left[i] = leads_out(outcome);
      if (is_left[i])
        waiting.push_back(i);
    }
    while (!waiting.empty()) {
      const std::size_t menu = waiting.back();
      waiting.pop_back();
      for (const std::size_t before : leading_here[menu])
        if (!is_left[before]) {
          is_left[before] = true;
          waiting.push_back(before);
        }
    }
    for (std::size_t i = 0; i < menus; ++i)
      if (!is_left[i])
        add_not_left(static_cast<int>(i) + 1);
  }

  /// A command that is wrong was meant to lead somewhere.
  bool leads_out(const command_outcome& outcome) const {
    return outcome.stops || outcome.leads_anywhere || !outcome.problems.empty() ||
           std::any_of(outcome.places.begin(), outcome.places.end(),
                       [this](int place) { return !map_.is_menu(place); });
  }

  void add_not_left(int menu) {
    const finding_item item{whole::menu, menu, part::whole, 0};
    if (disc_.menu(menu).buttons.empty())
      findings_.push_back(finding_of(navigation_rules_table, "menu-without-buttons", item,
                                     disc_.menu(menu).loop
                                         ? "the menu has no buttons and begins again for ever"
                                         : "the menu has no buttons and stays for ever"));
    else
      findings_.push_back(
          finding_of(navigation_rules_table, "menu-not-left", item,
                     "every button of the menu leads to a menu, and none from there "
                     "to a title or the end"));
  }

  const disc_description& disc_;
  std::string_view customxml_;
  navigation_map map_;
  std::vector<finding> findings_;
  std::vector<finding_item> unreadable_;  // in the XML
};

}  // namespace

std::span<const rule> navigation_rules() {
  return navigation_rules_table;
}

namespace {

/// What a viewer of the project's rows knows the file by.
std::string moved_name(const std::string& stored, const std::string& other) {
  const bool same_name = file_name_of(stored) == file_name_of(other);
  return sanitized_quoted(same_name ? native_from_stored(stored, native_style())
                                    : std::string(file_name_of(stored)));
}

}  // namespace

std::vector<finding> moved_command_findings(const disc_description& d,
                                            const std::vector<command_target>& led_to) {
  std::vector<finding> findings;
  if (led_to.empty())
    return findings;
  const std::vector<command_target> now = command_targets(d);
  for (const command_target& before : led_to) {
    const command_target* const after = target_of_item(now, before.item);
    if (after == nullptr || after->text != before.text || after->video == before.video)
      continue;
    findings.push_back(finding_of(navigation_rules_table, "command-moved", before.item,
                                  "the command " + sanitized_quoted(before.text) + " led to " +
                                      moved_name(before.video, after->video) + ", it leads to " +
                                      moved_name(after->video, before.video) + " now"));
  }
  return findings;
}

std::vector<finding> navigation_findings(const disc_description& d, std::string_view customxml) {
  return navigation_examiner(d, customxml).findings();
}

}  // namespace corvane
