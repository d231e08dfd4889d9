// The window "make menus": from the titles of the project to menus that work. On the left what
// menus are made of and how they look, on the right the page as it will be, whose texts are edited
// in the picture; below, what is left out, and the run that makes them. A view of the model
// `menus_draft`, which has the rules; making is `menu_making`'s.
//
// Modeless; owns itself. While it is open the main window is disabled. What is made while it is
// open is one step of the project.
#pragma once

#include "authoring/menu_making.h"
#include "authoring/menus_draft.h"
#include "drawing/page_drawer.h"
#include "ui/lent_project.h"
#include "ui/maker/maker_events.h"
#include "ui/maker/page_films.h"
#include "ui/window_life.h"

#include <wx/dialog.h>
#include <wx/timer.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxButton;
class wxCheckBox;
class wxImage;
class wxNotebook;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class main_window;
class maker_letters_panel;
class maker_look_panel;
class maker_picture;
class maker_titles_panel;
class run_line;
class said_line;

/// "make menus...": opens the window, unless something stands against it, which is told.
void open_menu_maker(main_window& main);

/// The same with another maker of what draws the pages.
void open_menu_maker_with(main_window& main,
                          const std::function<result<std::unique_ptr<page_drawer>>()>& make_drawer);

class maker_window : public wxDialog {
 public:
  maker_window(main_window& main, lent_project lent, std::vector<found_design> designs,
               const found_design& first, std::unique_ptr<page_drawer> drawer);
  ~maker_window() override;

  const menus_draft& draft() const { return draft_; }

 private:
  wxSizer* make_choices();
  wxSizer* make_page();
  wxSizer* make_place();
  wxSizer* make_state();
  wxSizer* make_buttons();
  void on_key(wxKeyEvent& event);

  void select(int item);
  void set_text(int item, const std::string& text);
  void turn(int by);
  void edit_selected();
  void choose_folder();
  void take_folder();

  void changed();
  void show_all();
  void show_page_words();
  void show_state();
  void say(const std::string& text, const char* picture);
  void draw_soon();
  void draw_page();
  void draw_next_sample();
  wxImage drawn(const drawn_page& page);
  void put_button(wxImage& image) const;

  bool agree_to_erase();
  void begin();
  void ask_to_stop();
  bool may_close();
  void update_run();
  void has_ended(const making_end& end);
  void let_choose(bool enabled);
  bool runs() const { return making_ != nullptr && making_->running(); }

  main_window& main_;
  lent_project lent_;
  std::unique_ptr<page_drawer> drawer_;
  menus_draft draft_;
  window_life life_;
  page_films films_;
  std::unique_ptr<menu_making> making_;
  std::string outcome_;  ///< of the last run; empty: something has changed since
  bool all_well_ = true;
  wxTimer draw_, run_;
  bool page_changed_ = false;
  std::size_t next_sample_ = 0;
  bool samples_have_pictures_ = false, samples_are_wide_ = false;

  wxNotebook* choices_ = nullptr;
  maker_titles_panel* titles_ = nullptr;
  maker_look_panel* look_ = nullptr;
  maker_letters_panel* letters_ = nullptr;
  maker_picture* picture_ = nullptr;
  wxStaticText* page_words_ = nullptr;
  wxStaticText* selected_ = nullptr;
  wxButton* previous_ = nullptr;
  wxButton* next_ = nullptr;
  wxButton* edit_ = nullptr;
  wxCheckBox* pressed_ = nullptr;
  wxTextCtrl* folder_ = nullptr;
  wxButton* choose_folder_ = nullptr;
  said_line* said_ = nullptr;
  run_line* progress_ = nullptr;
  wxTextCtrl* notes_ = nullptr;
  wxButton* begin_ = nullptr;
};

}  // namespace corvane
