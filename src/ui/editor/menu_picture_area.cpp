#include "ui/editor/menu_picture_area.h"

#include "ui/editor/menu_picture.h"
#include "ui/video/video_strip.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wheel.h"

#include <wx/scrolbar.h>

#include <algorithm>

namespace corvane {
namespace {

// The bar's thumb is as long as the button: then it stands under the button in the picture.
void show_scroll(wxScrollBar* control, const scroll_bar& s) {
  const int thumb = std::max(1, s.large_step);
  const int range = std::max(0, s.maximum) + thumb;
  if (control->GetRange() != range || control->GetThumbSize() != thumb)
    control->SetScrollbar(s.value, thumb, range, thumb);
  else if (control->GetThumbPosition() != s.value)
    control->SetThumbPosition(s.value);
}

}  // namespace

menu_picture_area::menu_picture_area(wxWindow* parent, const menu_editor& editor,
                                     const tell_event& tell)
    : wxPanel(parent), full_size_(FromDIP(wxSize(largest_x + 1, editor.ymax() + 1))) {
  picture_ = new menu_picture(this, editor, tell);
  name_drawn_control(*picture_, "MediaPlayer1", control_role::picture);
  VScroll1_ = make_scroll("VScroll1", wxSB_VERTICAL, "top edge of the button",
                          &menu_editor::scroll_y, tell);
  HScroll1_ = make_scroll("HScroll1", wxSB_HORIZONTAL, "left edge of the button",
                          &menu_editor::scroll_x, tell);
  strip_ =
      new video_strip(this, [this](const wxImage& picture) { picture_->show_picture(picture); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    arrange();
    event.Skip();
  });
}

wxScrollBar* menu_picture_area::make_scroll(const char* name, long style, const char* tip,
                                            void (menu_editor::*scroll)(int),
                                            const tell_event& tell) {
  auto* bar = new wxScrollBar(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, style);
  name_control(*bar, name);
  let_wheel_pass(*bar);
  bar->SetToolTip(tip);
  const auto scrolled = [scroll, tell](wxScrollEvent& event) {
    const int value = event.GetPosition();
    tell([scroll, value](menu_editor& editor) { (editor.*scroll)(value); });
  };
  for (const auto& type :
       {wxEVT_SCROLL_TOP, wxEVT_SCROLL_BOTTOM, wxEVT_SCROLL_LINEUP, wxEVT_SCROLL_LINEDOWN,
        wxEVT_SCROLL_PAGEUP, wxEVT_SCROLL_PAGEDOWN, wxEVT_SCROLL_THUMBTRACK})
    bar->Bind(type, scrolled);
  return bar;
}

wxSize menu_picture_area::bars() const {
  return {VScroll1_->GetBestSize().x, HScroll1_->GetBestSize().y};
}

/// The room that is not the picture's.
wxSize menu_picture_area::around() const {
  return bars() + wxSize(0, FromDIP(layout::control_gap) + strip_->GetBestSize().y);
}

wxSize menu_picture_area::DoGetBestClientSize() const {
  return full_size_ + around();
}

void menu_picture_area::set_full_size(wxSize size) {
  full_size_ = FromDIP(size);
  InvalidateBestSize();
  arrange();
}

void menu_picture_area::arrange() {
  const wxSize room = GetClientSize() - around();
  if (room.x <= 0 || room.y <= 0)
    return;
  const double scale = std::min({1.0, static_cast<double>(room.x) / full_size_.x,
                                 static_cast<double>(room.y) / full_size_.y});
  const wxSize size(static_cast<int>(full_size_.x * scale), static_cast<int>(full_size_.y * scale));
  const int left = (room.x - size.x) / 2;
  picture_->SetSize(left, 0, size.x, size.y);
  VScroll1_->SetSize(left + size.x, 0, bars().x, size.y);
  HScroll1_->SetSize(left, size.y, size.x, bars().y);
  strip_->SetSize(left, size.y + bars().y + FromDIP(layout::control_gap), size.x + bars().x,
                  strip_->GetBestSize().y);
}

void menu_picture_area::show(const menu_editor_controls& c) {
  show_scroll(HScroll1_, c.HScroll1);
  show_scroll(VScroll1_, c.VScroll1);
  picture_->show_buttons();
}

}  // namespace corvane
