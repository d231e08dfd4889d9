#include "ui/editor/menu_picture_area.h"

#include "menus/menu_view.h"
#include "ui/editor/menu_picture.h"
#include "ui/editor/menu_view_bar.h"
#include "ui/video/video_strip.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wheel.h"

#include <wx/scrolbar.h>

#include <algorithm>
#include <cmath>

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
                                     const tell_event& tell, const words_of_action& words)
    : wxPanel(parent), lines_(editor.ymax() + 1) {
  picture_ = new menu_picture(this, editor, tell, words,
                              {[this] { strip_->play_or_pause(); }, [this] { strip_->pause(); },
                               [this](int steps) { zoom_by(steps); }});
  name_drawn_control(*picture_, "MediaPlayer1", control_role::picture);
  VScroll1_ = make_scroll("VScroll1", wxSB_VERTICAL, "top edge of the button",
                          &menu_editor::scroll_y, tell);
  HScroll1_ = make_scroll("HScroll1", wxSB_HORIZONTAL, "left edge of the button",
                          &menu_editor::scroll_x, tell);
  strip_ =
      new video_strip(this, [this](const wxImage& picture) { picture_->show_picture(picture); });
  bar_ = new menu_view_bar(this, [this] { show_view(); });
  show_view();
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    arrange();
    event.Skip();
  });
  // Wherever in the window the keyboard is.
  wxGetTopLevelParent(parent)->Bind(wxEVT_CHAR_HOOK, &menu_picture_area::on_key, this);
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
  return bars() + wxSize(0, 2 * FromDIP(layout::control_gap) + strip_->GetBestSize().y +
                                bar_->GetBestSize().y);
}

wxSize menu_picture_area::DoGetBestClientSize() const {
  wxSize best = full_size_ + around();
  best.IncTo(wxSize(bar_->GetBestSize().x, 0));
  return best;
}

void menu_picture_area::set_video(int lines, wxSize proportions) {
  lines_ = lines;
  proportions_ = proportions;
  bar_->choose_shape(proportions == wxSize(16, 9));
  show_view();
}

int menu_picture_area::height_in(int width) const {
  const wxSize rest = around();
  const view_size full{full_size_.x, full_size_.y};
  return fitted_view(full, {width - rest.x, most_zoom * full.height}).height + rest.y;
}

/// What the bar says, in the picture.
void menu_picture_area::show_view() {
  const view_choice choice = bar_->chosen();
  const view_size full =
      choice.true_shape ? full_view(lines_, proportions_.x, proportions_.y) : full_view(lines_);
  const wxSize before = full_size_;
  full_size_ = FromDIP(wxSize(full.width, full.height));
  picture_->set_options(choice.picture);
  InvalidateBestSize();
  arrange();
  if (before != full_size_ && before != wxSize())
    GetParent()->SendSizeEvent();
}

void menu_picture_area::arrange() {
  const wxSize room = GetClientSize() - around();
  if (room.x <= 0 || room.y <= 0)
    return;
  const view_size full{full_size_.x, full_size_.y};
  const int zoom = bar_->chosen().zoom;
  const view_size shown = zoom > 0 ? zoomed_view(full, zoom) : fitted_view(full, {room.x, room.y});
  const wxSize view(shown.width, shown.height);
  wxSize size = view;
  size.DecTo(room);
  const int left = (room.x - size.x) / 2;
  picture_->SetSize(left, 0, size.x, size.y);
  picture_->set_view(view);
  VScroll1_->SetSize(left + size.x, 0, bars().x, size.y);
  HScroll1_->SetSize(left, size.y, size.x, bars().y);
  const int gap = FromDIP(layout::control_gap);
  int top = size.y + bars().y + gap;
  strip_->SetSize(left, top, size.x + bars().x, strip_->GetBestSize().y);
  top += strip_->GetBestSize().y + gap;
  const int bar_left = std::clamp(left, 0, std::max(0, GetClientSize().x - bar_->GetBestSize().x));
  bar_->SetSize(bar_left, top, GetClientSize().x - bar_left, bar_->GetBestSize().y);
}

// Zoom --------------------------------------------------------------------------------------------

/// How many times as large as at 100 % the picture is where it fits.
double menu_picture_area::fitted_scale() const {
  const wxSize room = GetClientSize() - around();
  const view_size fits = fitted_view({full_size_.x, full_size_.y}, {room.x, room.y});
  return fits.width / static_cast<double>(full_size_.x);
}

/// To the next whole number; below 100 % and where it would be smaller than the room, it fits.
void menu_picture_area::zoom_by(int steps) {
  const int zoom = bar_->chosen().zoom;
  const double now = zoom > 0 ? zoom : fitted_scale();
  const int next =
      steps > 0 ? static_cast<int>(std::floor(now)) + 1 : static_cast<int>(std::ceil(now)) - 1;
  if (next > most_zoom)
    return;
  zoom_to(next >= 1 ? next : 0);
}

void menu_picture_area::zoom_to(int zoom) {
  bar_->choose_zoom(zoom);
  show_view();
}

void menu_picture_area::on_key(wxKeyEvent& event) {
  if (event.GetModifiers() == wxMOD_CONTROL ||
      event.GetModifiers() == (wxMOD_CONTROL | wxMOD_SHIFT))
    switch (event.GetKeyCode()) {
      case '+':
      case '=':  // the same key without Shift on many keyboards
      case WXK_NUMPAD_ADD:
        zoom_by(1);
        return;
      case '-':
      case WXK_NUMPAD_SUBTRACT:
        zoom_by(-1);
        return;
      case '0':
      case WXK_NUMPAD0:
        zoom_to(0);
        return;
      default:
        break;
    }
  event.Skip();
}

void menu_picture_area::show(const menu_editor_controls& c) {
  show_scroll(HScroll1_, c.HScroll1);
  show_scroll(VScroll1_, c.VScroll1);
  picture_->show_buttons();
}

}  // namespace corvane
