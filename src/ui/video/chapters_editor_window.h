// The window "chapters editor" (`vchapters`): plays a title's video and takes chapter times from
// the playing position. A view of the model `vchapters`, which has the rules.
//
// Modeless; owns itself. The dialog that opened it is disabled as long as it is there. Closing it
// without "accept" discards its list.
#pragma once

#include "tools/visual_chapters.h"
#include "ui/window_life.h"

#include <wx/frame.h>

#include <functional>

class wxButton;
class wxListBox;
class wxPanel;
class wxSizer;

namespace corvane {

class video_player;

class chapters_editor_window : public wxFrame {
 public:
  /// Shows itself over `dialog`, which it disables until the user leaves it; `closed` is called
  /// then, not when it goes with `dialog`.
  chapters_editor_window(wxWindow* dialog, wx_prompts& ask, vchapters model,
                         std::function<void()> closed);

  /// Its times as the dialog would have them.
  std::string text() const { return model_.text(); }

 private:
  void make_controls();
  wxSizer* make_right(wxWindow* parent);
  wxButton* make_button(wxWindow* parent, const char* name, const wxString& label,
                        void (chapters_editor_window::*clicked)());
  void bind_controls();
  void fit();
  bool use_key(const wxKeyEvent& event);
  void ready();
  void show_rows();
  void show_marks();
  void add();
  void remove();
  void seek();
  void accept();

  vchapters model_;
  window_life life_;
  wxPanel* panel_ = nullptr;
  video_player* player_ = nullptr;
  wxListBox* List1_ = nullptr;
  wxButton* Command1_ = nullptr;
};

}  // namespace corvane
