// The window "still": a picture of any size as the still that it becomes, with bars or cropped, for
// the standard and the proportions of the disc, and where that still is to be saved. What it shows
// is worked out by import/picture_still.h, as is what will be made.
//
// Modeless; owns itself. While it is open the main window is disabled. The project does not change.
#pragma once

#include "import/picture_still.h"
#include "media/picture.h"
#include "ui/lent_project.h"
#include "ui/window_life.h"

#include <wx/dialog.h>
#include <wx/image.h>
#include <wx/timer.h>

#include <functional>
#include <future>
#include <string>

class wxChoice;
class wxSizer;
class wxSpinCtrl;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class main_window;
class video_picture;

/// Opens the window with a picture (native path). What stands against it is told; of a picture that
/// cannot be read only where it was not `refused` already.
void open_still_window(main_window& main, const std::string& picture, bool refused);

class still_window : public wxDialog {
 public:
  /// `closed` is called with the still when the user wants it made.
  still_window(wxWindow* main, lent_project lent, still_source source, const still_choices& preset,
               std::function<void(const picture_still&)> closed);

 private:
  wxSizer* make_heading();
  wxSizer* make_preview();
  wxSizer* make_choices();
  wxSizer* make_place();
  wxSizer* make_buttons();
  void bind_controls();

  void take_choices();
  void show_preview();
  void show_place();
  void choose_place();
  void make();
  void take_picture();

  lent_project lent_;
  picture_still still_;
  std::function<void(const picture_still&)> closed_;
  bool proceed_ = false;
  window_life life_;
  std::future<result<picture>> decoding_;
  wxImage image_;  ///< the whole picture, smaller; not OK: it is not there yet
  wxTimer poll_;

  video_picture* preview_ = nullptr;
  wxStaticText* described_ = nullptr;
  wxChoice* standard_ = nullptr;
  wxChoice* aspect_ = nullptr;
  wxChoice* fit_ = nullptr;
  wxSpinCtrl* frames_ = nullptr;
  wxTextCtrl* place_ = nullptr;
};

}  // namespace corvane
