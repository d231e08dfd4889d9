// The window `tsmenu`: edits one titleset menu, with its buttons over a picture of its video.
//
// It owns itself, and is gone when it is closed. It has no rules of its own: what the user does
// goes to the model (menus/menu_editor.h), and what the model says is shown. Closing it without
// "accept" discards every change, also what stands typed in a field. It does not close while a
// message or file dialog of its own stands.
#pragma once

#include "menus/menu_editor.h"
#include "ui/editor/file_pictures.h"
#include "ui/editor/menu_event.h"

#include <wx/frame.h>

#include <functional>

class wxPanel;
class wxSizer;

namespace corvane {

class menu_button_panel;
class menu_options_panel;
class menu_picture_area;

class tsmenu : public wxFrame {
 public:
  /// Opens for menu project::indexer and shows itself over `main`, which is disabled as long as it
  /// is there. `recall`: the menu existed before, so its buttons are shown. `closed` is called when
  /// the window has gone and `main` is enabled again, accepted or not; not when `main` itself goes.
  tsmenu(wxWindow* main, document& doc, bool recall, std::function<void()> closed);

  /// Chooses a button of the disc (1-based), if there is such a one.
  void choose(int number);

 private:
  void make_controls();
  wxSizer* make_heading();
  wxSizer* make_right();
  void fit();
  void load_video();
  void tell(const menu_event& event);
  bool show_controls();
  void accept();
  void on_close(wxCloseEvent& event);
  void close();

  wxWindow* main_;
  std::function<void()> closed_;
  media_pictures pictures_;
  menu_editor editor_;
  wxSize video_size_;  ///< as the player shows it; 0 x 0 when it cannot
  bool in_event_ = false;
  bool closing_ = false;
  wxPanel* panel_ = nullptr;
  menu_picture_area* area_ = nullptr;
  menu_button_panel* buttons_ = nullptr;
  menu_options_panel* options_ = nullptr;
  wxSizer* right_ = nullptr;  ///< of all that stands beside the picture
};

}  // namespace corvane
