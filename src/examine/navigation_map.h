// Where the commands of a disc lead: its titles and menus as places, and the ways between them.
#pragma once

#include "disc/command_reading.h"
#include "disc/disc_description.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Whose command it is. What dvdauthor allows differs: only a title calls, only a menu jumps to
/// one.
struct command_owner {
  enum class kind { first_play, title, menu };
  kind what = kind::first_play;
  int number = 0;    ///< of the title or menu in the description, 1-based
  int titleset = 0;  ///< 0: first play
};

struct command_problem {
  std::string_view rule;  ///< of navigation_rules()
  std::string clause;     ///< "leads to title 9, but there are 3 titles"
};

/// A chapter that a command names.
struct named_chapter {
  int title = 0;    ///< in the description, 1-based
  int chapter = 0;  ///< as it stands there
  bool operator==(const named_chapter&) const = default;
};

/// What a command does, as far as its text says.
struct command_outcome {
  std::vector<int> places;  ///< where it may lead
  std::vector<named_chapter> chapters;
  bool leads_anywhere = false;  ///< also where its text does not say
  bool stops = false;           ///< may end the disc
  bool is_typed = false;        ///< none that the editors offer
  std::vector<command_problem> problems;
};

class navigation_map {
 public:
  /// `d` must outlive it. `hand_edited`: the commands are those of navigation XML, in which their
  /// ";" may stand or not; those of rows get one when the XML is made.
  navigation_map(const disc_description& d, bool hand_edited);

  /// Places are numbered from 0: the titles, then the menus.
  int place_count() const;
  int place_of_title(int number) const { return number - 1; }
  int place_of_menu(int number) const { return disc_->title_count() + number - 1; }
  bool is_menu(int place) const { return place >= disc_->title_count(); }
  /// The title's or menu's number, 1-based.
  int number_of(int place) const;

  command_outcome outcome_of(const command_owner& owner, const disc_command& command) const;

  /// Whether it is an empty element of hand-edited XML, which stands for the default.
  bool is_default(const disc_command& command) const;

  /// Where the disc begins.
  command_outcome beginning() const;
  /// What follows when a title has been played.
  command_outcome after_title(int title) const;
  /// Where the menu key leads from a title or menu of this titleset.
  std::optional<int> root_menu(int titleset) const;

 private:
  struct part {
    std::vector<int> titles, menus;  // numbers in the description
  };
  const part* part_of(int titleset) const;
  std::vector<command_lead> leads_of(const command_owner& owner, const command_form& form) const;
  void read_typed(const command_owner& owner, const disc_command& command,
                  command_outcome& outcome) const;
  void follow(const command_owner& owner, const command_lead& lead, command_outcome& outcome) const;
  void follow_from_first_play(const command_lead& lead, command_outcome& outcome) const;
  void follow_from_title(const command_owner& owner, const command_lead& lead,
                         command_outcome& outcome) const;
  void follow_from_menu(const command_owner& owner, const command_lead& lead,
                        command_outcome& outcome) const;
  void to_title(int titleset, const command_lead& lead, command_outcome& outcome) const;
  void to_numbered_title(const std::vector<int>& titles, const std::string& of,
                         const command_lead& lead, command_outcome& outcome) const;
  void to_menu(int titleset, const command_lead& lead, command_outcome& outcome) const;
  void to_entry(int first_menu, const std::string& entry, command_outcome& outcome) const;
  void to_chapter(int title, int chapter, command_outcome& outcome) const;

  const disc_description* disc_;
  bool hand_edited_;
  std::map<int, part> parts_;  // by titleset
};

/// How many chapters a title will be given: one more than its list has if that does not begin at 0,
/// since dvdauthor adds one there, and one at each further file that has no list. Chapters that
/// fall together are counted each. Returns nullopt for a title whose chapters the description does
/// not hold.
std::optional<int> chapters_asked_for(const disc_title& title);

}  // namespace corvane
