// The window `tsmenu`: edits one titleset menu, with its buttons over a picture of its video.
//
// It owns itself, and is gone when it is closed. It has no rules of its own: what the user does
// goes to the model (menus/menu_editor.h), and what the model says is shown. Closing it without
// "accept" asks about what was changed, and discards what stands typed in a field. It does not
// close while a message or file dialog of its own stands.
//
// The list of buttons stands above the controls, or below the picture in a window so high that
// there is room for it.
#pragma once

#include "disc/disc_description.h"
#include "examine/examination.h"
#include "menus/menu_editor.h"
#include "ui/editor/file_pictures.h"
#include "ui/editor/menu_editor_bar.h"
#include "ui/editor/menu_event.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/frame.h>

#include <optional>
#include <vector>

class wxBoxSizer;
class wxPanel;
class wxSizer;

namespace corvane {

class menu_button_list;
class menu_button_panel;
class menu_options_panel;
class menu_picture_area;
class menu_problem_line;
class scrolled_column;

class tsmenu : public wxFrame {
 public:
  /// Opens for menu project::indexer and shows itself over `main`, which is disabled as long as it
  /// is there. `recall`: the menu existed before, so its buttons are shown. Gives the project back
  /// when it goes, accepted or not. `facts`: what is known of the project's files, which must
  /// outlive it; null: nothing is.
  tsmenu(wxWindow* main, lent_project lent, bool recall, fact_store* facts = nullptr);

  /// Chooses a button of the disc (1-based), if there is such a one.
  void choose(int number);

 private:
  void make_controls();
  wxSizer* make_heading();
  wxSizer* make_right();
  void fit();
  void divide();
  void put_list(bool below);
  void load_video();
  void tell(const menu_event& event);
  bool show_controls();
  void accept();
  bool may_close();
  std::vector<finding> found_problems() const;
  void pick_action(menu_editor& editor);
  void bind_keys();
  bool use_key(const wxKeyEvent& event);
  bool use_key_in_picture(int key, int modifiers);
  void give_keyboard_on(bool back);

  lent_project lent_;
  disc_description disc_;  ///< as the editor found it
  fact_store own_facts_;
  fact_store& facts_;
  media_pictures pictures_;
  menu_editor editor_;
  wxSize video_size_;  ///< as the player shows it; 0 x 0 when it cannot
  window_life life_;
  std::optional<menu_editor_bar> bar_;
  wxPanel* panel_ = nullptr;
  menu_picture_area* area_ = nullptr;
  menu_button_list* list_ = nullptr;
  menu_problem_line* problems_ = nullptr;
  menu_button_panel* buttons_ = nullptr;
  menu_options_panel* options_ = nullptr;
  wxBoxSizer* left_ = nullptr;        ///< of the picture, and the list where it stands below
  wxBoxSizer* beside_ = nullptr;      ///< of all that stands beside the picture
  scrolled_column* right_ = nullptr;  ///< its part that scrolls on a small screen
};

}  // namespace corvane
