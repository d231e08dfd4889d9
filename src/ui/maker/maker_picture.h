// The page of a menu as it will be, with the button that is selected in its look. A click or the
// arrow keys select; a click on what is selected, F2 or Enter edits its text in the picture, and
// Tab goes on to the next one.
//
// It shows what the draft says and hands on what the user did; it decides nothing itself.
#pragma once

#include "authoring/menus_draft.h"
#include "formats/drawn_page.h"
#include "ui/widgets/picture_or_reason.h"

#include <wx/window.h>

#include <functional>
#include <string>

class wxTextCtrl;

namespace corvane {

class maker_picture : public wxWindow {
 public:
  struct handlers {
    std::function<void(int item)> select;
    std::function<void(int item, const std::string& text)> set_text;
    std::function<void(int by)> turn;  ///< to another page
  };

  maker_picture(wxWindow* parent, const menus_draft& draft, handlers on);

  /// The page that the draft shows, drawn in pixels of the disc's picture.
  void show_page(const wxImage& page);
  /// Shows a text in its place.
  void show_reason(const wxString& reason);
  const wxImage& shown_page() const { return shown_.picture(); }

  /// Begins to edit the text of an item. False: there is none.
  bool edit(int item);
  bool is_editing() const { return field_ != nullptr; }
  /// What is typed is taken, or what was there stays.
  void end_edit(bool takes);

  /// Of a place in the disc's picture, in pixels of this window.
  wxRect on_window(const page_box& box) const;

  bool AcceptsFocus() const override { return IsEnabled(); }

 private:
  wxRect shown_place() const;
  wxSize shape() const;
  void on_paint();
  void paint_selection(wxDC& dc);
  void on_down(wxMouseEvent& event);
  void on_double_click(wxMouseEvent& event);
  void on_key(wxKeyEvent& event);
  bool do_key(int key);
  void on_field_key(wxKeyEvent& event);
  int item_under(const wxPoint& at) const;
  void place_field();

  const menus_draft& draft_;
  handlers on_;
  picture_or_reason shown_;
  wxTextCtrl* field_ = nullptr;
  int edited_ = -1;  ///< the item
};

}  // namespace corvane
