// The map of a disc: what it holds as nodes, and where every command leads as arrows between them.
//
// An arrow says where a player arrives, as examine/foreseen_ways.h foresees it, and not only what
// its command names: with the jump table a title that calls the last menu leads to each menu that
// it can have been started from. Where a command cannot lead anywhere its arrow says so.
#pragma once

#include "disc/disc_description.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Numbers are those of the description, 1-based; of first play 0.
struct map_place {
  enum class kind { first_play, menu, disc_menu, title };
  kind what = kind::first_play;
  int number = 0;
  auto operator<=>(const map_place&) const = default;
};

struct map_node {
  map_place place;
  int exits = 0;           ///< arrows that it may have: its buttons, or one for its end
  bool is_reached = true;  ///< something leads to it; also where that is not known
  bool is_left = true;     ///< something leads out of it; also where that is not known
  bool operator==(const map_node&) const = default;
};

struct map_arrow {
  enum class end_kind {
    place,    ///< `to`
    stop,     ///< the disc ends
    nowhere,  ///< `why` it cannot be done
    unknown,  ///< its text does not say
  };
  map_place from;
  int button = 0;  ///< of the menu `from`, 1-based; else 0
  end_kind end = end_kind::place;
  map_place to;
  int chapter = 0;            ///< of the title `to`, 1-based; 1 is its beginning
  std::string command;        ///< as it stands; empty: what happens without one
  std::string why;            ///< "leads to title 9, but there are 3 titles"
  bool is_last_menu = false;  ///< one of the menus that may have been shown last
  bool operator==(const map_arrow&) const = default;
};

struct disc_map {
  std::vector<map_node> nodes;    ///< first play, menus, menus of the whole disc, titles
  std::vector<map_arrow> arrows;  ///< in the order of whose they are, then of where they lead

  bool operator==(const disc_map&) const = default;
};

/// `hand_edited`: the description is that of edited navigation XML.
disc_map map_of(const disc_description& d, bool hand_edited);

/// "first play", "menu 2", "title 3".
std::string name_of(const map_place& place);

/// "first play", "button 2 of menu 1", "end of title 3".
std::string source_text(const map_arrow& arrow);

/// "title 2 chapter 3", "menu 1", "stop", "nowhere", "not told".
std::string target_text(const map_arrow& arrow);

/// A line for each arrow, sorted ("button 2 of menu 1 -> title 2 chapter 1"); then one for each
/// node that nothing leads to ("nothing -> title 3") or that nothing leads out of ("menu 2 ->
/// nothing").
std::string map_text(const disc_map& map);

}  // namespace corvane
