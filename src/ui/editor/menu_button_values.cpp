// What the button panel shows of the model, and what it reads from the user's fields.
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "ui/editor/editor_slider.h"
#include "ui/editor/file_pictures.h"
#include "ui/editor/menu_button_panel.h"
#include "ui/editor/verdict_line.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/choice.h>
#include <wx/slider.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

#include <algorithm>

namespace corvane {
namespace {

/// A colour that is not offered (from a project file) is shown as well, below the others.
void show_colour(wxChoice* list, const std::string& colour) {
  const auto offered = static_cast<unsigned>(button_colours.size());
  const int at = list->FindString(wx_text(colour), true);
  if (at == list->GetSelection() && at != wxNOT_FOUND)
    return;
  while (list->GetCount() > offered)
    list->Delete(offered);
  if (at == wxNOT_FOUND && !colour.empty() && !is_bitmap(colour))
    list->Append(wx_text(colour));
  list->SetSelection(list->FindString(wx_text(colour), true));
}

/// The bitmap, smaller when it does not fit into `room`.
wxBitmap fitted(const wxBitmap& bitmap, wxSize room) {
  if (!bitmap.IsOk() || (bitmap.GetWidth() <= room.x && bitmap.GetHeight() <= room.y))
    return bitmap;
  const double scale = std::min(static_cast<double>(room.x) / bitmap.GetWidth(),
                                static_cast<double>(room.y) / bitmap.GetHeight());
  const auto part = [scale](int edge) { return std::max(1, static_cast<int>(edge * scale)); };
  return wxBitmap(bitmap.ConvertToImage().Scale(part(bitmap.GetWidth()), part(bitmap.GetHeight()),
                                                wxIMAGE_QUALITY_HIGH));
}

}  // namespace

void menu_button_panel::read_bitmap::read(const std::string& stored_path) {
  if (stored_path == file)
    return;
  file = stored_path;
  bitmap = file.empty() ? wxBitmap() : bitmap_of_button(native_from_stored(file));
}

void menu_button_panel::apply(menu_editor& editor) const {
  for (const typed_field& field : fields_)
    field.apply(editor);
}

bool menu_button_panel::show(const menu_editor_controls& c, bool of_chosen) {
  show_chooser(c);
  if (Combo1_->GetCount() != c.Combo1_items.size())
    Combo1_->Set(wx_rows(c.Combo1_items));
  show_places(c);
  show_values(c, of_chosen);
  const bool other_bitmaps = show_bitmaps(c);
  return show_mode(c) || other_bitmaps;
}

// A button that was just added is not shown until it is picked.
void menu_button_panel::show_values(const menu_editor_controls& c, bool of_chosen) {
  for (typed_field& field : fields_) {
    if (of_chosen)
      field.show(c);
    else
      field.show_nothing();
  }
  show_verdict();
  show_colour(Colorhighlight_, of_chosen ? c.Colorhighlight : std::string());
  show_colour(ColorSelect_, of_chosen ? c.ColorSelect : std::string());
  for (wxWindow* box : {static_cast<wxWindow*>(selected_), static_cast<wxWindow*>(advanced_)}) {
    if (box->IsThisEnabled() != of_chosen)
      box->Enable(of_chosen);
    box->SetToolTip(of_chosen ? ""
                              : "choose the new button first: in the list of buttons or in "
                                "the picture");
  }
}

// As it is typed, and as it stands; of nothing nothing is said.
void menu_button_panel::show_verdict() {
  const std::string typed = utf8_of(Combo1_->GetValue());
  const bool is_something =
      Combo1_->IsThisEnabled() && selected_->IsThisEnabled() && !typed.empty();
  verdict_->show(is_something ? help_.verdict(typed) : action_verdict());
}

void menu_button_panel::show_chooser(const menu_editor_controls& c) {
  if (Combo2_->GetCount() != c.Combo2.size())
    Combo2_->Set(wx_rows(c.Combo2));
  if (Combo2_->GetSelection() != c.Combo2_index)
    Combo2_->SetSelection(c.Combo2_index);
  if (const wxString number = wx_text(c.button); button_->GetLabel() != number)
    button_->SetLabel(number);
}

void menu_button_panel::show_places(const menu_editor_controls& c) {
  show_slider(Slider1_, c.Slider1);
  show_slider(Slider2_, c.Slider2);
  widthpos_->Enable(c.sizes_enabled);
  heightpos_->Enable(c.sizes_enabled);
}

bool menu_button_panel::show_bitmaps(const menu_editor_controls& c) {
  const std::string before = highlight_.file + '|' + select_.file;
  highlight_.read(c.Image1);
  select_.read(c.Image2);
  if (before == highlight_.file + '|' + select_.file)
    return false;
  const wxSize room = FromDIP(wxSize(layout::menu_image_width, layout::menu_image_height));
  Image1_->SetBitmap(fitted(highlight_.bitmap, room));
  Image2_->SetBitmap(fitted(select_.bitmap, room));
  return true;
}

bool menu_button_panel::show_mode(const menu_editor_controls& c) {
  if (c.bitmap_mode == Image1_->IsShown() && c.bitmap_mode != Colorhighlight_->IsShown() &&
      c.Check2 == advanced_->IsShown())
    return false;
  for (wxWindow* control : primitive_)
    control->Show(!c.bitmap_mode);
  for (wxWindow* control : bitmap_)
    control->Show(c.bitmap_mode);
  advanced_->Show(c.Check2);
  return true;
}

}  // namespace corvane
