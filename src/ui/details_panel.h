// What a title or menu holds: its picture, and lines of text that can be read aloud and copied.
#pragma once

#include <wx/gdicmn.h>
#include <wx/panel.h>
#include <wx/string.h>

class wxTextCtrl;

namespace corvane {

struct first_picture;
struct item_summary;
class video_picture;

class details_panel : public wxPanel {
 public:
  explicit details_panel(wxWindow* parent);

  /// A line without a name is a sentence of its own.
  void show(const item_summary& item);

  /// The picture above the text. One that is not OK gives its room to the text.
  void show_picture(const first_picture& picture);
  /// One is expected: its room stays empty.
  void await_picture();

 private:
  void place();
  void set_picture_shown(bool shown);

  video_picture* picture_;
  wxTextCtrl* text_;
  wxSize proportions_{4, 3};
  wxString shown_;
};

}  // namespace corvane
