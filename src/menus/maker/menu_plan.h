// Which menus are made of the titles of a disc, and what stands in them: a menu of all titles, and
// menus of a title's chapters, each on as many pages as its entries need. Nothing of how they look.
#pragma once

#include "disc/disc_description.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What menus say by themselves.
struct menu_words {
  std::string heading = "Titles";  ///< of the menu of titles
  std::string play_all = "Play all", play = "Play", back = "Back", previous = "Previous",
              next = "Next", chapter = "Chapter";
  bool operator==(const menu_words&) const = default;
};

struct menu_choices {
  std::vector<int> chapters_of;  ///< titles with a menu of their chapters, 1-based
  bool play_all = false;         ///< titles go on with the next one; the last calls the menu
  double picture_after = 0;      ///< seconds from a title's or chapter's beginning to its picture
  menu_words words;
  bool operator==(const menu_choices&) const = default;
};

/// All titles that have at least two chapters.
std::vector<int> titles_with_chapters(const disc_description& d);

/// What somebody sees and presses in a menu.
struct planned_entry {
  std::string key;     ///< what it is, whatever its number: stays when titles are added or moved
  std::string text;    ///< as made of names, or the user's
  int menu = 0;        ///< of the plan, to which it leads, 1-based; 0: to the title
  int title = 0;       ///< which it is about, 1-based; 0: none
  int chapter = 0;     ///< of the title, 1-based; 0: all of it
  std::string film;    ///< stored path of the video of its picture; empty: it has none
  double seconds = 0;  ///< of the picture, from the beginning of the film
  bool operator==(const planned_entry&) const = default;
};

struct planned_menu {
  std::string key;      ///< "titles 1", "chapters of \videos\tour.m2v 2": with the page's number
  std::string subject;  ///< for names of files: "titles", or the title's name
  std::string heading_key, heading;
  std::vector<planned_entry> entries;
  std::vector<planned_entry> ways;  ///< play all or play, back, previous, next
  int page = 1, pages = 1;
  int title = 0;  ///< whose chapters they are, 1-based; 0: the menu of titles
  bool operator==(const planned_menu&) const = default;
};

struct menu_plan {
  std::vector<planned_menu> menus;
  std::vector<std::string> notes;  ///< what is left out or otherwise than chosen; sentences
  bool operator==(const menu_plan&) const = default;
};

/// What bounds the plan.
struct plan_bounds {
  int entries = 6;  ///< of a page; at most 32
  int menus = 99;   ///< that there is room for
};

/// Texts of the user's by the keys of headings and entries.
using menu_texts = std::map<std::string, std::string, std::less<>>;

/// Plans the menus. Choices of titles that there are not, or that have no two chapters, are noted
/// and left out.
menu_plan plan_menus(const disc_description& d, const menu_choices& choices,
                     const plan_bounds& bounds, const menu_texts& texts = {});

/// A name for people, made of a file's: "my holiday 01" of "\films\my_holiday-01.m2v".
std::string cleaned_name(std::string_view stored);

/// The action of a button, as rows have it: "jump title 2 chapter  3", "jump menu 4". `before`: how
/// many menus of the project stand before the plan's.
std::string action_of(const planned_entry& entry, int before = 0);

/// The commands that titles end with: the next title, or a call of the menu; in the order of the
/// titles.
std::vector<std::string> ends_of_titles(const disc_description& d, const menu_choices& choices);

}  // namespace corvane
