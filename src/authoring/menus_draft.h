// What somebody has chosen for menus that are to be made, and what comes of it: the pages, what
// stands on them, and what is to be said before. For a window; without one, and without drawing.
//
// Belongs to whoever shows it; looks at a project that others own and changes nothing of it. Each
// change plans and lays out anew.
#pragma once

#include "authoring/menu_making.h"
#include "authoring/menu_shapes.h"
#include "menus/maker/design_folder.h"
#include "menus/maker/made_menus.h"
#include "project/project.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

enum class chosen_background { of_design, colours, picture, film };

class menus_draft {
 public:
  /// `preset` (as `preset_wishes` gives it) is completed by what is remembered of menus made
  /// before. Of `designs` those that can be used are offered; there must be one. `p` must outlive
  /// it.
  menus_draft(const project& p, std::vector<found_design> designs, const making_wishes& preset,
              text_measure measure, std::function<bool(const std::string&)> is_taken);

  /// As they are to be made.
  making_wishes wishes() const;
  const menu_wishes& chosen() const { return wishes_; }
  /// Changes what is chosen, but for the design.
  void change(const std::function<void(menu_wishes&)>& how);
  /// The project has changed.
  void plan();

  // What -----------------------------------------------------------------------------------------
  struct offered_title {
    int title = 0;     ///< 1-based
    std::string text;  ///< "holiday (12 chapters)"
    bool has_menu = false;
    bool operator==(const offered_title&) const = default;
  };
  /// Those that can have a menu of their chapters.
  std::vector<offered_title> titles() const;
  void let_have_menu(int title, bool has);
  void let_all_have_menus(bool have);

  int own_menus() const { return own_menus_; }  ///< that were not made by the maker
  /// Whether 4:3 or 16:9 is free to choose: not as long as menus of the user's own stay.
  bool may_choose_shape() const;
  bool uses_jump_table() const;
  /// First play leads elsewhere than to the menus.
  bool disc_begins_elsewhere() const;
  /// Whether what is chosen needs all menus of the project to go first.
  bool erases_menus() const;

  // Look -----------------------------------------------------------------------------------------
  const std::vector<found_design>& designs() const { return designs_; }
  std::size_t design() const { return design_; }
  /// Its letters and its layout; what the background was chosen to be stays.
  void choose_design(std::size_t index);
  const menu_design& look() const { return look_; }
  void change_look(const std::function<void(menu_design&)>& how);
  void arrange(menu_arrangement arrangement);
  void set_entries(int columns, int rows);

  chosen_background background() const { return background_; }
  void choose_background(chosen_background kind);
  const colour_background& colours() const { return colours_; }
  const picture_background& picture() const { return picture_; }
  const menu_motion& film() const { return film_; }
  void set_colours(const colour_background& colours);
  void set_picture(const picture_background& picture);
  void set_film(const menu_motion& film);

  /// A page as it looks in another one of the designs.
  drawn_page sample_of(std::size_t design) const;

  // Pages ----------------------------------------------------------------------------------------
  /// Why there are none: a sentence; else empty.
  const std::string& trouble() const { return trouble_; }
  /// What is left out, shortened, or otherwise; sentences.
  const std::vector<std::string>& notes() const { return made_.notes; }
  int pages() const { return static_cast<int>(made_.menus.size()); }
  int page() const { return page_; }  ///< 1-based; 0: there is none
  void turn_to(int page);
  const menu_to_make& shown() const { return made_.menus[static_cast<std::size_t>(page_) - 1]; }
  /// "menu 2 of 5: Titles".
  std::string page_words() const;
  /// "5 menus: 7 titles on 2 pages, ...", or why there are none.
  std::string summary() const;

  // What says something on the page that is shown: 0 is the heading, then come the entries, then
  // the ways.
  int items() const;
  int selected() const { return selected_; }
  void select(int item);
  std::string text_of(int item) const;
  /// An empty text: what it would say by itself. All menus in which it stands change.
  void set_text(int item, const std::string& text);
  bool has_own_text(int item) const;
  page_box text_place(int item) const;  ///< in pixels of the disc's picture
  page_box place(int item) const;       ///< of the button
  int item_at(int x, int y) const;      ///< -1: none
  /// Where it leads: "menu 3: holiday", "title 2, chapter 4"; empty: it is the heading.
  std::string leads_to(int item) const;
  const design_look& button_look(int item) const;

  /// Whether texts were typed since the project's menus were made or this was.
  bool has_new_texts() const { return wishes_.texts != texts_before_; }
  void texts_are_kept() { texts_before_ = wishes_.texts; }

 private:
  void take_preset(const making_wishes& preset);
  void settle_background();
  void settle_shape();
  std::string trouble_with_choices() const;
  void add_notes();
  const planned_entry& entry(int item) const;
  std::string key_of(int item) const;

  const project& p_;
  std::vector<found_design> designs_;
  text_measure measure_;
  std::function<bool(const std::string&)> is_taken_;
  menu_wishes wishes_;
  std::size_t design_ = 0;
  menu_design look_;  ///< with the background of the design
  chosen_background background_ = chosen_background::of_design;
  colour_background colours_;
  picture_background picture_;
  menu_motion film_;
  int own_menus_ = 0;
  menu_shape_reader shape_reader_;
  menu_shapes own_shapes_;
  menu_texts texts_before_;
  menus_to_make made_;
  std::string trouble_;
  int page_ = 0, selected_ = 0;
};

}  // namespace corvane
